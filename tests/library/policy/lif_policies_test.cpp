#include <gtest/gtest.h>
#include <vdrzax/policy.h>

#include <string>

#include "policy/result_command.h"
#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using contract::ExpectResultCommandRefused;
using wire::Block;

struct Change {
  decltype(&VDRZAX_SetLifPolicy) call;
  unsigned long code;
};

constexpr Change kChanges[] = {{VDRZAX_SetLifPolicy, 141}, {VDRZAX_DelLifPolicy, 142}};

// A route as the kernel would send it, with `hops` next hops.
fake::Bytes RouteWithHops(uint8_t hops, unsigned seed = 1) {
  fake::Bytes route = wire::Pattern(668, seed);
  route[17] = hops;
  return route;
}

const contract::ListGetter& PoliciesGetter() { return getters::List("VDRZAX_GetLifPolicies"); }

// One list that the kernel answers with nothing, to see what was sent.
void ExpectListSends(const char* name, uint32_t type, const char* lifName, const Block& block) {
  fake::Device device;
  RecordList* list = nullptr;
  ASSERT_EQ(VDRZAX_GetLifPolicies(name, type, lifName, &list), 0);
  contract::ExpectSent(device, 140, block.bytes(), 13360000);
  VDRZAX_ReleaseRoutes(list);
}

TEST(LifPolicies, SetAndDeleteSendTheSameAndTheFlagsToo) {
  contract::ExpectRawGetter(getters::Raw("VDRZAX_SetLifPolicy"));
  contract::ExpectRawGetter(getters::Raw("VDRZAX_DelLifPolicy"));
}

TEST(LifPolicies, WithAnyTypeBut4TheLifNameIsIgnored) {
  for (const Change& change : kChanges) {
    for (const int32_t type : {0, 3, 5, -4, 0x104, INT32_MIN + 4}) {
      for (const char* name : {"lif-1", static_cast<const char*>(nullptr)}) {
        SCOPED_TRACE(type);
        ExpectCommand(
            [&] { return change.call(type, name, 1, 2, 3, "port-1", "edge-1", 4, nullptr); },
            change.code,
            Block()
                .Text(0, "edge-1")
                .U32(256, 1)
                .U32(260, 2)
                .U32(268, 3)
                .U32(272, 4)
                .Text(276, "port-1")
                .U32(408, static_cast<uint32_t>(type)));
      }
    }
  }
}

TEST(LifPolicies, WithoutInterfaceName276To339StayZero) {
  for (const Change& change : kChanges) {
    ExpectCommand([&] { return change.call(4, "lif-1", 1, 2, 3, nullptr, "edge-1", 4, nullptr); },
                  change.code,
                  Block()
                      .Text(0, "edge-1")
                      .U32(256, 1)
                      .U32(260, 2)
                      .U32(268, 3)
                      .U32(272, 4)
                      .Text(340, "lif-1")
                      .U32(408, 4));
  }
}

TEST(LifPolicies, NamesOf64CharactersAreCutTo63AndTerminated) {
  const std::string instance(64, 'n');
  const std::string port(64, 'p');
  const std::string lif(64, 'l');
  const Block cut = Block()
                        .Text(0, std::string(63, 'n'))
                        .Text(276, std::string(63, 'p'))
                        .Text(340, std::string(63, 'l'))
                        .U32(408, 4);
  for (const Change& change : kChanges) {
    ExpectCommand(
        [&] {
          return change.call(4, lif.c_str(), 0, 0, 0, port.c_str(), instance.c_str(), 0, nullptr);
        },
        change.code, cut);
  }
  ExpectListSends(
      instance.c_str(), 4, lif.c_str(),
      Block().Text(0, std::string(63, 'n')).Text(340, std::string(63, 'l')).U32(408, 4));
}

TEST(LifPolicies, AMissingInstanceNameIsRefusedBySetAndDeleteAndTheResultStays) {
  for (const Change& change : kChanges) {
    for (const int32_t type : {3, 4}) {
      ExpectResultCommandRefused([&](void* result) {
        return change.call(type, "lif-1", 1, 2, 3, "port-1", nullptr, 4, result);
      });
    }
  }
}

TEST(LifPolicies, Type4WithoutLifNameIsRefusedBySetAndDeleteAndTheResultStays) {
  for (const Change& change : kChanges) {
    for (const char* name : {"edge-1", static_cast<const char*>(nullptr)}) {
      ExpectResultCommandRefused([&](void* result) {
        return change.call(4, nullptr, 1, 2, 3, "port-1", name, 4, result);
      });
    }
  }
}

TEST(LifPolicies, TheyAreListedByTheContractOfAListGetter) {
  contract::ExpectListGetter(PoliciesGetter());
}

TEST(LifPolicies, TheListSendsALifNameWithEveryType) {
  for (const uint32_t type : {0u, 3u, 4u, 0xFFFFFFFFu}) {
    ExpectListSends("edge-1", type, "lif-1",
                    Block().Text(0, "edge-1").Text(340, "lif-1").U32(408, type));
  }
}

TEST(LifPolicies, TheListWithoutLifNameLeaves340To403Zero) {
  for (const uint32_t type : {0u, 3u, 5u, 0x104u, 0x80000004u}) {
    ExpectListSends("edge-1", type, nullptr, Block().Text(0, "edge-1").U32(408, type));
  }
}

TEST(LifPolicies, AListOfType4WithoutLifNameIsRefusedAndThePointerStays) {
  for (const char* name : {"edge-1", static_cast<const char*>(nullptr)}) {
    auto* list = reinterpret_cast<RecordList*>(1);
    contract::ExpectRefused([&] { return VDRZAX_GetLifPolicies(name, 4, nullptr, &list); });
    EXPECT_EQ(list, reinterpret_cast<RecordList*>(1));
  }
  contract::ExpectRefused([] { return VDRZAX_GetLifPolicies("edge-1", 4, nullptr, nullptr); });
}

TEST(LifPolicies, AFailedAllocationIsReportedBeforeTheNameIsRead) {
  for (const int failing : {1, 2}) {
    fake::Device device;
    device.failingAllocation = failing;
    RecordList* list = nullptr;
    const auto outcome =
        contract::Run([&] { return VDRZAX_GetLifPolicies(nullptr, 3, nullptr, &list); });
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.error, ENOMEM);
  }
}

TEST(LifPolicies, ARecordWithTwoNextHopsHasTheOtherSixZero) {
  const fake::Bytes source = RouteWithHops(2);
  const auto records = contract::DecodeAll(PoliciesGetter(), source);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_BYTES(records[0], wire::Decoded(source, {{0, 4},
                                                  {4, 4},
                                                  {8, 4},
                                                  {12, 4},
                                                  {16, 1},
                                                  {17, 1},
                                                  {20, 8},
                                                  {32, 4},
                                                  {36, 64, 't'},
                                                  {100, 8},
                                                  {112, 4},
                                                  {116, 64, 't'},
                                                  {180, 8}}));
}

TEST(LifPolicies, ARecordWithoutNextHopsHasAllEightZero) {
  const fake::Bytes source = RouteWithHops(0);
  const auto records = contract::DecodeAll(PoliciesGetter(), source);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_BYTES(records[0], wire::Decoded(source, {{0, 16}, {16, 1}, {20, 8}}));
}

TEST(LifPolicies, ARecordWithEightNextHopsIsCopiedToItsLastByte) {
  const fake::Bytes source = RouteWithHops(8);
  const auto records = contract::DecodeAll(PoliciesGetter(), source);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0][17], 8);
  for (std::size_t hop = 28; hop < 668; hop += 80) {
    SCOPED_TRACE(hop);
    const fake::Bytes slot(source.begin() + static_cast<std::ptrdiff_t>(hop),
                           source.begin() + static_cast<std::ptrdiff_t>(hop + 80));
    EXPECT_BYTES(wire::BytesOf(records[0].data() + hop, 80),
                 wire::Decoded(slot, {{4, 4}, {8, 64, 't'}, {72, 8}}));
  }
}

TEST(LifPoliciesDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  RecordList* list = nullptr;
  EXPECT_DEATH(VDRZAX_GetLifPolicies(nullptr, 3, nullptr, &list), "");
  EXPECT_DEATH(VDRZAX_GetLifPolicies(nullptr, 4, "lif-1", &list), "");
  EXPECT_DEATH(VDRZAX_GetLifPolicies("edge-1", 3, nullptr, nullptr), "");
}

}  // namespace
