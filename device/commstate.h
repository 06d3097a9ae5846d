#pragma once

/// State of the console link. The order is the numbering, and the names are what the session log shows.
enum CommState {
    NOT_CONNECTED,                      ///< no open port
    CANDIDATE_DEVICE_FOUND,             ///< port open, console not yet woken
    WAITING_FOR_STATUS,                 ///< kept: never entered, but it holds its number
    INITIAL_WAITING_FOR_CONSOLE_PROMPT, ///< wake-up sent, no prompt seen yet
    WAITING_FOR_CONSOLE_PROMPT,         ///< a reply has ended, its prompt is due
    IN_PROMPT,                          ///< the console takes commands
    IN_RESPONSE_RECEIVE                 ///< inside a framed reply
};
