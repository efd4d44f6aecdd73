#include <gtest/gtest.h>
#include <vdrzax/mcast.h>

#include <string>

#include "support/contract.h"

namespace {

using wire::Block;

const contract::RecordGetter& DomainGetter() { return getters::Record("VDRZAX_GetMRoutingDomain"); }

fake::Bytes DecodedDomain(const fake::Bytes& source) {
  return wire::Decoded(source, {{0, 64, 't'}, {64, 48, 't'}, {112, 32}, {144, 4}});
}

TEST(MRoutingDomains, OneIsReadByTheContractOfARecordGetter) {
  contract::ExpectRecordGetter(DomainGetter());
}

TEST(MRoutingDomains, ARecordIsCopiedFieldByField) {
  const fake::Bytes source = wire::Pattern(148);
  EXPECT_BYTES(contract::DecodeOne(DomainGetter(), source), DecodedDomain(source));
}

TEST(MRoutingDomains, TextsThatFillTheirFieldsArriveTerminated) {
  const fake::Bytes record = contract::DecodeOne(DomainGetter(), fake::Bytes(148, 'x'));
  for (const std::size_t end : {63u, 111u}) {
    EXPECT_EQ(record[end - 1], 'x');
    EXPECT_EQ(record[end], 0);
    EXPECT_EQ(record[end + 1], 'x');
  }
}

TEST(MRoutingDomains, BytesBehindATerminatorArriveAsZero) {
  fake::Bytes source = wire::Pattern(148);
  source[3] = 0;
  source[70] = 0;
  EXPECT_BYTES(contract::DecodeOne(DomainGetter(), source), DecodedDomain(source));
}

TEST(MRoutingDomains, ANameOf64CharactersIsCutTo63AndTerminated) {
  contract::RecordGetter getter = DomainGetter();
  getter.call = [](void** out) {
    return VDRZAX_GetMRoutingDomain(std::string(64, 'n').c_str(),
                                    reinterpret_cast<MRoutingDomain**>(out));
  };
  getter.block = Block().Text(0, std::string(63, 'n'));
  contract::ExpectRecordGetter(getter);
}

TEST(MRoutingDomains, AFailedAllocationIsReportedBeforeTheNameIsRead) {
  fake::Device device;
  device.failingAllocation = 1;
  MRoutingDomain* record = nullptr;
  contract::ExpectFailure(device, [&] { return VDRZAX_GetMRoutingDomain(nullptr, &record); },
                          ENOMEM, {"malloc(148)"});
}

TEST(MRoutingDomainsDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  device.AnswerWith({.bytes = wire::Pattern(148)});
  MRoutingDomain* record = nullptr;
  EXPECT_DEATH(VDRZAX_GetMRoutingDomain(nullptr, &record), "");
  EXPECT_DEATH(VDRZAX_GetMRoutingDomain("edge-1", nullptr), "");
}

}  // namespace
