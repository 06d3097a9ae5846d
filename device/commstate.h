#pragma once

/// State of the console link. The order gives the numbers, and the session log shows the names.
enum CommState {
    NOT_CONNECTED,                      ///< no open port
    CANDIDATE_DEVICE_FOUND,             ///< port open, console not yet woken
    WAITING_FOR_STATUS,                 ///< kept: never entered; keeps its number
    INITIAL_WAITING_FOR_CONSOLE_PROMPT, ///< wake-up sent, no prompt seen yet
    WAITING_FOR_CONSOLE_PROMPT,         ///< a reply has ended, the prompt is expected
    IN_PROMPT,                          ///< the console accepts commands
    IN_RESPONSE_RECEIVE                 ///< inside a framed reply
};
