#pragma once

/// Shows a wait cursor until the event loop runs again. Call it before commands are sent: the device takes a
/// byte in 10 ms, and the window does not answer meanwhile.
void showWaitCursor();
