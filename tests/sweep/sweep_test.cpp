#include "sweep/sweep.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>

#include "exported_functions.h"

// All exported functions on all paths that any of them has. What is particular to a function stands
// in its row; how each shape goes about its work is for the tests of the families.

namespace {

using contract::kUntouched;
using sweep::AllRows;
using sweep::Row;
using sweep::Rows;
using sweep::Sizes;

fake::Bytes RecordsOf(const Row& row, std::size_t size);
fake::Reply ReplyTo(const Row& row, const fake::Command& command, uint32_t length);
uint32_t WholeReply(const Row& row);
std::string FamilyOf(const std::string& function);
void ExpectCall(const Row& row, fake::Device& device, int error, const Sizes& kept);
void ExpectClosed(const Row& row, const fake::Device& device);

TEST(Sweep, TheTableHoldsEveryExportedFunctionAndNoOther) {
  const std::set<std::string> exported(std::begin(kExportedFunctions),
                                       std::end(kExportedFunctions));
  std::set<std::string> swept;
  for (const Row& row : AllRows()) swept.insert(row.name);
  ASSERT_GE(exported.size(), 198u);
  for (const std::string& name : exported) {
    const std::string family = FamilyOf(name);
    EXPECT_TRUE(swept.contains(name))
        << name << " is not swept. A getter is described in tests/support/getters/" << family
        << ".cpp, any other function gets a row in tests/sweep/" << family << "_rows.cpp.";
  }
  for (const std::string& name : swept) {
    EXPECT_TRUE(exported.contains(name)) << name << " is swept, and no public header declares it.";
  }
}

TEST(Sweep, EachAllocationMayFailInTurn) {
  for (const Row& row : AllRows()) {
    for (int failing = 1;; ++failing) {
      SCOPED_TRACE(fmt::format("{}, allocation {} fails", row.name, failing));
      fake::Device device;
      device.failingAllocation = failing;
      device.answer = [&](const fake::Command& command) {
        return ReplyTo(row, command, WholeReply(row));
      };
      if (failing <= row.allocations) {
        ExpectCall(row, device, ENOMEM, {});
        EXPECT_EQ(device.allocations, failing);
      } else {
        ExpectCall(row, device, row.errorOf(WholeReply(row)), row.keptByRelease);
        EXPECT_EQ(device.allocations, row.allocations);
        break;
      }
    }
  }
}

TEST(Sweep, AMissingNodeIsReported) {
  for (const Row& row : AllRows()) {
    SCOPED_TRACE(row.name);
    fake::Device device;
    device.openError = ENOENT;
    if (row.commands == 0) {
      ExpectCall(row, device, row.errorOf(0), {});
    } else {
      ExpectCall(row, device, row.sizeQuery ? ENOMEM : ENOENT, row.keptByFailedCommand);
    }
  }
}

TEST(Sweep, ACommandThatTheKernelRefusesIsReported) {
  for (const Row& row : AllRows()) {
    if (row.commands == 0) continue;
    SCOPED_TRACE(row.name);
    {
      fake::Device device;
      device.answer = [&](const fake::Command& command) {
        const bool asksForSize = row.sizeQuery && command.request == row.sizeQuery->code;
        return asksForSize ? ReplyTo(row, command, 0) : fake::Failure(EXDEV);
      };
      ExpectCall(row, device, EXDEV, row.keptByFailedCommand);
    }
    if (row.sizeQuery) {
      SCOPED_TRACE("the size is not told");
      fake::Device device;
      device.AnswerWith(fake::Failure(EXDEV));
      ExpectCall(row, device, ENOMEM, {});
    }
  }
}

TEST(Sweep, AReplyOfAnyLengthIsTakenOrRefused) {
  for (const Row& row : AllRows()) {
    if (row.commands == 0) continue;
    const auto record = static_cast<uint32_t>(row.record);
    std::set<uint32_t> lengths{0, 1, record, record + 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    if (record > 0) lengths.insert(record - 1);
    for (const uint32_t length : lengths) {
      SCOPED_TRACE(fmt::format("{}, a reply of {} bytes", row.name, length));
      fake::Device device;
      device.answer = [&](const fake::Command& command) { return ReplyTo(row, command, length); };
      const int error = row.errorOf(length);
      ExpectCall(row, device, error, error == 0 ? row.keptByRelease : row.keptByRefusedReply);
    }
  }
}

// Fresh memory of more than this comes from the system and is zero. Lists so large hold no counts.
constexpr std::size_t kLargestReply = 32 << 20;

// One record after another, without a zero but for the numbers of the row.
fake::Bytes RecordsOf(const Row& row, std::size_t size) {
  fake::Bytes bytes(size, 0x5A);
  for (std::size_t start = 0; start < size && !row.numbers.empty(); start += row.record) {
    for (const sweep::Number& number : row.numbers) {
      if (start + number.offset + number.width > size) continue;
      std::memcpy(&bytes[start + number.offset], &number.value, number.width);
    }
  }
  return bytes;
}

fake::Reply ReplyTo(const Row& row, const fake::Command& command, uint32_t length) {
  if (row.sizeQuery && command.request == row.sizeQuery->code) {
    return {.bytes = row.sizeQuery->reply};
  }
  const std::size_t size = row.isFilled ? command.outLength : std::min(length, command.outLength);
  return {.bytes = RecordsOf(row, size > kLargestReply ? 0 : size), .length = length};
}

uint32_t WholeReply(const Row& row) { return static_cast<uint32_t>(row.record); }

// The family whose public header declares the function.
std::string FamilyOf(const std::string& function) {
  for (const auto& header : std::filesystem::directory_iterator(SOURCE_TREE "/include/vdrzax")) {
    std::ifstream file(header.path());
    for (std::string line; std::getline(file, line);) {
      if (line.find(" " + function + "(") != std::string::npos) return header.path().stem();
    }
  }
  return "FAMILY";
}

// Calls, releases what came back, and expects the errno and the memory that is left.
void ExpectCall(const Row& row, fake::Device& device, int error, const Sizes& kept) {
  const contract::Outcome outcome = contract::Run([&] { return row.call(device); });
  // Once the kernel has replied. What was stored is gone then and must not be released.
  const bool isHidden = row.hidesDecodeFailure && device.commands.size() == 1 &&
                        (error == EBADMSG || error == ENOMEM);
  EXPECT_EQ(outcome.result, error == 0 || isHidden ? 0 : -1);
  EXPECT_EQ(outcome.error, error == 0 ? kUntouched : error);
  ExpectClosed(row, device);
  if (outcome.result == 0 && error == 0) {
    EXPECT_EQ(device.commands.size(), static_cast<std::size_t>(row.commands));
    if (row.release) row.release();
  }
  EXPECT_EQ(device.Live(), kept);
  device.FreeLost();
}

// Each node that was opened saw one command and was closed, before the next was opened.
void ExpectClosed(const Row& row, const fake::Device& device) {
  contract::Steps steps;
  for (const std::string& step : device.steps) {
    if (step == "open64" || step == "ioctl" || step == "close") steps.push_back(step);
  }
  contract::Steps expected;
  if (device.openError != 0) {
    if (row.commands > 0 && !steps.empty()) expected.emplace_back("open64");
  } else {
    for (std::size_t command = 0; command < device.commands.size(); ++command) {
      expected.insert(expected.end(), {"open64", "ioctl", "close"});
    }
  }
  EXPECT_EQ(steps, expected);
}

}  // namespace
