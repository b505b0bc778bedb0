#include "window/WindowApplication.h"

#include <utility>

#include "controls/Appearance.h"
#include "controls/QtMessageBoxes.h"
#include "controls/QtMessageQueue.h"
#include "controls/QtText.h"

namespace zarn {

namespace {

// Listens to the toolkit in place of standard error. Its one fatal message is that there is no
// display, and the process would be aborted right after it.
class Listener {
  public:
    explicit Listener(const WindowApplication::NoDisplay& noDisplay) : noDisplay_(noDisplay) {
        Current() = this;
        before_ = qInstallMessageHandler(Hear);
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    ~Listener() {
        qInstallMessageHandler(before_);
        Current() = nullptr;
    }

  private:
    // The toolkit hands nothing of its caller's to a message handler.
    static Listener*& Current() {
        static Listener* current = nullptr;
        return current;
    }

    static void Hear(QtMsgType type, const QMessageLogContext& /*where*/, const QString& text) {
        Listener& listener = *Current();
        if (type == QtWarningMsg || listener.reason_.isEmpty()) {
            listener.reason_ = text.section('\n', 0, 0).trimmed();
        }
        if (type == QtFatalMsg) {
            listener.noDisplay_(FromQt(listener.reason_));
        }
    }

    const WindowApplication::NoDisplay& noDisplay_;
    QString reason_;  ///< its last warning; what it says after that is advice
    QtMessageHandler before_ = nullptr;
};

}  // namespace

WindowApplication::WindowApplication(SharedObjects& shared, const NoDisplay& noDisplay)
    : shared_(shared),
      otherBoxes_(std::make_unique<QtMessageBoxes>()),
      otherQueue_(std::make_unique<QtMessageQueue>()) {
    const Listener listener(noDisplay);
    application_ = std::make_unique<GuardedApplication>(count_, arguments_.data());
    ApplyAppearance(*application_);
    SwapFrontEnds();
}

WindowApplication::~WindowApplication() {
    SwapFrontEnds();
}

// `Messages` holds on to the boxes that were there when it was made.
void WindowApplication::SwapFrontEnds() {
    shared_.Drop();
    std::swap(shared_.Platform().messageBoxes, otherBoxes_);
    std::swap(shared_.Platform().messageQueue, otherQueue_);
}

void WindowApplication::Exec() {
    // What was raised while the windows opened would have no loop to end.
    GuardedApplication::RethrowRaised();
    QCoreApplication::exec();
    GuardedApplication::RethrowRaised();
}

}  // namespace zarn
