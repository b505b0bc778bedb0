#include "controls/QtMessageQueue.h"

#include <QTimer>

#include "controls/GuardedApplication.h"

namespace zarn {

void QtMessageQueue::Run() {
    GuardedApplication::Pump();
}

void QtMessageQueue::Wait(std::chrono::milliseconds time) {
    QTimer timer;
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);  // a coarse one may end too early
    timer.start(time);
    while (timer.isActive()) {
        GuardedApplication::Pump(QEventLoop::WaitForMoreEvents);
    }
}

}  // namespace zarn
