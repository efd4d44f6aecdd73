#include <gtest/gtest.h>
#include <vdrzax/mcast.h>

#include <cstdlib>
#include <string>

#include "support/contract.h"

namespace {

using wire::Block;

const contract::ListGetter& GroupsGetter() {
  return getters::List("VDRZAX_GetMRoutingAllMcastGroups");
}

TEST(McastGroups, TheyAreListedByTheContractOfAListGetter) {
  contract::ExpectListGetter(GroupsGetter());
}

TEST(McastGroups, EveryRecordIsCopiedAsItStands) {
  const auto records = contract::DecodeAll(GroupsGetter(), wire::Patterns(4096, 12));
  ASSERT_EQ(records.size(), 4096u);
  for (const std::size_t index : {0u, 1u, 2u, 2048u, 4095u}) {
    EXPECT_BYTES(records[index], wire::Pattern(12, static_cast<unsigned>(index)));
  }
}

TEST(McastGroups, AReplyOf0BytesGivesNone) {
  EXPECT_EQ(contract::DecodeAll(GroupsGetter(), {}).size(), 0u);
}

TEST(McastGroups, AReplyOf13BytesGivesTwoOfWhichTheSecondEndsInTheReplyBuffersOwnBytes) {
  const fake::Bytes source = wire::Pattern(13);
  const auto records = contract::DecodeAll(GroupsGetter(), source);
  ASSERT_EQ(records.size(), 2u);
  EXPECT_BYTES(records[0], fake::Bytes(source.begin(), source.begin() + 12));
  fake::Bytes second(12, 0xA5);
  second[0] = source[12];
  EXPECT_BYTES(records[1], second);
}

TEST(McastGroups, AReplyThatEndsInsideARecordIsNeverRefused) {
  for (uint32_t tail = 1; tail < 12; ++tail) {
    SCOPED_TRACE(tail);
    fake::Device device;
    device.AnswerWith({.bytes = wire::Pattern(24 + tail)});
    RecordList* list = nullptr;
    const auto outcome =
        contract::Run([&] { return VDRZAX_GetMRoutingAllMcastGroups("edge-1", &list); });
    ASSERT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.error, contract::kUntouched);
    EXPECT_EQ(list->count, 3);
    VDRZAX_ReleaseMRoutingMcastGroups(list);
  }
}

TEST(McastGroups, AReplyOfMoreThan4096RecordsGives4096) {
  for (const uint32_t length : {49153u, 49164u, 60000u}) {
    fake::Device device;
    device.AnswerWith({.bytes = wire::Patterns(4096, 12), .length = length});
    RecordList* list = nullptr;
    ASSERT_EQ(VDRZAX_GetMRoutingAllMcastGroups("edge-1", &list), 0);
    EXPECT_EQ(list->count, 4096);
    VDRZAX_ReleaseMRoutingMcastGroups(list);
  }
}

TEST(McastGroups, TheHeaderIsDroppedWhenTheCommandFails) {
  fake::Device device;
  RecordList* list = nullptr;
  RecordList* during = nullptr;
  device.answer = [&](const fake::Command&) {
    during = list;
    return fake::Failure(ENOENT);
  };
  EXPECT_EQ(VDRZAX_GetMRoutingAllMcastGroups("edge-1", &list), -1);
  EXPECT_EQ(list, nullptr);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{16});
  ASSERT_NE(during, nullptr);
  std::free(during);
}

TEST(McastGroups, ANameOf64CharactersIsCutTo63AndTerminated) {
  fake::Device device;
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetMRoutingAllMcastGroups(std::string(64, 'n').c_str(), &list), 0);
  contract::ExpectSent(device, 135, Block().Text(0, std::string(63, 'n')).bytes(), 49152);
  VDRZAX_ReleaseMRoutingMcastGroups(list);
}

TEST(McastGroupsDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  RecordList* list = nullptr;
  EXPECT_DEATH(VDRZAX_GetMRoutingAllMcastGroups(nullptr, &list), "");
  EXPECT_DEATH(VDRZAX_GetMRoutingAllMcastGroups("edge-1", nullptr), "");
}

}  // namespace
