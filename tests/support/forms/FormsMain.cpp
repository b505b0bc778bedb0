#include <gtest/gtest.h>

#include <QTimer>
#include <memory>

#include "controls/Appearance.h"
#include "controls/GuardedApplication.h"
#include "runtime/Locale.h"

namespace {

/// An error that a handler raises ends every event loop that runs, and the toolkit starts no inner
/// one until the outermost has been started again.
class FreshEventLoop : public ::testing::EmptyTestEventListener {
    void OnTestStart(const ::testing::TestInfo& /*test*/) override {
        QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
        QCoreApplication::exec();
    }
};

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariable("ZARN_TEST_LOCALE") == "comma" &&
        zarn::ReadLocaleSeparators().decimal != ",") {
        qFatal("there is no locale with a decimal comma");
    }
    ::testing::InitGoogleTest(&argc, argv);
    zarn::GuardedApplication application(argc, argv);
    zarn::ApplyAppearance(application);
    ::testing::UnitTest::GetInstance()->listeners().Append(
        std::make_unique<FreshEventLoop>().release());
    return RUN_ALL_TESTS();
}
