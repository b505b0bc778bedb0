#include "controls/JobDialog.h"

#include <QEvent>
#include <QEventLoopLocker>
#include <QKeyEvent>
#include <utility>

#include "controls/GuardedApplication.h"
#include "controls/QtMessageBoxes.h"

namespace zarn {

JobDialog::JobDialog(QWidget* owner) : QDialog(owner) {
    activation_.setSingleShot(true);
    connect(&activation_, &QTimer::timeout, this, [this] {
        if (isVisible()) {
            Activated();
        }
    });
}

void JobDialog::ShowModal() {
    // Closing the program's last window in the middle of a job must not take the job's boxes and
    // prompts away: the program ends after it.
    const QEventLoopLocker programRuns;
    wasLeft_ = false;
    activation_.start(0);
    exec();
    // An error has ended the wait with the window still open; a job that outlived its window may
    // have set a countdown going.
    done(Rejected);
    if (parentWidget() != nullptr) {
        parentWidget()->setEnabled(true);
    }
    GuardedApplication::RethrowRaised();
}

bool JobDialog::event(QEvent* event) {
    if (event->type() == QEvent::WindowDeactivate) {
        wasLeft_ = !IsBoxInFront();
    } else if (event->type() == QEvent::WindowActivate && std::exchange(wasLeft_, false)) {
        // Not here and now: whoever brings the window to the front has more to do.
        activation_.start(0);
    }
    return QDialog::event(event);
}

// The Escape key, which looks like a cancel, would only hide the job.
void JobDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) {
        QDialog::keyPressEvent(event);
    }
}

void JobDialog::done(int result) {
    Closing();
    unsetCursor();
    // The window behind takes no input before the job has ended, also where this one has gone.
    if (JobRuns() && parentWidget() != nullptr) {
        parentWidget()->setEnabled(false);
    }
    QDialog::done(result);
}

}  // namespace zarn
