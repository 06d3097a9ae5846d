#pragma once

#include <string>

#include <QStringList>

#include "device/commstate.h"

/// A model of the link's rules, mode by mode and state by state.
struct LinkModel {
    static constexpr char STX = 0x02;
    static constexpr char ETX = 0x03;
    static constexpr char EOT = 0x04;

    void process(char byte)
    {
        if (scanning || testing)
            processDuringScanOrTest(byte);
        else
            processAtTheConsole(byte);
    }

    int state = NOT_CONNECTED;
    bool scanning = false;
    bool testing = false;
    bool handshake = false;
    std::string reply;   ///< collected so far
    QStringList replies; ///< complete replies
    QStringList queue;   ///< queued commands
    QByteArray sent;     ///< the bytes sent over the line

    /// Returns the reply collected so far, each byte as one character.
    QString replyText() const
    {
        return QString::fromLatin1(reply.data(), static_cast<qsizetype>(reply.size()));
    }

private:
    void processDuringScanOrTest(char byte)
    {
        if (byte == STX)
            begin();
        else if (state == IN_RESPONSE_RECEIVE && byte == ETX)
            endScanOrTest();
        else if (state == IN_RESPONSE_RECEIVE)
            reply += byte;
    }
    void processAtTheConsole(char byte)
    {
        if (state == INITIAL_WAITING_FOR_CONSOLE_PROMPT && handshake) {
            if (byte == EOT)
                state = WAITING_FOR_CONSOLE_PROMPT;
        } else if (state == INITIAL_WAITING_FOR_CONSOLE_PROMPT || state == WAITING_FOR_CONSOLE_PROMPT) {
            if (byte == '>')
                prompt();
        } else if (state == IN_PROMPT) {
            if (byte == STX)
                begin();
        } else if (state == IN_RESPONSE_RECEIVE) {
            if (byte == ETX)
                end(WAITING_FOR_CONSOLE_PROMPT);
            else
                reply += byte;
        }
    }
    void begin()
    {
        state = IN_RESPONSE_RECEIVE;
        reply.clear();
    }
    void end(int next)
    {
        state = next;
        replies += replyText();
    }
    void endScanOrTest()
    {
        end(IN_PROMPT);
        if (scanning) {
            scanning = false;
            queue += QStringLiteral("setuarttrace n\r\n");
            send(); // the oldest command, at the prompt
        } else {
            testing = false;
        }
    }
    void prompt()
    {
        state = IN_PROMPT;
        send();
    }
    void send()
    {
        if (!queue.isEmpty())
            sent += queue.takeFirst().toLatin1();
    }
};
