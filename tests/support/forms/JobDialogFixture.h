#pragma once

#include "controls/Colours.h"
#include "controls/QtMessageQueue.h"
#include "controls/XP_ProgressBar.h"
#include "support/Soon.h"
#include "support/TestPlatform.h"
#include "support/forms/FormChecks.h"

namespace zarn::testing {

/// The window of a job over the real platform, and every state that it shows while the job runs.
template <typename Form>
class JobDialogFixture : public ::testing::Test {
  protected:
    JobDialogFixture() {
        QApplication::setQuitOnLastWindowClosed(false);
        queue.whenRun = [this] { Look(); };
    }

    SharedObjects& Shared() { return test.Shared(); }

    virtual std::string State() = 0;

    /// Takes a new window, whose timers only a test lets tick. Returns their milliseconds.
    std::string Take(std::unique_ptr<Form> window) {
        form = std::move(window);
        states.clear();
        std::string intervals;
        for (QTimer* timer : Timers()) {
            intervals += std::to_string(timer->interval()) + " ";
            timer->setInterval(std::chrono::hours(1));
        }
        return intervals;
    }

    template <typename Control>
    Control& Find(const char* name) {
        return *form->template findChild<Control*>(name, Qt::FindDirectChildrenOnly);
    }
    XP_ProgressBar& Bar() { return Find<XP_ProgressBar>("XP_ProgressBar1"); }
    chameleonButton& Button() { return Find<chameleonButton>("CmdCancel"); }
    void ClickButton() { QTest::mouseClick(&Button(), Qt::LeftButton); }
    QTimer& Timer(const char* name) { return Find<QTimer>(name); }
    void Tick(const char* timer) { QMetaObject::invokeMethod(&Timer(timer), "timeout"); }
    bool IsTiming() {
        return std::ranges::any_of(Timers(), [](const QTimer* timer) { return timer->isActive(); });
    }
    void ComeBack() {
        for (const auto type : {QEvent::WindowDeactivate, QEvent::WindowActivate}) {
            QEvent event(type);
            QApplication::sendEvent(form.get(), &event);
        }
    }

    /// A line's text and colour.
    std::string TextOf(const char* name) {
        const auto& label = Find<QLabel>(name);
        EXPECT_TRUE(Fits(label)) << name;
        const std::string text = FromQt(label.text()) + "#" + std::to_string(TextColour(label));
        return label.isHidden() ? "-|" : text + "|";
    }
    std::string ButtonText() {
        EXPECT_TRUE(Fits(Button())) << FromQt(Button().Caption());
        return FromQt(Button().Caption()) + (Button().isEnabled() ? "" : " off");
    }
    std::string Pointer() { return form->cursor().shape() == Qt::WaitCursor ? "wait" : ""; }

    /// Keeps a state that is new.
    void Look() {
        const std::string state = State();
        if (states.empty() || states.back() != state) {
            states.push_back(state);
            if (!awaited_.first.empty() && Contains(state, awaited_.first)) {
                std::exchange(awaited_, {}).second();
            }
        }
    }
    /// Acts the first time that a state holds a text.
    void When(const std::string& text, const std::function<void()>& act) { awaited_ = {text, act}; }

    /// Runs the job below an event loop and acts whenever that is idle with the countdown going.
    /// Returns what the window raises.
    std::optional<ErrorNumber> Run() {
        std::optional<ErrorNumber> error;
        QTimer idle;
        idle.callOnTimeout([this] {
            if (Timer("Timer2").isActive()) {
                Look();
                whenCounting();
            }
        });
        idle.start(0);
        const Soon start([&] {
            error = ErrorOf([this] { form->ShowModal(); });
            QCoreApplication::exit();
        });
        QCoreApplication::exec();
        EXPECT_FALSE(form->isVisible() || IsTiming() || !owner.isEnabled() || Pointer() != "");
        return error;
    }

    TestFolder folder;
    TestFolder out;
    TestPlatform test;
    TestQueue& queue = test.Queue(std::make_unique<QtMessageQueue>());
    QWidget owner;
    std::unique_ptr<Form> form;
    Names states;
    std::function<void()> whenCounting = [this] { ClickButton(); };

  private:
    QList<QTimer*> Timers() {
        return form->template findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    }

    std::pair<std::string, std::function<void()>> awaited_;
};

}  // namespace zarn::testing
