#include <gtest/gtest.h>

#include "platform/linux/LinuxModules.h"
#include "platform/linux/zip/ZipModule.h"

namespace zarn {
namespace {

TEST(LinuxModulesTest, GivesAFunctionOrNothing) {
    LinuxModules modules;
    EXPECT_NE(modules.Function(ZipModuleFile, ZipModuleFunction), nullptr);
    EXPECT_EQ(modules.Function(ZipModuleFile, "ZarnReadZip"), nullptr);
    EXPECT_EQ(modules.Function("libZarnZap.so", ZipModuleFunction), nullptr);
}

}  // namespace
}  // namespace zarn
