#include "serial/hangupwatch.h"

#include <QSocketNotifier>

// Systems without epoll: what Qt's port tells of is all there is.

HangUpWatch::HangUpWatch() = default;
HangUpWatch::~HangUpWatch() = default;
void HangUpWatch::start(int) {}
void HangUpWatch::stop() {}
void HangUpWatch::look() {}
