#include "transport/proc_path.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using vdrsim::ProcPath;

TEST(ProcPath, IsMadeOfItsParts) {
  EXPECT_STREQ(ProcPath("/proc/{}/fd/{}", 12, 4294967295U).c_str(), "/proc/12/fd/4294967295");
}

TEST(ProcPath, HasRoomForFortySevenCharacters) {
  const std::string longest(47, 'x');
  EXPECT_EQ(ProcPath("{}", longest).c_str(), longest);
  EXPECT_EQ(ProcPath("{}y", longest).c_str(), longest);
}

}  // namespace
