#include <gtest/gtest.h>
#include <vdrzax/route.h>

#include <cstdlib>
#include <string>

#include "route/route_getters.h"
#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using contract::ExpectRefused;
using contract::Steps;
using route::ResolveGetter;
using route::RoutePattern;
using route::RoutesGetter;
using wire::Block;

TEST(Ipv4Routes, SetSendsEveryArgumentToItsPlaceAndAsksForAResultWhenThereIsRoomForIt) {
  contract::ExpectRawGetter(getters::Raw("VDRZAX_SetRoute"));
}

TEST(Ipv4Routes, DeleteSendsTheSameWithoutFlags) {
  contract::ExpectRawGetter(getters::Raw("VDRZAX_DelRoute"));
}

TEST(Ipv4Routes, TheResultIsClearedBeforeTheTextsAreRead) {
  fake::Bytes result(88, 'x');
  result[87] = 0;
  const auto* ifName = reinterpret_cast<const char*>(result.data());
  fake::Device device;
  EXPECT_EQ(VDRZAX_SetRoute(1, 2, 3, ifName, "e", 4, result.data()), 0);
  contract::ExpectSent(
      device, 34, Block().Text(0, "e").U32(256, 1).U32(260, 2).U32(268, 3).U32(272, 4).bytes(), 88);
}

TEST(Ipv4Routes, AMissingNameLeavesTheResultAsItWas) {
  fake::Bytes result(88, 0xEE);
  ExpectRefused([&] { return VDRZAX_SetRoute(1, 2, 3, "uplink", nullptr, 4, result.data()); });
  ExpectRefused([&] { return VDRZAX_DelRoute(1, 2, 3, "uplink", nullptr, result.data()); });
  EXPECT_BYTES(result, fake::Bytes(88, 0xEE));
}

TEST(Ipv4Routes, WithoutAnInterface64ZeroBytesAreSentAt276) {
  ExpectCommand([] { return VDRZAX_SetRoute(1, 2, 3, nullptr, "e", 4, nullptr); }, 34,
                Block().Text(0, "e").U32(256, 1).U32(260, 2).U32(268, 3).U32(272, 4));
  ExpectCommand([] { return VDRZAX_DelRoute(1, 2, 3, nullptr, "e", nullptr); }, 35,
                Block().Text(0, "e").U32(256, 1).U32(260, 2).U32(268, 3));
}

TEST(Ipv4Routes, ANameOf64CharactersIsCutTo63AndTerminated) {
  const std::string name(64, 'n');
  const std::string interface(70, 'i');
  const Block cut = Block().Text(0, std::string(63, 'n')).Text(276, std::string(63, 'i'));
  ExpectCommand(
      [&] { return VDRZAX_SetRoute(0, 0, 0, interface.c_str(), name.c_str(), 0, nullptr); }, 34,
      cut);
  ExpectCommand([&] { return VDRZAX_DelRoute(0, 0, 0, interface.c_str(), name.c_str(), nullptr); },
                35, cut);
}

TEST(Ipv4Routes, ATableReadWithANameOf64CharactersSends63OfThem) {
  const std::string name(64, 'n');
  const Block cut = Block().Text(0, std::string(63, 'n'));
  for (const auto& call : {VDRZAX_GetRoutes, VDRZAX_GetLifSelectionRoutes}) {
    fake::Device device;
    RecordList* list = nullptr;
    ASSERT_EQ(call(name.c_str(), &list), 0);
    ASSERT_EQ(device.commands.size(), 1u);
    EXPECT_BYTES(device.commands[0].input, cut.bytes());
    VDRZAX_ReleaseRoutes(list);
  }
  fake::Device device;
  device.AnswerWith(fake::Failure(ENOENT));
  RouteRecord* record = nullptr;
  EXPECT_EQ(VDRZAX_GetResolveRoute(name.c_str(), 0, 0, 0, &record), -1);
  ASSERT_EQ(device.commands.size(), 1u);
  EXPECT_BYTES(device.commands[0].input, cut.bytes());
}

TEST(Ipv4Routes, TheFullTableIsListedByTheContractOfAListGetter) {
  contract::ExpectListGetter(RoutesGetter());
}

TEST(Ipv4Routes, TheLifSelectionTableIsListedByTheSameContractWithCode174) {
  contract::ExpectListGetter(getters::List("VDRZAX_GetLifSelectionRoutes"));
}

TEST(Ipv4Routes, OneIsResolvedByTheContractOfARecordGetter) {
  contract::ExpectRecordGetter(ResolveGetter());
}

TEST(Ipv4Routes, ATableReservesTwice13360000BytesWhateverTheCount) {
  for (const std::size_t count : {0u, 1u, 3u}) {
    fake::Device device;
    device.AnswerWith({.bytes = wire::Patterns(count, 668, RoutePattern)});
    RecordList* list = nullptr;
    ASSERT_EQ(VDRZAX_GetRoutes("edge-1", &list), 0);
    EXPECT_EQ(device.steps, (Steps{"calloc(1, 16)", "malloc(13360000)", "open64", "ioctl", "close",
                                   "calloc(20000, 668)", "free(13360000)"}));
    EXPECT_EQ(list->count, static_cast<int32_t>(count));
    ASSERT_NE(list->entries, nullptr);
    device.steps.clear();
    VDRZAX_ReleaseRoutes(list);
    EXPECT_EQ(device.steps, (Steps{"free(13360000)", "free(16)"}));
  }
}

TEST(Ipv4Routes, AFailedCommandFreesTheReplyBufferWithTheHeader) {
  fake::Device device;
  device.AnswerWith(fake::Failure(EPERM));
  auto* list = reinterpret_cast<RecordList*>(1);
  contract::ExpectFailure(device, [&] { return VDRZAX_GetLifSelectionRoutes("edge-1", &list); },
                          EPERM,
                          {"calloc(1, 16)", "malloc(13360000)", "open64", "ioctl", "close",
                           "free(16)", "free(13360000)"});
  EXPECT_EQ(list, nullptr);
}

TEST(Ipv4Routes, AMissingNameIsRefusedBeforeAnUntestedArgumentIsRead) {
  ExpectRefused([] { return VDRZAX_SetRoute(1, 2, 3, nullptr, nullptr, 4, nullptr); });
  ExpectRefused([] { return VDRZAX_DelRoute(1, 2, 3, nullptr, nullptr, nullptr); });
  ExpectRefused([] { return VDRZAX_GetResolveRoute(nullptr, 1, 2, 3, nullptr); });
  auto* out = reinterpret_cast<RouteRecord*>(1);
  ExpectRefused([&] { return VDRZAX_GetResolveRoute(nullptr, 1, 2, 3, &out); });
  EXPECT_EQ(out, reinterpret_cast<RouteRecord*>(1));
}

TEST(Ipv4Routes, AFailedAllocationIsReportedBeforeTheNameOfATableIsRead) {
  for (const auto& call : {VDRZAX_GetRoutes, VDRZAX_GetLifSelectionRoutes}) {
    for (const int failing : {1, 2}) {
      fake::Device device;
      device.failingAllocation = failing;
      auto* list = reinterpret_cast<RecordList*>(1);
      const auto outcome = contract::Run([&] { return call(nullptr, &list); });
      EXPECT_EQ(outcome.result, -1);
      EXPECT_EQ(outcome.error, ENOMEM);
      EXPECT_EQ(list, nullptr);
    }
  }
}

TEST(Ipv4RoutesDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  RecordList* list = nullptr;
  EXPECT_DEATH(VDRZAX_GetRoutes(nullptr, &list), "");
  EXPECT_DEATH(VDRZAX_GetRoutes("edge-1", nullptr), "");
  EXPECT_DEATH(VDRZAX_GetLifSelectionRoutes(nullptr, &list), "");
  EXPECT_DEATH(VDRZAX_GetLifSelectionRoutes("edge-1", nullptr), "");
  EXPECT_DEATH(VDRZAX_GetResolveRoute("edge-1", 1, 2, 3, nullptr), "");
}

}  // namespace
