#include "serial/hangupwatch.h"

#include <QSocketNotifier>

// Systems without epoll: only QSerialPort reports a hang-up.

HangUpWatch::HangUpWatch() = default;
HangUpWatch::~HangUpWatch() = default;
void HangUpWatch::start(int) {}
void HangUpWatch::stop() {}
void HangUpWatch::checkForHangUp() {}
