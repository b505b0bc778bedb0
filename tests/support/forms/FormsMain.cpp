#include <gtest/gtest.h>

#include "controls/Appearance.h"
#include "controls/GuardedApplication.h"

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    zarn::GuardedApplication application(argc, argv);
    zarn::ApplyAppearance(application);
    return RUN_ALL_TESTS();
}
