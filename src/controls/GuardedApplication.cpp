#include "controls/GuardedApplication.h"

#include <QThread>
#include <utility>

#include "runtime/RuntimeError.h"

namespace zarn {

GuardedApplication::GuardedApplication(int& count, char** arguments)
    : QApplication(count, arguments) {
}

bool GuardedApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const RuntimeError&) {
        raised_ = std::current_exception();
        if (thread()->loopLevel() != pumpLevel_) {
            exit();
        }
        return true;
    }
}

void GuardedApplication::RethrowRaised() {
    auto* application = dynamic_cast<GuardedApplication*>(instance());
    if (application != nullptr && application->raised_) {
        std::rethrow_exception(std::exchange(application->raised_, nullptr));
    }
}

void GuardedApplication::Pump(QEventLoop::ProcessEventsFlags flags) {
    auto* application = dynamic_cast<GuardedApplication*>(instance());
    if (application != nullptr) {
        const int outer =
            std::exchange(application->pumpLevel_, application->thread()->loopLevel());
        processEvents(flags);
        application->pumpLevel_ = outer;
        RethrowRaised();
    }
}

}  // namespace zarn
