#include <gtest/gtest.h>

#include <cstdlib>

#include "guard.h"

namespace {

// A test that failed half-way leaves no process to those behind it.
class EndOfTest : public testing::EmptyTestEventListener {
  void OnTestEnd(const testing::TestInfo& /*test*/) override { guard::EndDescendants(); }
};

}  // namespace

int main(int count, char** arguments) {
  guard::Contain(guard::kSeconds);
  guard::AdoptOrphans();
  unsetenv("USE_UPGRADE_DEV");
  testing::InitGoogleTest(&count, arguments);
  testing::UnitTest::GetInstance()->listeners().Append(new EndOfTest);
  return RUN_ALL_TESTS();
}
