#include "runtime/Product.h"
#include "support/Prelude.h"

namespace zarn {
namespace {

TEST(Product, HasTheVersionThatIsBuilt) {
    EXPECT_EQ(ProductText(), "Zarn File Splitter v" ZARN_VERSION " Pro");
}

}  // namespace
}  // namespace zarn
