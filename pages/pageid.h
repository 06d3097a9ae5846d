#pragma once

/// The wizard's page ids. They do not change.
///
/// In all pages, a comment that begins with "kept:" marks behaviour that must not change;
/// docs/compatibility.md lists it.
enum PageId {
    ConnectPageId = 0,
    TolvarFoundPageId = 1,
    TolvarNotFoundPageId = 2, // kept: registered, but no page leads to it
    ChooseNetworkPageId = 3,
    TestNetworkPageId = 4,
    // kept: 5 is not used
    WEPWarningPageId = 6
};
