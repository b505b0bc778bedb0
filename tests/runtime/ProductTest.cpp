#include <gtest/gtest.h>

#include "runtime/Product.h"

namespace zarn {
namespace {

TEST(Product, HasTheVersionThatIsBuilt) {
    EXPECT_EQ(ProductText(), "Zarn File Splitter v" ZARN_VERSION " Pro");
}

}  // namespace
}  // namespace zarn
