#pragma once

/// The wizard's page ids. They are part of the pages' routing and do not change.
enum PageId {
    ConnectPageId = 0,
    TolvarFoundPageId = 1,
    TolvarNotFoundPageId = 2, // kept: registered, but no page leads to it
    ChooseNetworkPageId = 3,
    TestNetworkPageId = 4,
    // kept: 5 is not used
    WEPWarningPageId = 6
};
