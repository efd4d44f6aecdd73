#include "datapath/answers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

#include "datapath/table.h"
#include "instance/control_plane_record.h"
#include "instance/instance_record.h"
#include "lif/lif_record.h"
#include "wire.h"

namespace {

using vdrsim::Answer;
using vdrsim::RecordWriter;
using vdrsim::SelectionAnswer;
using vdrsim::StreamAnswer;
using wire::Bytes;
using wire::Difference;
using wire::Wire;

Bytes Deliver(Answer answer) {
  answer.reply.Prepare();
  Bytes bytes;
  for (auto piece = answer.reply.Next(); !piece.empty(); piece = answer.reply.Next()) {
    bytes.insert(bytes.end(), piece.begin(), piece.end());
  }
  EXPECT_EQ(bytes.size(), answer.reply.size());
  return bytes;
}

TEST(RecordWriter, EachKindOfFieldIsWrittenAtItsPlaceAndWidth) {
  Bytes bytes(577);
  const vdrsim::MacAddress mac{std::byte{2}, std::byte{3}, std::byte{4},
                               std::byte{5}, std::byte{6}, std::byte{7}};
  RecordWriter<vdrzax::kInstanceRecord>(bytes)
      .Number("half412", 0xffffffffffff0102)
      .Number("words431", 3, 0x03040506)
      .Number("bytes418", 12, 0x0101)
      .Mac("address447", mac)
      .Bytes("bytes523", mac)
      .Bytes("bytes523", mac, 36)
      .Bytes("bytes523", mac, 41)
      .Text("text457", std::string(70, 'x'));
  const Wire expected = Wire(577)
                            .U16(412, 0x0102)
                            .U32(443, 0x03040506)
                            .U8(430, 1)
                            .Text(447, "\x02\x03\x04\x05\x06\x07")
                            .Text(523, "\x02\x03\x04\x05\x06\x07")
                            .Text(559, "\x02\x03\x04\x05")
                            .Text(457, std::string(63, 'x'));
  EXPECT_EQ(Difference(bytes, expected.bytes()), "");
}

TEST(RecordWriter, EntriesAreCounted) {
  Bytes bytes(961);
  const RecordWriter<vdrzax::kLifRecord> record(bytes);
  record.Append<"subEntries">().Number("byte20", 1);
  record.Append<"subEntries">().Number("words0", 4, 7);
  EXPECT_EQ(Difference(bytes, Wire(961).U32(566, 2).U8(346, 1).U32(366, 7).bytes()), "");
}

// Numbers that nobody stores, as a record of 284 bytes each.
struct Squares {
  uint32_t count;
  uint32_t next = 0;

  uint32_t Prepare() const { return count * 284; }
  uint32_t Count() const { return count; }
  size_t Write(std::span<std::byte> room) {
    if (next == count || room.size() < 284) return 0;
    RecordWriter<vdrzax::kCPSyncStateEntry>(room.first(284))
        .Number("qword0", uint64_t{next} * next);
    ++next;
    return 284;
  }
};

TEST(StreamAnswer, EntriesAreMadeWhileTheyAreDelivered) {
  constexpr uint32_t kCount = 400000;  // 113.6 MB
  Answer answer = StreamAnswer(Squares{kCount});
  answer.reply.Prepare();
  ASSERT_EQ(answer.reply.size(), kCount * 284U);
  const std::byte* place = nullptr;
  uint64_t number = 0;
  uint64_t wrong = 0;
  for (auto piece = answer.reply.Next(); !piece.empty(); piece = answer.reply.Next()) {
    ASSERT_EQ(piece.size() % 284, 0U);
    ASSERT_LE(piece.size(), 131072U);
    EXPECT_TRUE(place == nullptr || place == piece.data()) << "one buffer is enough";
    place = piece.data();
    for (size_t at = 0; at < piece.size(); at += 284, ++number) {
      uint64_t begin[2] = {};
      std::memcpy(begin, &piece[at], sizeof begin);
      if (begin[0] != number * number || begin[1] != 0) ++wrong;
    }
  }
  EXPECT_EQ(wrong, 0U);
  EXPECT_EQ(number, kCount);
  EXPECT_TRUE(answer.reply.Next().empty());
}

TEST(StreamAnswer, TheCountCanComeFirst) {
  EXPECT_EQ(Difference(Deliver(StreamAnswer(vdrsim::CountFirst(Squares{2}))),
                       Wire(4 + 2 * 284).U32(0, 2).U64(4 + 284, 1).bytes()),
            "");
  EXPECT_EQ(Difference(Deliver(StreamAnswer(vdrsim::CountFirst(Squares{0}))), Bytes(4)), "");
}

TEST(SelectionAnswer, WhatIsSelectedIsShownInItsOrder) {
  const std::vector<int> numbers = {5, 6, 7, 8};
  const auto even = [](const std::vector<int>& all) {
    std::vector<int> found;
    std::ranges::copy_if(all, std::back_inserter(found), [](int n) { return n % 2 == 0; });
    return found;
  };
  const auto show = [](auto record, int number) {
    record.Number("qword0", static_cast<uint64_t>(number));
  };
  EXPECT_EQ(Difference(Deliver(SelectionAnswer<vdrzax::kCPSyncStateEntry>(numbers, even, show)),
                       Wire(2UL * 284).U64(0, 6).U64(284, 8).bytes()),
            "");
}

using Numbers = vdrsim::Table<int, uint64_t>;

void ShowValue(RecordWriter<vdrzax::kCPSyncStateEntry> record, int, uint64_t value) {
  record.Number("qword0", value);
}
void ShowKey(RecordWriter<vdrzax::kCPSyncStateEntry> record, int key, uint64_t) {
  record.Number("qword0", static_cast<uint64_t>(key));
}

Numbers SomeNumbers(int count) {
  Numbers numbers;
  for (int key = 0; key < count; ++key) {
    numbers.Set(key, 100000, [&](uint64_t& value) {
      value = 1000U + static_cast<uint64_t>(key);
      return 0;
    });
  }
  return numbers;
}

const std::byte* FirstPiece(Answer& answer) {
  answer.reply.Prepare();
  return answer.reply.Next().data();
}

TEST(TableAnswer, ATableThatHasNotChangedIsNotMadeAnew) {
  const Numbers numbers = SomeNumbers(3);
  Answer first = vdrsim::TableAnswer<vdrzax::kCPSyncStateEntry>(numbers, ShowValue);
  Answer second = vdrsim::TableAnswer<vdrzax::kCPSyncStateEntry>(numbers, ShowValue);
  const std::byte* place = FirstPiece(first);
  EXPECT_EQ(FirstPiece(second), place);
  EXPECT_TRUE(first.reply.Next().empty());
}

TEST(TableAnswer, WhatShowsATableInAnotherWayIsMadeForItself) {
  const Numbers numbers = SomeNumbers(2);
  for (int time = 0; time < 2; ++time) {
    EXPECT_EQ(
        Difference(Deliver(vdrsim::TableAnswer<vdrzax::kCPSyncStateEntry>(numbers, ShowValue)),
                   Wire(2UL * 284).U64(0, 1000).U64(284, 1001).bytes()),
        "");
    EXPECT_EQ(Difference(Deliver(vdrsim::TableAnswer<vdrzax::kCPSyncStateEntry>(numbers, ShowKey)),
                         Wire(2UL * 284).U64(284, 1).bytes()),
              "");
  }
}

TEST(TableAnswer, AChangeIsSeenAndAnEarlierReplyStaysAsItWas) {
  Numbers numbers = SomeNumbers(2);
  const auto list = [&] {
    return vdrsim::TableAnswer<vdrzax::kCPSyncStateEntry>(numbers, ShowValue);
  };
  const auto change = [&](uint64_t to) {
    numbers.Set(1, 100000, [&](uint64_t& value) {
      value = to;
      return 0;
    });
  };
  Deliver(list());
  change(7);  // in place
  EXPECT_EQ(Difference(Deliver(list()), Wire(2UL * 284).U64(0, 1000).U64(284, 7).bytes()), "");
  Answer earlier = list();
  change(8);  // beside what the reply holds
  EXPECT_EQ(
      Difference(Deliver(std::move(earlier)), Wire(2UL * 284).U64(0, 1000).U64(284, 7).bytes()),
      "");
  EXPECT_EQ(Difference(Deliver(list()), Wire(2UL * 284).U64(0, 1000).U64(284, 8).bytes()), "");
}

TEST(TableAnswer, ALargeTableIsMadeInPieces) {
  const Numbers numbers = SomeNumbers(3693);  // 1048812 bytes
  Answer answer = vdrsim::TableAnswer<vdrzax::kCPSyncStateEntry>(numbers, ShowValue);
  answer.reply.Prepare();
  EXPECT_EQ(answer.reply.Next().size(), 131072U / 284 * 284);
  EXPECT_EQ(numbers.made(), nullptr);
  const Numbers fewer = SomeNumbers(3692);  // 1048528
  Answer whole = vdrsim::TableAnswer<vdrzax::kCPSyncStateEntry>(fewer, ShowValue);
  whole.reply.Prepare();
  EXPECT_EQ(whole.reply.Next().size(), 3692U * 284);
}

TEST(Table, ACopyIsASnapshot) {
  vdrsim::Table<std::string, int> table;
  const auto set = [&](const char* name, int value) {
    return table.Set(name, 2, [&](int& object) {
      object = value;
      return 0;
    });
  };
  ASSERT_EQ(set("a", 1), 0);
  const auto snapshot = table;
  EXPECT_EQ(snapshot, table);
  ASSERT_EQ(set("a", 2), 0);
  ASSERT_EQ(set("b", 3), 0);
  EXPECT_EQ(set("c", 4), ENOSPC);
  EXPECT_EQ(*snapshot.Find("a"), 1);
  EXPECT_EQ(snapshot.Find("b"), nullptr);
  EXPECT_EQ(*std::as_const(table).Find("a"), 2);
  EXPECT_FALSE(snapshot == table);
  EXPECT_EQ(table.Delete("a"), 0);
  EXPECT_EQ(table.Delete("a"), ENOENT);
  EXPECT_EQ(table.size(), 1U);
  EXPECT_EQ(snapshot.size(), 1U);
}

TEST(Table, WhatIsRefusedIsNotMade) {
  vdrsim::Table<std::string, int> table;
  EXPECT_EQ(table.Set("a", 2, [](int&) { return EEXIST; }), EEXIST);
  EXPECT_EQ(table.size(), 0U);
}

}  // namespace
