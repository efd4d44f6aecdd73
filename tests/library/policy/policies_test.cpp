#include <gtest/gtest.h>
#include <vdrzax/policy.h>

#include <cstdlib>

#include "policy/result_command.h"
#include "support/contract.h"

namespace {

using contract::ExpectFailure;
using contract::Steps;
using wire::Block;

const contract::ListGetter& PoliciesGetter() { return getters::List("VDRZAX_GetPolicy"); }

fake::Bytes DecodedPolicy(const fake::Bytes& source) {
  return wire::Decoded(source, {{0, 4}, {4, 4}, {8, 4}, {12, 4}, {16, 4}, {20, 8}});
}

// A count query whose variable holds 77 before.
struct CountQuery {
  uint32_t count = 77;
  int operator()() { return VDRZAX_GetPolicyCount(0x51525354, &count); }
};

TEST(Policies, SetSendsEveryArgumentToItsPlace) {
  contract::ExpectRawGetter(getters::Raw("VDRZAX_SetPolicy"));
}

TEST(Policies, DeleteSendsEveryArgumentToItsPlaceAndLeaves404Zero) {
  contract::ExpectRawGetter(getters::Raw("VDRZAX_DelPolicy"));
}

TEST(Policies, DeleteLeaves404ZeroWhateverTheSetBeforeItUsed) {
  fake::Device device;
  ASSERT_EQ(VDRZAX_SetPolicy(1, 2, 3, 0xFFFFFFFF, nullptr), 0);
  ASSERT_EQ(VDRZAX_DelPolicy(1, 2, 3, nullptr), 0);
  ASSERT_EQ(device.commands.size(), 2u);
  for (const std::size_t offset : {404u, 405u, 406u, 407u}) {
    EXPECT_EQ(device.commands[0].input[offset], 0xFF);
    EXPECT_EQ(device.commands[1].input[offset], 0);
  }
}

TEST(Policies, NoCommandNamesAnInstanceAndEachHasItsKeyAt412) {
  fake::Device device;
  device.answer = [](const fake::Command& command) {
    return command.request == 122 ? fake::Reply{.bytes = {0, 0, 0, 0}} : fake::Reply{};
  };
  RecordList* list = nullptr;
  uint32_t count = 0;
  ASSERT_EQ(VDRZAX_SetPolicy(0x61626364, 1, 2, 3, nullptr), 0);
  ASSERT_EQ(VDRZAX_DelPolicy(0x61626364, 1, 2, nullptr), 0);
  ASSERT_EQ(VDRZAX_GetPolicy(0x61626364, &list), 0);
  ASSERT_EQ(VDRZAX_GetPolicyCount(0x61626364, &count), 0);
  VDRZAX_ReleaseAllPolicy(list);
  ASSERT_EQ(device.commands.size(), 4u);
  for (const fake::Command& command : device.commands) {
    SCOPED_TRACE(command.request);
    ASSERT_EQ(command.input.size(), 968u);
    EXPECT_BYTES(wire::BytesOf(command.input.data(), 64), fake::Bytes(64));
    EXPECT_BYTES(wire::BytesOf(command.input.data() + 412, 4),
                 (fake::Bytes{0x64, 0x63, 0x62, 0x61}));
  }
}

TEST(Policies, ThoseOfAKeyAreListedByTheContractOfAListGetter) {
  contract::ExpectListGetter(PoliciesGetter());
}

TEST(Policies, EveryRecordOfAListIsCopiedFieldByField) {
  const auto records = contract::DecodeAll(PoliciesGetter(), wire::Patterns(1000, 28));
  ASSERT_EQ(records.size(), 1000u);
  for (const std::size_t index : {0u, 1u, 500u, 999u}) {
    EXPECT_BYTES(records[index], DecodedPolicy(wire::Pattern(28, static_cast<unsigned>(index))));
  }
}

TEST(Policies, TheFieldsOfARecordReadWhatTheKernelWrote) {
  const Block source = Block()
                           .U32(0, 0x01020304)
                           .U32(4, 0x11121314)
                           .U32(8, 0x21222324)
                           .U32(12, 0x31323334)
                           .U32(16, 0x41424344)
                           .U64(20, 0x5152535455565758);
  fake::Device device;
  device.AnswerWith({.bytes = wire::BytesOf(source.bytes().data(), 28)});
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetPolicy(1, &list), 0);
  ASSERT_EQ(list->count, 1);
  const PolicyRecord policy = *static_cast<const PolicyRecord*>(list->entries);
  VDRZAX_ReleaseAllPolicy(list);
  EXPECT_EQ(+policy.policyWord0, 0x01020304u);
  EXPECT_EQ(+policy.policyWord1, 0x11121314u);
  EXPECT_EQ(+policy.policyWord2, 0x21222324u);
  EXPECT_EQ(+policy.policyWord3, 0x31323334u);
  EXPECT_EQ(+policy.policyWord4, 0x41424344u);
  EXPECT_EQ(+policy.policyQword, 0x5152535455565758u);
}

TEST(Policies, AReplyOfNothingIsAnEmptyList) {
  EXPECT_EQ(contract::DecodeAll(PoliciesGetter(), {}).size(), 0u);
}

TEST(Policies, AReplyOf56BytesIsTwoRecords) {
  EXPECT_EQ(contract::DecodeAll(PoliciesGetter(), wire::Patterns(2, 28)).size(), 2u);
}

TEST(Policies, TheCountPassesThroughABufferOfFourBytes) {
  for (const uint32_t length : {4u, 5u, 0x7FFFFFFFu}) {
    SCOPED_TRACE(length);
    fake::Device device;
    device.AnswerWith({.bytes = {0x78, 0x56, 0x34, 0x12}, .length = length});
    CountQuery query;
    const contract::Outcome outcome = contract::Run(std::ref(query));
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.error, contract::kUntouched);
    EXPECT_EQ(query.count, 0x12345678u);
    EXPECT_EQ(device.steps, (Steps{"malloc(4)", "open64", "ioctl", "close", "free(4)"}));
    contract::ExpectSent(device, 122, Block().U32(412, 0x51525354).bytes(), 4);
    EXPECT_NE(device.commands[0].outBuffer, &query.count);
    EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
  }
}

TEST(Policies, AShortCountIsRefusedAndItsBufferStaysBehind) {
  for (const uint32_t length : {0u, 1u, 2u, 3u, 0x80000000u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(length);
    fake::Device device;
    device.AnswerWith({.bytes = {1, 2}, .length = length});
    CountQuery query;
    ExpectFailure(device, std::ref(query), EBADMSG, {"malloc(4)", "open64", "ioctl", "close"});
    EXPECT_EQ(query.count, 77u);
    ASSERT_EQ(device.Live(), std::vector<std::size_t>{4});
    std::free(device.commands.at(0).outBuffer);
  }
}

TEST(Policies, NoOtherFailureOfTheCountLosesItsBuffer) {
  CountQuery query;
  {
    SCOPED_TRACE("the reply buffer cannot be allocated");
    fake::Device device;
    device.failingAllocation = 1;
    ExpectFailure(device, std::ref(query), ENOMEM, {"malloc(4)"});
  }
  {
    SCOPED_TRACE("the node is missing");
    fake::Device device;
    device.openError = ENOENT;
    ExpectFailure(device, std::ref(query), ENOENT, {"malloc(4)", "open64", "free(4)"});
    EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
  }
  {
    SCOPED_TRACE("the ioctl fails");
    fake::Device device;
    device.AnswerWith({.bytes = {1, 2, 3, 4}, .length = 2, .result = -1, .error = EXDEV});
    ExpectFailure(device, std::ref(query), EXDEV,
                  {"malloc(4)", "open64", "ioctl", "close", "free(4)"});
    EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
  }
  EXPECT_EQ(query.count, 77u);
}

TEST(PoliciesDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  device.answer = [](const fake::Command& command) {
    return command.request == 122 ? fake::Reply{.bytes = {0, 0, 0, 0}} : fake::Reply{};
  };
  EXPECT_DEATH(VDRZAX_GetPolicy(1, nullptr), "");
  EXPECT_DEATH(VDRZAX_GetPolicyCount(1, nullptr), "");
}

}  // namespace
