#include "platform/linux/LinuxSignals.h"

#include <initializer_list>

namespace zarn {

// The system keeps a blocked signal pending even if the process ignores it.
void LinuxSignals::Hold() {
    sigset_t signals = EndingSignals();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action = {};
        if (sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) {
            sigdelset(&signals, signal);
        }
    }
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

bool LinuxSignals::IsHeld() {
    sigset_t pending;
    sigpending(&pending);
    return sigismember(&pending, SIGINT) == 1 || sigismember(&pending, SIGTERM) == 1 ||
           sigismember(&pending, SIGHUP) == 1;
}

void LinuxSignals::Deliver() {
    const sigset_t signals = EndingSignals();
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

sigset_t EndingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGHUP);
    return signals;
}

}  // namespace zarn
