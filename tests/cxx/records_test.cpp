#include <gtest/gtest.h>

#include <cstring>
#include <iterator>
#include <string>
#include <string_view>
#include <type_traits>
#include <vdrzax.hpp>
#include <vector>

#include "support/fake_device.h"
#include "support/wire.h"

namespace {

using fake::Bytes;

template <typename Value>
Bytes BytesOf(const Value& value) {
  if constexpr (std::is_arithmetic_v<Value>) {
    return wire::BytesOf(&value, sizeof value);
  } else if constexpr (requires { value.bytes(); }) {
    const auto bytes = value.bytes();
    return {bytes.begin(), bytes.end()};
  } else {
    Bytes joined;
    for (const auto& element : value) {
      const Bytes bytes = BytesOf(element);
      joined.insert(joined.end(), bytes.begin(), bytes.end());
    }
    return joined;
  }
}

// A record at an odd address, without a zero in it, so that every count is more than there is room
// for and no text ends before its field does.
template <typename View>
class Specimen {
 public:
  Specimen() : bytes_(wire::Pattern(View::kSize + 1)) {
    if (reinterpret_cast<std::uintptr_t>(bytes_.data()) % 2 != 0) ADD_FAILURE() << "aligned oddly";
  }
  View view() const { return View(bytes_.data() + 1); }
  Bytes Field(std::size_t offset, std::size_t width) const {
    const auto first = bytes_.begin() + 1 + static_cast<std::ptrdiff_t>(offset);
    return {first, first + static_cast<std::ptrdiff_t>(width)};
  }

 private:
  Bytes bytes_;
};

// Each field of each record of the headers by the face's name for it: a line each, made from them.
#define EXPECT_FIELD(view_type, accessor, offset, width)                                        \
  {                                                                                             \
    SCOPED_TRACE(#view_type "::" #accessor);                                                    \
    const Specimen<vdrzax::view_type> specimen;                                                 \
    EXPECT_BYTES(BytesOf(specimen.view().accessor()), specimen.Field(offset, width));           \
    using Given = decltype(specimen.view().accessor());                                         \
    static_assert(!std::is_reference_v<Given>, "a reference to " #accessor " could be formed"); \
  }
TEST(CxxRecords, EachFieldIsReadFromItsPlaceByValue){
#include "record_fields.inc"
}

TEST(CxxRecords, ATextEndsAtItsTerminator) {
  Bytes record = wire::Pattern(577);
  std::memcpy(record.data(), "edge-1", 7);
  EXPECT_EQ(vdrzax::Instance(record.data()).name(), "edge-1");
  record[0] = 0;
  EXPECT_EQ(vdrzax::Instance(record.data()).name(), "");
}

TEST(CxxRecords, EntriesAreAsManyAsTheCountSays) {
  Bytes route = wire::Pattern(668);
  route[17] = 2;
  std::memcpy(route.data() + 28 + 80 + 8, "uplink", 7);
  const vdrzax::Route view(route.data());
  ASSERT_EQ(view.next_hops().size(), 2U);
  EXPECT_EQ(view.next_hops()[1].hop_name(), "uplink");
  route[17] = 0;
  EXPECT_TRUE(view.next_hops().empty());

  Bytes stats = wire::Pattern(852);
  std::memcpy(stats.data() + 4, "\3\0\0", 4);
  EXPECT_EQ(vdrzax::SoftRssCounters(stats.data()).qwords76().size(), 3U);
}

TEST(CxxRecords, ARangeIsWalkedInBothDirectionsAndByIndex) {
  constexpr std::uint32_t kNumbers[]{1, 2, 3, 4};
  const vdrzax::Range<std::uint32_t> range(kNumbers, 4);
  static_assert(std::random_access_iterator<vdrzax::Iterator<std::uint32_t>>);
  static_assert(std::random_access_iterator<vdrzax::Iterator<vdrzax::Instance>>);
  static_assert(std::forward_iterator<vdrzax::VmPublicIpTable::iterator>);
  EXPECT_EQ(std::vector<std::uint32_t>(range.begin(), range.end()),
            (std::vector<std::uint32_t>{1, 2, 3, 4}));
  auto place = range.begin();
  EXPECT_EQ(*place++, 1U);
  EXPECT_EQ(*++place, 3U);
  EXPECT_EQ(*place--, 3U);
  EXPECT_EQ(*--place, 1U);
  EXPECT_EQ(place[3], 4U);
  EXPECT_EQ(*(2 + place), 3U);
  EXPECT_EQ(*(range.end() - 1), 4U);
  EXPECT_EQ(range.end() - range.begin(), 4);
  EXPECT_LT(range.begin(), range.end());
  EXPECT_EQ(range.front(), 1U);
  EXPECT_EQ(range[2], 3U);
}

TEST(CxxRecords, ElementsOfAListAreItsRecordsInOrder) {
  fake::Device device;
  device.AnswerWith({.bytes = wire::Patterns(3, 12)});
  const auto groups = vdrzax::Client().mrouting_mcast_groups("edge-1");
  ASSERT_EQ(groups.size(), 3U);
  unsigned seed = 0;
  for (const auto& group : groups) EXPECT_BYTES(BytesOf(group), wire::Pattern(12, seed++));
  EXPECT_BYTES(BytesOf(groups.front()), wire::Pattern(12, 0));
  EXPECT_EQ(groups.begin()->group0(), groups[0].group0());
}

}  // namespace
