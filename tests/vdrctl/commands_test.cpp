#include <gtest/gtest.h>
#include <vdrzax/bridge.h>
#include <vdrzax/channel.h>
#include <vdrzax/instance.h>
#include <vdrzax/services.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string>
#include <variant>
#include <vector>

#include "command_line.h"
#include "output/output.h"
#include "run.h"

// The commands over a library that answers as no datapath of ours would: these functions stand
// before those of the shared object.
namespace {

struct Kernel {
  int result = 0;
  uint32_t length = 0;  // what it says that it wrote
  bool writes = true;
  IoctlEnvelope seen{};
  int filter = -1;
  int releasedLists = 0;
  int releasedRecords = 0;
  uint32_t capacity = 0;
  int error = EIO;  // what stands in errno behind it; 0 leaves it alone
};
Kernel kernel;

InstanceRecord records[2];
RecordList list{};

}  // namespace

int VDRZAXIoctl(int /*request*/, IoctlEnvelope* envelope) {
  kernel.seen = *envelope;
  if (kernel.writes && envelope->outLength != 0) {
    std::memset(envelope->outBuffer, 'x', envelope->outLength);
  }
  envelope->outLength = kernel.length;
  errno = EIO;
  return kernel.result;
}

int VDRZAX_GetInstances(const char* /*name*/, uint8_t filter, RecordList** out) {
  kernel.filter = filter;
  list.count = 2;
  list.entries = records;
  *out = &list;
  if (kernel.error != 0) errno = kernel.error;
  return kernel.result;
}

int VDRZAX_GetInstance(const char* /*name*/, InstanceRecord** out) {
  *out = records;
  errno = EIO;
  return kernel.result;
}

// As for a reply without bytes: success, and nothing is written.
int VDRZAX_GetLogLevel(uint32_t* /*value*/) { return kernel.result; }

// As many endpoints as it says, whatever there is room for.
int VDRZAX_GetBeAll(void* /*bytes*/, uint32_t capacity, uint32_t* count) {
  kernel.capacity = capacity;
  *count = kernel.length;
  return kernel.result;
}

// As for a reply that contradicts itself: a failure of which errno knows nothing.
int VDRZAX_GetVMPublicIPTable(VMPublicIPTable** /*table*/) { return -1; }

void VDRZAX_ReleaseInstances(RecordList* released) { kernel.releasedLists += released == &list; }

void VDRZAX_ReleaseInstance(InstanceRecord* released) {
  kernel.releasedRecords += released == records;
}

namespace {

struct Printed {
  int result;
  std::string text;
};

Printed CarryOut(const std::vector<std::string>& words) {
  const auto parsed = vdrctl::Parse(words);
  const auto& invocation = std::get<vdrctl::Invocation>(parsed);
  const vdrctl::Presentation presentation{.form = invocation.globals.json
                                                      ? vdrctl::Presentation::Form::Json
                                                      : vdrctl::Presentation::Form::Tables};
  vdrctl::Writer writer;
  vdrctl::Output out(presentation, invocation.command->reply, writer);
  vdrctl::Given::Room room;
  const int result = invocation.command->handler.call(out, invocation.command->Parameters(),
                                                      invocation.given.In(room));
  return {result, writer.text()};
}

TEST(RawCommand, ShowsOfAReplyOnlyWhatThereIsRoomFor) {
  kernel = {.length = 4'000'000'000};
  const Printed table = CarryOut({"command", "9", "--capacity", "3"});
  EXPECT_EQ(table.result, 0);
  EXPECT_EQ(table.text, "00000000  78 78 78                                         |xxx|\n");
  EXPECT_EQ(CarryOut({"--json", "command", "9", "--capacity", "3"}).text,
            "{\"length\":4000000000,\"bytes\":\"787878\"}\n");
}

TEST(RawCommand, ShowsNothingOfAReplyWithoutRoom) {
  kernel = {.length = 100};
  EXPECT_EQ(CarryOut({"--json", "command", "9"}).text, "{\"length\":100,\"bytes\":\"\"}\n");
  EXPECT_EQ(CarryOut({"command", "9"}).text, "");
}

TEST(RawCommand, ShowsOfARoomOnlyWhatTheReplyFilled) {
  kernel = {.length = 1};
  EXPECT_EQ(CarryOut({"--json", "command", "9", "--capacity", "3"}).text,
            "{\"length\":1,\"bytes\":\"78\"}\n");
}

TEST(RawCommand, HasRoomForOneByteToo) {
  kernel = {.length = 1};
  EXPECT_EQ(CarryOut({"--json", "command", "9", "--capacity", "1"}).text,
            "{\"length\":1,\"bytes\":\"78\"}\n");
}

TEST(RawCommand, ShowsZerosWhereTheKernelClaimsBytesThatItDidNotWrite) {
  kernel = {.length = 3, .writes = false};
  EXPECT_EQ(CarryOut({"--json", "command", "9", "--capacity", "3"}).text,
            "{\"length\":3,\"bytes\":\"000000\"}\n");
}

TEST(RawCommand, SendsNeitherInputNorRoomUnlessToldTo) {
  kernel = {};
  CarryOut({"command", "9"});
  EXPECT_EQ(+kernel.seen.inLength, 0U);
  EXPECT_EQ(+kernel.seen.outLength, 0U);
  const void* in = kernel.seen.inBuffer;
  const void* out = kernel.seen.outBuffer;
  EXPECT_EQ(in, nullptr);
  EXPECT_EQ(out, nullptr);
}

TEST(RawCommand, FailsAsTheKernelDoes) {
  kernel = {.result = -1, .length = 3};
  const Printed printed = CarryOut({"command", "9", "--capacity", "3"});
  EXPECT_EQ(printed.result, -1);
  EXPECT_EQ(printed.text, "");
}

TEST(Reading, ShowsZeroForANumberThatTheReplyDidNotHold) {
  kernel = {};
  EXPECT_EQ(CarryOut({"log-level", "get"}).text, "0\n");
}

TEST(Reading, HasRoomForEachEndpointAndShowsNoMore) {
  constexpr std::size_t kRoom = 6'737'920;
  kernel = {.length = 28'673};
  const std::string text = CarryOut({"--json", "bridge-endpoint", "list"}).text;
  EXPECT_EQ(kernel.capacity, kRoom);
  const std::string begin = R"({"length":6738155,"bytes":")";
  EXPECT_TRUE(text.starts_with(begin)) << text.substr(0, begin.size());
  EXPECT_EQ(text.size(), begin.size() + 2 * kRoom + std::strlen("\"}\n"));
}

TEST(Reading, SaysSoWhenItFailsWithoutAReason) {
  const auto parsed = vdrctl::Parse(std::vector<std::string>{"public-ip", "list"});
  errno = EIO;
  vdrctl::Writer writer;
  testing::internal::CaptureStderr();
  const int status =
      vdrctl::Execute(std::get<vdrctl::Invocation>(parsed), {}, writer, vdrctl::Report());
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vdrctl: public-ip list: failed without giving a reason\n");
  EXPECT_EQ(status, 1);
}

// What the compiler asserted of each row, and that it would have noticed.
bool IsTextToAFunction(const vdrctl::Parameter& parameter) {
  using Kind = vdrctl::Parameter::Kind;
  return parameter.kind == Kind::Text || parameter.kind == Kind::File ||
         parameter.kind == Kind::Choice;
}

constexpr std::array<uint64_t, 5> kLimitsOfTypes{UINT8_MAX, UINT16_MAX, INT32_MAX, UINT32_MAX,
                                                 UINT64_MAX};

TEST(Rows, TakeTheirParametersAndNoOthers) {
  for (const vdrctl::Family* family : vdrctl::kFamilies) {
    for (const vdrctl::Command& command : family->commands) {
      // What a deletion has behind its own parameters is not for its handler.
      const auto all = command.Parameters();
      const auto parameters = all.first(all.size() - (command.Deletes() ? 1 : 0));
      EXPECT_TRUE(command.handler.Takes(parameters)) << command.summary;
      std::vector<vdrctl::Parameter> others(parameters.begin(), parameters.end());
      for (vdrctl::Parameter& other : others) {
        const vdrctl::Parameter right = other;
        const bool isSixteenBits =
            right.kind == vdrctl::Parameter::Kind::Number && right.limit == UINT16_MAX;
        if (isSixteenBits) continue;
        for (const uint64_t limit : kLimitsOfTypes) {
          const bool isOfAType =
              std::ranges::find(kLimitsOfTypes, right.limit) != kLimitsOfTypes.end();
          if (right.kind != vdrctl::Parameter::Kind::Number || !isOfAType) continue;
          other = vdrctl::Number(right.name, limit, right.meaning);
          EXPECT_EQ(command.handler.Takes(others), limit == right.limit)
              << command.summary << limit;
        }
        other = vdrctl::NumberOf<uint16_t>(right.name, right.meaning);
        EXPECT_FALSE(command.handler.Takes(others)) << command.summary << ' ' << right.name;
        other = vdrctl::Text(right.name, right.limit, right.meaning);
        EXPECT_EQ(command.handler.Takes(others), IsTextToAFunction(right)) << command.summary;
        other = right;
      }
      others.push_back(vdrctl::kInstance);
      EXPECT_FALSE(command.handler.Takes(others)) << command.summary;
    }
  }
}

TEST(Reading, GivesAListBackOnce) {
  kernel = {};
  EXPECT_EQ(CarryOut({"--json", "instance", "list"}).result, 0);
  EXPECT_EQ(kernel.releasedLists, 1);
  EXPECT_EQ(kernel.filter, 0);
  CarryOut({"instance", "list", "edge-1"});
  EXPECT_EQ(kernel.filter, 1);
}

TEST(Reading, GivesARecordBackOnce) {
  kernel = {};
  EXPECT_EQ(CarryOut({"--json", "instance", "show", "edge-1"}).result, 0);
  EXPECT_EQ(kernel.releasedRecords, 1);
}

// One getter says so of a list that it could not decode, or had no memory for, by errno alone.
TEST(Reading, FailsWhenAListIsGoneThoughItWasRead) {
  for (const int error : {EBADMSG, ENOMEM}) {
    kernel = {.error = error};
    EXPECT_EQ(CarryOut({"instance", "list"}).result, -1);
    EXPECT_EQ(errno, error);
    EXPECT_EQ(kernel.releasedLists, 0);
    kernel = {.error = 0};
    errno = error;
    EXPECT_EQ(CarryOut({"instance", "list"}).result, 0);
    EXPECT_EQ(kernel.releasedLists, 1);
  }
}

// What a failed getter leaves behind must not be touched.
TEST(Reading, GivesNothingBackAfterAFailure) {
  kernel = {.result = -1};
  EXPECT_EQ(CarryOut({"log-level", "get"}).result, -1);
  EXPECT_EQ(CarryOut({"instance", "list"}).result, -1);
  EXPECT_EQ(CarryOut({"instance", "show", "edge-1"}).result, -1);
  EXPECT_EQ(kernel.releasedLists, 0);
  EXPECT_EQ(kernel.releasedRecords, 0);
}

}  // namespace
