#pragma once

#include <gtest/gtest.h>

#include <string>

#include "run.h"

namespace run {

inline void ExpectSuccess(const Result& result, const std::string& output = "") {
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output, output);
  EXPECT_TRUE(result.leftNobody);
}

// One line that begins so, and nothing was run.
inline void ExpectUnusable(const Result& result, const std::string& beginning) {
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.output.substr(0, beginning.size()), beginning);
  EXPECT_EQ(result.output.find('\n'), result.output.size() - 1) << result.output;
  EXPECT_TRUE(result.leftNobody);
}

}  // namespace run
