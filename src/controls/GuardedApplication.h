#pragma once

#include <QApplication>
#include <QEventLoop>
#include <exception>

namespace zarn {

/// The toolkit's application for handlers that raise errors, which its event loops cannot carry. A
/// `RuntimeError` that leaves a handler is kept and every running event loop is told to end.
/// Whoever started a loop then calls `RethrowRaised`, which takes the error on to its caller. In
/// `Pump` that is done, and no loop ends: what is at work may have a rule for the error.
class GuardedApplication : public QApplication {
  public:
    /// As of the toolkit's own class: both arguments must outlive the object.
    GuardedApplication(int& count, char** arguments);

    bool notify(QObject* receiver, QEvent* event) override;

    /// Raises the error that was kept last, once. Does nothing without one, or where the
    /// application is of another class.
    static void RethrowRaised();

    /// Lets the pending events run, and raises what a handler of theirs raised. With
    /// `WaitForMoreEvents` it waits for one if there is none.
    static void Pump(QEventLoop::ProcessEventsFlags flags = QEventLoop::AllEvents);

  private:
    std::exception_ptr raised_;
    int pumpLevel_ = -1;  ///< number of loops around the pump that runs
};

}  // namespace zarn
