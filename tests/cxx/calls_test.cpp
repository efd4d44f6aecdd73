#include "cxx/calls.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <numeric>
#include <set>
#include <string>

#include "exported_functions.h"
#include "support/fake_device.h"
#include "support/wire.h"

namespace cxx {

namespace {

constexpr unsigned long kDeleteRemoteReceiver = 132;

const Rows& AllCalls() {
  static const Rows all = [] {
    Rows joined = ChannelCalls();
    for (const Rows& rows : {
#define CALLS_OF(family) family##Calls(),
             FOR_EACH_FAMILY(CALLS_OF)
#undef CALLS_OF
         }) {
      joined.insert(joined.end(), rows.begin(), rows.end());
    }
    return joined;
  }();
  return all;
}

// What a call sends, with a device that answers so.
std::vector<fake::Command> Sent(const fake::Reply& reply, const std::function<void()>& call) {
  fake::Device device;
  device.AnswerWith(reply);
  call();
  device.FreeLost();
  return device.commands;
}

// The kernel looks at three fields of this one, and the rest of its block is not cleared.
void KeepWhatTheKernelSees(fake::Command& command) {
  fake::Bytes seen(968);
  std::memcpy(seen.data(), command.input.data(), 64);
  std::memcpy(seen.data() + 256, command.input.data() + 256, 4);
  std::memcpy(seen.data() + 276, command.input.data() + 276, 4);
  command.input = seen;
}

void ExpectSame(std::vector<fake::Command> face, std::vector<fake::Command> inC) {
  ASSERT_EQ(face.size(), inC.size());
  for (std::size_t index = 0; index < face.size(); ++index) {
    fake::Command& mine = face[index];
    fake::Command& theirs = inC[index];
    EXPECT_EQ(mine.node, theirs.node);
    EXPECT_EQ(mine.request, theirs.request);
    EXPECT_EQ(mine.inLength, theirs.inLength);
    EXPECT_EQ(mine.inBuffer == nullptr, theirs.inBuffer == nullptr);
    EXPECT_EQ(mine.outLength, theirs.outLength);
    EXPECT_EQ(mine.outBuffer == nullptr, theirs.outBuffer == nullptr);
    if (mine.request == kDeleteRemoteReceiver) {
      KeepWhatTheKernelSees(mine);
      KeepWhatTheKernelSees(theirs);
    }
    EXPECT_BYTES(mine.input, theirs.input);
  }
}

class Calls : public testing::TestWithParam<Row> {};

TEST_P(Calls, SendsWhatTheCCallSends) {
  const Row& row = GetParam();
  const Client vdr;
  const fake::Reply reply{.bytes = fake::Bytes(row.reply)};
  const auto inC = Sent(reply, [&] { EXPECT_EQ(row.inC(), 0); });
  ASSERT_FALSE(inC.empty());
  ExpectSame(Sent(reply, [&] { EXPECT_NO_THROW(row.throws(vdr)); }), inC);
  ExpectSame(Sent(reply, [&] { EXPECT_EQ(row.tries(vdr).code, 0); }), inC);
}

// What the library still holds after a call.
std::vector<std::size_t> Lost(const fake::Reply& reply, const std::function<void()>& call) {
  fake::Device device;
  device.AnswerWith(reply);
  call();
  auto sizes = device.Live();
  device.FreeLost();
  return sizes;
}

// Two tables without entries lose an allocation of no bytes on purpose.
TEST_P(Calls, LeavesNoMoreBehindThanTheCCall) {
  const Row& row = GetParam();
  const fake::Reply reply{.bytes = fake::Bytes(row.reply)};
  const auto lost = Lost(reply, [&] { row.throws(Client()); });
  EXPECT_EQ(lost, Lost(reply, [&] { row.inC(); }));
  EXPECT_EQ(std::accumulate(lost.begin(), lost.end(), std::size_t{0}), 0U);
}

TEST_P(Calls, LeavesErrnoAlone) {
  const Row& row = GetParam();
  fake::Device device;
  device.AnswerWith({.bytes = fake::Bytes(row.reply)});
  errno = 4095;
  row.throws(Client());
  EXPECT_EQ(errno, 4095);
  device.FreeLost();
}

TEST_P(Calls, FailsWithTheFunctionAndTheErrnoOfTheDevice) {
  const Row& row = GetParam();
  const Client vdr;
  fake::Device device;
  device.AnswerWith(fake::Failure(EXDEV));
  // The one function that hides what its first command left.
  const int code = row.function == std::string("VDRZAX_GetRoutesv6") ? ENOMEM : EXDEV;
  const vdrzax::Failure failure = row.tries(vdr);
  EXPECT_STREQ(failure.function, row.function);
  EXPECT_EQ(failure.code, code);
  EXPECT_EQ(failure.refusal, vdrzax::Refusal::None);
  try {
    row.throws(vdr);
    ADD_FAILURE() << "nothing was thrown";
  } catch (const vdrzax::error& error) {
    EXPECT_STREQ(error.function(), row.function);
    EXPECT_EQ(error.code(), std::error_code(code, std::system_category()));
  }
  device.FreeLost();
}

TEST_P(Calls, LosesNoMoreThanTheCCallWhenTheDeviceFails) {
  const Row& row = GetParam();
  const fake::Reply refusal = fake::Failure(EXDEV);
  EXPECT_EQ(Lost(refusal, [&] { static_cast<void>(row.tries(Client())); }),
            Lost(refusal, [&] { row.inC(); }));
}

std::string NameOf(const testing::TestParamInfo<Row>& info) {
  return std::string(info.param.function) + "_" + std::to_string(info.index);
}

INSTANTIATE_TEST_SUITE_P(Cxx, Calls, testing::ValuesIn(AllCalls()), NameOf);

TEST(CxxFace, HasACallForEachFunctionThatReachesTheDevice) {
  std::set<std::string> called;
  for (const Row& row : AllCalls()) called.insert(row.function);
  std::set<std::string> exported;
  for (const std::string name : kExportedFunctions) {
    if (name.find("_Release") == std::string::npos && name != "VDRZAXGetUuidOrName")
      exported.insert(name);
  }
  EXPECT_EQ(called, exported);
}

}  // namespace

}  // namespace cxx
