#include <gtest/gtest.h>
#include <vdrzax/policy.h>

#include <cstring>
#include <string>
#include <vector>

#include "policy/result_command.h"
#include "support/contract.h"

namespace {

using contract::ExpectCommand;
using contract::ExpectResultCommandRefused;
using wire::Block;

// As the caller lays the entries out: 24 bytes each, at an address that nothing aligns.
class Entries {
 public:
  explicit Entries(std::size_t count) : bytes_(1 + 24 * count) {
    const fake::Bytes entries = wire::Patterns(count, 24);
    std::copy(entries.begin(), entries.end(), bytes_.begin() + 1);
  }
  const PolicyTableRefEntry* get() const {
    return reinterpret_cast<const PolicyTableRefEntry*>(bytes_.data() + 1);
  }

 private:
  fake::Bytes bytes_;
};

// A reference as the kernel would send it, with `count` entries.
fake::Bytes RefWithEntries(uint8_t count, unsigned seed = 1) {
  fake::Bytes ref = wire::Pattern(546, seed);
  ref[64] = count;
  ref[65] = 0;
  return ref;
}

const contract::RecordGetter& RefGetter() { return getters::Record("VDRZAX_GetLifPolicyTableRef"); }

TEST(LifPolicyTableRefs, SetSendsNamesCountAndEntries) {
  const Entries entries(3);
  contract::RawGetter getter = getters::Raw("VDRZAX_SetLifPolicyTableRef");
  contract::ExpectRawGetter(getter);
  getter.call = [&](void* result) {
    return VDRZAX_SetLifPolicyTableRef("edge-1", "lif-1", 3, entries.get(), result);
  };
  getter.block = Block()
                     .Text(0, "edge-1")
                     .Text(384, "lif-1")
                     .U16(480, 3)
                     .Raw(484, wire::Pattern(24, 0))
                     .Raw(508, wire::Pattern(24, 1))
                     .Raw(532, wire::Pattern(24, 2));
  contract::ExpectRawGetter(getter);
}

TEST(LifPolicyTableRefs, TwentyEntriesEndAt964) {
  const Entries entries(20);
  const Block block =
      Block().Text(0, "edge-1").Text(384, "lif-1").U16(480, 20).Raw(484, wire::Patterns(20, 24));
  EXPECT_NE(block.bytes()[963], 0);
  EXPECT_EQ(block.bytes()[964], 0);
  ExpectCommand(
      [&] { return VDRZAX_SetLifPolicyTableRef("edge-1", "lif-1", 20, entries.get(), nullptr); },
      147, block);
}

TEST(LifPolicyTableRefs, ACountOf0SendsNoEntries) {
  const Entries entries(1);
  for (const PolicyTableRefEntry* array :
       {entries.get(), static_cast<const PolicyTableRefEntry*>(nullptr)}) {
    ExpectCommand([&] { return VDRZAX_SetLifPolicyTableRef("edge-1", "lif-1", 0, array, nullptr); },
                  147, Block().Text(0, "edge-1").Text(384, "lif-1"));
  }
}

TEST(LifPolicyTableRefs, DeleteSendsTheNamesAlone) {
  contract::ExpectRawGetter(getters::Raw("VDRZAX_DelLifPolicyTableRef"));
}

TEST(LifPolicyTableRefs, NamesOf64CharactersAreCutTo63AndTerminated) {
  const std::string instance(64, 'n');
  const std::string lif(64, 'l');
  const Block cut = Block().Text(0, std::string(63, 'n')).Text(384, std::string(63, 'l'));
  ExpectCommand(
      [&] {
        return VDRZAX_SetLifPolicyTableRef(instance.c_str(), lif.c_str(), 0, nullptr, nullptr);
      },
      147, cut);
  ExpectCommand([&] { return VDRZAX_DelLifPolicyTableRef(instance.c_str(), lif.c_str(), nullptr); },
                148, cut);
  fake::Device device;
  device.AnswerWith({.bytes = RefWithEntries(0)});
  LifPolicyTableRef* ref = nullptr;
  ASSERT_EQ(VDRZAX_GetLifPolicyTableRef(instance.c_str(), lif.c_str(), &ref), 0);
  contract::ExpectSent(device, 146, cut.bytes(), 546);
  VDRZAX_ReleaseLifPolicyTableRef(ref);
}

TEST(LifPolicyTableRefs, AMissingNameIsRefusedAndTheResultStays) {
  const Entries entries(1);
  ExpectResultCommandRefused([&](void* result) {
    return VDRZAX_SetLifPolicyTableRef(nullptr, "lif-1", 1, entries.get(), result);
  });
  ExpectResultCommandRefused([&](void* result) {
    return VDRZAX_SetLifPolicyTableRef("edge-1", nullptr, 1, entries.get(), result);
  });
  ExpectResultCommandRefused(
      [](void* result) { return VDRZAX_DelLifPolicyTableRef(nullptr, "lif-1", result); });
  ExpectResultCommandRefused(
      [](void* result) { return VDRZAX_DelLifPolicyTableRef("edge-1", nullptr, result); });
  auto* ref = reinterpret_cast<LifPolicyTableRef*>(1);
  contract::ExpectRefused([&] { return VDRZAX_GetLifPolicyTableRef(nullptr, "lif-1", &ref); });
  contract::ExpectRefused([&] { return VDRZAX_GetLifPolicyTableRef("edge-1", nullptr, &ref); });
  EXPECT_EQ(ref, reinterpret_cast<LifPolicyTableRef*>(1));
}

TEST(LifPolicyTableRefs, AMissingNameIsRefusedBeforeAnUntestedArgumentIsRead) {
  contract::ExpectRefused(
      [] { return VDRZAX_SetLifPolicyTableRef("edge-1", nullptr, 20, nullptr, nullptr); });
  contract::ExpectRefused([] { return VDRZAX_GetLifPolicyTableRef(nullptr, "lif-1", nullptr); });
}

TEST(LifPolicyTableRefs, OneIsReadByTheContractOfARecordGetter) {
  contract::ExpectRecordGetter(RefGetter());
}

TEST(LifPolicyTableRefs, ARecordOf20EntriesIsCopiedToItsLastByte) {
  const fake::Bytes source = RefWithEntries(20);
  EXPECT_BYTES(contract::DecodeOne(RefGetter(), source),
               wire::Decoded(source, {{0, 64, 't'}, {64, 2}, {66, 480}}));
}

TEST(LifPolicyTableRefs, EntriesBehindTheCountAreZero) {
  const fake::Bytes two = RefWithEntries(2);
  EXPECT_BYTES(contract::DecodeOne(RefGetter(), two),
               wire::Decoded(two, {{0, 64, 't'}, {64, 2}, {66, 24}, {90, 24}}));
  const fake::Bytes none = RefWithEntries(0);
  EXPECT_BYTES(contract::DecodeOne(RefGetter(), none), wire::Decoded(none, {{0, 64, 't'}}));
}

TEST(LifPolicyTableRefs, TheFieldsOfARecordReadWhatTheKernelWrote) {
  const Block source = Block()
                           .Text(0, "ref-1")
                           .U16(64, 1)
                           .U64(66, 0x0102030405060708)
                           .U64(74, 0x1112131415161718)
                           .U64(82, 0x2122232425262728);
  fake::Device device;
  device.AnswerWith({.bytes = wire::BytesOf(source.bytes().data(), 546)});
  LifPolicyTableRef* ref = nullptr;
  ASSERT_EQ(VDRZAX_GetLifPolicyTableRef("edge-1", "lif-1", &ref), 0);
  EXPECT_STREQ(ref->refName, "ref-1");
  EXPECT_EQ(+ref->refCount, 1);
  EXPECT_EQ(+ref->refEntries[0].qword0, 0x0102030405060708u);
  EXPECT_EQ(+ref->refEntries[0].qword8, 0x1112131415161718u);
  EXPECT_EQ(+ref->refEntries[0].qword16, 0x2122232425262728u);
  VDRZAX_ReleaseLifPolicyTableRef(ref);
}

TEST(LifPolicyTableRefs, ANameThatFillsItsFieldArrivesTerminated) {
  fake::Bytes source = RefWithEntries(0);
  std::fill_n(source.begin(), 64, 'x');
  const fake::Bytes record = contract::DecodeOne(RefGetter(), source);
  EXPECT_EQ(record[62], 'x');
  EXPECT_EQ(record[63], 0);
}

TEST(LifPolicyTableRefsDeathTest, AnUntestedNullFaults) {
  fake::Device device;
  device.AnswerWith({.bytes = RefWithEntries(0)});
  EXPECT_DEATH(VDRZAX_SetLifPolicyTableRef("edge-1", "lif-1", 1, nullptr, nullptr), "");
  EXPECT_DEATH(VDRZAX_GetLifPolicyTableRef("edge-1", "lif-1", nullptr), "");
}

}  // namespace
