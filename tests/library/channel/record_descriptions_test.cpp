#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "channel/record_decoder.h"
#include "e2i/e2i_entry_record.h"
#include "mcast/vtep_entry_record.h"
#include "services/soft_rss_tunables_record.h"
#include "services/vm_public_ip_record.h"
#include "support/wire.h"

// Layouts that no getter decodes by, because it hands on what the kernel sent; they describe these
// records to tools and pages. A decoder made of each shows that it describes every byte.

namespace {

using namespace vdrzax;

template <const RecordLayout& kLayout>
fake::Bytes Decode(const fake::Bytes& source) {
  fake::Bytes record(source.size());
  EXPECT_EQ(
      DecodeRecord<kLayout>(source.data(), static_cast<int32_t>(source.size()), record.data()),
      static_cast<int32_t>(source.size()));
  return record;
}

template <const RecordLayout& kLayout>
void ExpectAllCopied(std::size_t size) {
  const fake::Bytes source = wire::Pattern(size);
  EXPECT_BYTES(Decode<kLayout>(source), source);
}

TEST(RecordDescriptions, AnE2IEntryIs26Bytes) { ExpectAllCopied<kE2IEntry>(26); }

TEST(RecordDescriptions, AVtepEntryIs68Bytes) { ExpectAllCopied<kVtepEntry>(68); }

TEST(RecordDescriptions, SoftRssTunablesAre12Bytes) { ExpectAllCopied<kSoftRssTunables>(12); }

TEST(RecordDescriptions, APublicAddressEntryHoldsUpTo256ItemsFromByte18On) {
  for (const uint32_t items : {0u, 1u, 255u, 256u}) {
    SCOPED_TRACE(items);
    fake::Bytes source = wire::Pattern(1042);
    std::memcpy(source.data() + 14, &items, 4);
    fake::Bytes expected = source;
    std::fill(expected.begin() + 18 + 4L * items, expected.end(), 0);
    EXPECT_BYTES(Decode<kVMPublicIPEntry>(source), expected);
  }
}

}  // namespace
