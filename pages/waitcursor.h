#pragma once

/// Shows a wait cursor until the event loop runs again. Call it before commands are sent: the device needs 10
/// ms for each byte, and the window does not respond during that time.
void showWaitCursor();
