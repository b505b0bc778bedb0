#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "support/TestFolder.h"
#include "support/TestPlatform.h"

namespace zarn::testing {

class FixedClock : public Clock {
  public:
    DateTime Now() override { return now; }
    double Timer() override { return 0; }

    DateTime now{2007, 3, 14, 21, 5, 7};
};

/// The real platform at a moment of the test's own.
class ScriptsFixture : public ::testing::Test {
  protected:
    ScriptsFixture() {
        auto fixed = std::make_unique<FixedClock>();
        clock = fixed.get();
        test.platform.clock = std::move(fixed);
        shared = std::make_unique<SharedObjects>(std::move(test.platform));
    }

    TestPlatform test;
    FixedClock* clock = nullptr;
    std::unique_ptr<SharedObjects> shared;
    TestFolder folder;
};

}  // namespace zarn::testing
