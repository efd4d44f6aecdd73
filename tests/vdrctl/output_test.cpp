#include "output/output.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <span>
#include <string>
#include <vector>

#include "names/field_names.h"
#include "output/changes.h"
#include "output/forms.h"
#include "output/history.h"
#include "output/text.h"

namespace {

// What is printable is a matter of the locale.
[[maybe_unused]] const int kLocale = setenv("LC_ALL", "C", 1);

using vdrctl::Escaped;
using vdrctl::Output;
using vdrctl::Presentation;
using vdrctl::Reply;
using vdrctl::Writer;
using vdrzax::Bytes;
using vdrzax::Entries;
using vdrzax::Field;
using vdrzax::Mac;
using vdrzax::Numbers;
using vdrzax::RecordLayout;
using vdrzax::Skipped;
using vdrzax::Text;
using vdrzax::U16;
using vdrzax::U24;
using vdrzax::U32;
using vdrzax::U64;
using vdrzax::U8;

constexpr Field kPairRows[] = {Text("name", 0, 4), U16("size", 4)};
constexpr RecordLayout kPair{"Pair", 6, kPairRows};

constexpr Field kEveryKindRows[] = {
    U8("byte", 0),
    U16("half", 1),
    U24("three", 3),
    U32("word", 6),
    U64("long", 10),
    Numbers("halves", 18, 2, 3),
    Skipped("skipped", 24, 2),
    Text("text", 26, 5),
    Bytes("bytes", 31, 3),
    Mac("mac", 34),
    Entries("pairs", 40, 2, kPair, 52, 1),
    U8("pairCount", 52),
};
constexpr RecordLayout kEveryKind{"EveryKind", 53, kEveryKindRows};

std::vector<uint8_t> EveryKind() {
  return {0xfe,                                            // byte
          0x02, 0x01,                                      // half
          0x03, 0x02, 0x01,                                // three
          0xff, 0xff, 0xff, 0xff,                          // word
          0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff,  // long
          0x01, 0x00, 0x00, 0x01, 0x00, 0x00,              // halves
          0xaa, 0xbb,                                      // skipped
          'b',  'l',  'u',  'e',  0,                       // text
          0x00, 0x0f, 0xf0,                                // bytes
          0x02, 0x00, 0x5e, 0x10, 0xab, 0xff,              // mac
          'a',  0,    0,    0,    0x07, 0x00,              // pairs
          'b',  'c',  0,    0,    0x00, 0x01,              //
          2};                                              // pairCount
}

const Presentation kTables{};
const Presentation kJson{.form = Presentation::Form::Json};

// What `print` prints of a reply.
template <typename Print>
std::string Printed(const Presentation& presentation, const Reply& reply, Print print) {
  Writer writer;
  Output out(presentation, reply, writer);
  print(out);
  return writer.text();
}

std::string PairList(const Presentation& presentation, const std::string& bytes) {
  return Printed(presentation, vdrctl::ListReply<kPair>(),
                 [&](Output& out) { out.List(bytes.data(), bytes.size() / 6); });
}

std::string EveryKindRecord(const Presentation& presentation, const std::vector<uint8_t>& bytes) {
  return Printed(presentation, vdrctl::RecordReply<kEveryKind>(),
                 [&](Output& out) { out.Record(kEveryKind, bytes.data()); });
}

std::string TextAsJson(const std::string& text) {
  std::string record(6, '\0');
  record.replace(0, text.size(), text);
  return Printed(kJson, vdrctl::RecordReply<kPair>(),
                 [&](Output& out) { out.Record(kPair, record.data()); });
}

std::string HexDump(std::span<const uint8_t> bytes) {
  Writer writer;
  vdrctl::PutHexDump(writer, bytes);
  return writer.text();
}

TEST(Tables, ShowTextsAtTheLeftAndNumbersAtTheRight) {
  const std::string bytes(
      "ab\0\0\x05\0"
      "abc\0\xff\xff",
      12);
  EXPECT_EQ(PairList(kTables, bytes),
            "name   size\n"
            "ab        5\n"
            "abc   65535\n");
}

TEST(Tables, HaveTheirHeaderWhenTheyAreEmpty) { EXPECT_EQ(PairList(kTables, ""), "name  size\n"); }

TEST(Tables, ShowAnEmptyTextAsADash) {
  EXPECT_EQ(PairList(kTables, std::string(6, '\0')),
            "name  size\n"
            "-        0\n");
}

TEST(Tables, WidenAColumnByWhatIsEscaped) {
  const std::string bytes("\x1b[m\0\x01\0", 6);
  EXPECT_EQ(PairList(kTables, bytes),
            "name    size\n"
            "\\x1b[m     1\n");
}

TEST(Tables, LeaveNoSpacesAtTheEndOfALine) {
  const Presentation sizeFirst{.columns = {"size", "name"}};
  const std::string bytes(
      "a\0\0\0\x01\0"
      "long\x02\0",
      12);
  EXPECT_EQ(PairList(sizeFirst, bytes),
            "size  name\n"
            "   1  a\n"
            "   2  long\n");
}

TEST(Tables, ShowTheUsualColumnsOfTheirCommandAndOnRequestOthers) {
  static constexpr const char* kUsual[] = {"text", "pairs", "byte"};
  const auto list = [](const Presentation& presentation) {
    return Printed(presentation, vdrctl::ListReply<kEveryKind>(kUsual),
                   [](Output& out) { out.List(EveryKind().data(), 1); });
  };
  EXPECT_EQ(list(kTables),
            "text  pairs                               byte\n"
            "blue  {name=a size=7} {name=bc size=256}   254\n");
  EXPECT_EQ(list({.columns = {"mac", "half"}}),
            "mac                half\n"
            "02:00:5e:10:ab:ff   258\n");
}

TEST(Tables, HaveNoHeaderOnRequest) {
  EXPECT_EQ(PairList({.header = false}, std::string("ab\0\0\x05\0", 6)), "ab  5\n");
  EXPECT_EQ(PairList({.header = false}, std::string("ab\0\0\0\0a\0\0\0\0\0", 12)),
            "ab  0\na   0\n");
}

TEST(Tables, AndJsonAreSortedByAColumnAsAReaderWouldAndKeepEqualsInTheirOrder) {
  const std::string bytes(
      "b\0\0\0\x00\x01"
      "c\0\0\0\x02\0"
      "a\0\0\0\x02\0",
      18);
  EXPECT_EQ(PairList({.header = false, .sort = "size"}, bytes), "c    2\na    2\nb  256\n");
  EXPECT_EQ(PairList({.header = false, .sort = "name"}, bytes), "a    2\nb  256\nc    2\n");
  const std::string equal(
      "b\0\0\0\x03\0"
      "b\0\0\0\x01\0"
      "a\0\0\0\x02\0"
      "b\0\0\0\x02\0",
      24);
  EXPECT_EQ(PairList({.header = false, .sort = "name"}, equal), "a  2\nb  3\nb  1\nb  2\n");
  EXPECT_EQ(
      PairList({.form = Presentation::Form::Json, .columns = {"size"}, .sort = "size"}, bytes),
      "[{\"size\":2},{\"size\":2},{\"size\":256}]\n");
}

TEST(Tables, RefuseAColumnThatThereIsNot) {
  EXPECT_THROW(PairList({.columns = {"nam"}}, ""), vdrctl::NoSuchColumn);
  EXPECT_THROW(PairList({.sort = "nam"}, ""), vdrctl::NoSuchColumn);
  EXPECT_THROW(PairList({.columns = {"name", "size", "name"}}, ""), vdrctl::NoSuchColumn);
  EXPECT_THROW(EveryKindRecord({.sort = "byte"}, EveryKind()), vdrctl::NoSuchColumn);
  EXPECT_THROW(Printed({.columns = {"name"}}, {}, [](Output&) {}), vdrctl::NoSuchColumn);
}

TEST(Records, OfOneOfSeveralLayoutsShowTheChosenColumnsThatTheyHave) {
  const Presentation chosen{.columns = {"byte", "size"}};
  EXPECT_EQ(Printed(chosen, vdrctl::RecordReply<kPair, kEveryKind>(),
                    [](Output& out) { out.Record(kEveryKind, EveryKind().data()); }),
            "byte  254\n");
}

// The width of these columns is known without a look at their cells.
TEST(Tables, AlignWhatStandsBehindBytesAndAddresses) {
  const auto list = [](const Presentation& presentation, std::size_t count) {
    return Printed(presentation, vdrctl::ListReply<kEveryKind>(),
                   [&](Output& out) { out.List(EveryKind().data(), count); });
  };
  EXPECT_EQ(list({.columns = {"bytes", "mac", "text"}}, 1),
            "bytes   mac                text\n"
            "000ff0  02:00:5e:10:ab:ff  blue\n");
  EXPECT_EQ(list({.columns = {"bytes", "mac", "text"}, .header = false}, 1),
            "000ff0  02:00:5e:10:ab:ff  blue\n");
  EXPECT_EQ(list({.columns = {"bytes", "mac", "text"}}, 0), "bytes  mac  text\n");
}

// Two turns of a watched command.
class Counters : public testing::Test {
 protected:
  static constexpr const char* kTitles[] = {"Counts"};
  static constexpr Field kRows[] = {U32("type", 0), U64("alone", 4), Numbers("slots5", 12, 8, 2)};
  static constexpr RecordLayout kCounts{"Counts", 28, kRows};
  struct [[gnu::packed]] Record {
    uint32_t type;
    uint64_t counters[3];
  };

  std::string Turn(Presentation::Form form, const Record& record) {
    Reply reply = vdrctl::RecordReply<kCounts>();
    reply.titles = kTitles;
    return Printed({.form = form, .history = &history_}, reply,
                   [&](Output& out) { out.Record(kCounts, &record); });
  }

  vdrctl::History history_{};
};

TEST_F(Counters, GrowFromTurnToTurn) {
  const auto heading = std::string("counter") + std::string(34, ' ') + "value" +
                       std::string(12, ' ') + "difference" + std::string(6, ' ') + "per second\n";
  EXPECT_EQ(
      Turn(Presentation::Form::Tables, {1, {10, 20, 30}}),
      heading +
          "alone                                       10                     0             0.0\n"
          "slots[5]                                    20                     0             0.0\n"
          "slots[6]                                    30                     0             0.0\n");
  const std::string second = Turn(Presentation::Form::Tables, {1, {17, 20, 29}});
  EXPECT_NE(second.find("17                     7 "), std::string::npos) << second;
  EXPECT_NE(second.find("20                     0             0.0"), std::string::npos) << second;
  // One that was reset has no difference.
  EXPECT_NE(second.find("29                     0             0.0"), std::string::npos) << second;
}

TEST_F(Counters, OfAnotherKindBeginAnew) {
  Turn(Presentation::Form::Json, {1, {10, 20, 30}});
  EXPECT_EQ(Turn(Presentation::Form::Json, {2, {11, 21, 31}}),
            "{\"seconds\":0.000000,\"record\":{\"type\":2,\"alone\":11,\"slots5\":[21,31]},"
            "\"differences\":{\"alone\":0,\"slots5\":[0,0]},"
            "\"rates\":{\"alone\":0.000000,\"slots5\":[0.000000,0.000000]}}\n");
  const std::string third = Turn(Presentation::Form::Json, {2, {12, 25, 31}});
  EXPECT_NE(third.find("\"differences\":{\"alone\":1,\"slots5\":[4,0]}"), std::string::npos)
      << third;
}

TEST_F(Counters, AreOfAnotherKindByEachByteOfTheirType) {
  for (const uint32_t other : {0x101U, 0x10001U, 0x1000001U}) {
    Turn(Presentation::Form::Json, {1, {10, 20, 30}});
    const std::string text = Turn(Presentation::Form::Json, {other, {11, 21, 31}});
    EXPECT_TRUE(text.starts_with("{\"seconds\":0.000000,")) << text;
  }
  const std::string same = Turn(Presentation::Form::Json, {0x1000001, {12, 21, 31}});
  EXPECT_NE(same.find("\"differences\":{\"alone\":1,"), std::string::npos) << same;
}

TEST_F(Counters, AreNotWatchedInARecordOfAnotherReply) {
  const Record record{1, {10, 20, 30}};
  EXPECT_EQ(
      Printed({.form = Presentation::Form::Json, .history = &history_},
              vdrctl::RecordReply<kCounts>(), [&](Output& out) { out.Record(kCounts, &record); }),
      "{\"type\":1,\"alone\":10,\"slots5\":[20,30]}\n");
}

// What is no number of 64 bits counts nothing.
TEST(Changes, AreOfCountersAloneAndASecond) {
  static constexpr Field kRows[] = {U32("type", 0), U64("alone", 4), Numbers("slots9", 12, 8, 2),
                                    Bytes("eight", 28, 8), Numbers("words", 36, 4, 2)};
  static constexpr RecordLayout kCounts{"Counts", 44, kRows};
  const auto view = vdrctl::MakeView(kCounts, "Counts", nullptr);
  std::vector<const vdrctl::Member*> members;
  for (const auto& member : view.members) members.push_back(&member);
  std::vector<uint8_t> before(44);
  before[4] = 10;
  before[12] = 20;
  before[20] = 30;
  auto now = before;
  now[4] = 17;
  now[13] = 1;
  now[20] = 29;
  now[36] = 1;
  Writer table;
  vdrctl::PutChanges(table, members, before.data(), now.data(), 2.5);
  EXPECT_EQ(
      table.text(),
      "counter                                  value            difference      per second\n"
      "alone                                       17                     7             2.8\n"
      "slots[9]                                   276                   256           102.4\n"
      "slots[10]                                   29                     0             0.0\n");
  Writer json;
  vdrctl::PutJsonChanges(json, members, before.data(), now.data(), 2.5);
  EXPECT_EQ(json.text(), R"({"seconds":2.500000,"record":{"type":0,"alone":17,"slots9":[276,29],)"
                         R"("eight":"0000000000000000","words":[1,0]},)"
                         R"("differences":{"alone":7,"slots9":[256,0]},)"
                         R"("rates":{"alone":2.800000,"slots9":[102.400000,0.000000]}})"
                         "\n");
  Writer fast;
  vdrctl::PutJsonChanges(fast, members, before.data(), now.data(), 0.5);
  EXPECT_NE(fast.text().find(R"("rates":{"alone":14.000000,"slots9":[512.000000,0.000000]}})"),
            std::string::npos)
      << fast.text();
  Writer still;
  vdrctl::PutJsonChanges(still, members, before.data(), now.data(), 0);
  EXPECT_NE(still.text().find(R"("rates":{"alone":0.000000,"slots9":[0.000000,0.000000]}})"),
            std::string::npos)
      << still.text();
}

// A file of names for a layout with a field for each form.
class Dressed : public testing::Test {
 protected:
  using Dress = vdrctl::Dress;

  static constexpr Field kSubRows[] = {U8("state", 0), Numbers("twice", 1, 1, 2)};
  static constexpr RecordLayout kSub{"Sub", 3, kSubRows};
  static constexpr Field kRows[] = {U64("hex", 0),
                                    U32("ipv4", 8),
                                    Numbers("ipv4s", 12, 4, 2),
                                    Numbers("ipv6", 20, 4, 4),
                                    Bytes("four", 36, 4),
                                    Bytes("sixteen", 40, 16),
                                    Bytes("six", 56, 6),
                                    Bytes("text", 62, 4),
                                    Bytes("plain", 66, 2),
                                    U16("flags", 68),
                                    U8("yes", 70),
                                    U8("no", 71),
                                    U16("counter", 72),
                                    Numbers("hexes", 74, 1, 2),
                                    Entries("subs", 76, 3, kSub, 85, 1),
                                    U8("subCount", 85),
                                    Numbers("split", 86, 2, 3)};
  static constexpr RecordLayout kDressed{"Dressed", 92, kRows};

  Dressed() {
    const auto add = [&](const char* field, Dress dress) {
      names_.Add("Dressed", field, {std::string("my-") + field, dress});
    };
    add("hex", Dress::Hex);
    add("ipv4", Dress::Ipv4);
    add("ipv4s", Dress::Ipv4);
    add("ipv6", Dress::Ipv6);
    add("four", Dress::Ipv4);
    add("sixteen", Dress::Ipv6);
    add("six", Dress::Mac);
    add("text", Dress::Text);
    add("yes", Dress::Boolean);
    add("no", Dress::Boolean);
    add("counter", Dress::Counter);
    add("hexes", Dress::Hex);
    names_.Add("Dressed", "flags",
               {"my-flags", Dress::Flags, {{6, "both"}, {1, "up"}, {2, "two"}}});
    names_.Add("Sub", "state", {"is", Dress::Flags, {{1, "up"}, {2, "ready"}}});
    names_.Add("Dressed", "split[1]", {"middle", Dress::Hex});
    std::iota(record_.begin(), record_.begin() + 62, uint8_t{0xc2});
    std::memcpy(&record_[62],
                "a\xff"
                "bc\xab\xcd",
                6);
    const uint8_t rest[] = {0x07, 0x10, 2,    0,    9, 1, 0x0a, 0xff,        // flags to hexes
                            0,    1,    2,    3,    0, 4, 4,    5,    6, 2,  // subs and their count
                            1,    0,    0x34, 0x12, 3, 0};                   // split
    std::copy(std::begin(rest), std::end(rest), record_.begin() + 68);
  }

  std::string Show(const Presentation& presentation) {
    return Printed(presentation, vdrctl::RecordReply<kDressed>(),
                   [&](Output& out) { out.Record(kDressed, record_.data()); });
  }
  std::string Table(const std::vector<std::string>& columns) {
    auto two = record_;
    two.insert(two.end(), 92, 0);
    return Printed({.columns = columns, .names = &names_}, vdrctl::ListReply<kDressed>(),
                   [&](Output& out) { out.List(two.data(), 2); });
  }

  vdrctl::FieldNames names_{};
  std::vector<uint8_t> record_ = std::vector<uint8_t>(92);
};

TEST_F(Dressed, RecordsAreALineAField) {
  EXPECT_EQ(Show({.names = &names_}),
            "my-hex      0xc9c8c7c6c5c4c3c2\n"
            "my-ipv4     202.203.204.205\n"
            "my-ipv4s    206.207.208.209 210.211.212.213\n"
            "my-ipv6     d6d7:d8d9:dadb:dcdd:dedf:e0e1:e2e3:e4e5\n"
            "my-four     230.231.232.233\n"
            "my-sixteen  eaeb:eced:eeef:f0f1:f2f3:f4f5:f6f7:f8f9\n"
            "my-six      fa:fb:fc:fd:fe:ff\n"
            "my-text     a\\xffbc\n"
            "plain       abcd\n"
            "my-flags    both up 0x1000\n"
            "my-yes      yes\n"
            "my-no       no\n"
            "my-counter  265\n"
            "my-hexes    0xa 0xff\n"
            "subs        {is=- twice=1 2} {is=up ready twice=0 4}\n"
            "subCount    2\n"
            "split[0]    1\n"
            "middle      0x1234\n"
            "split[2]    3\n");
}

TEST_F(Dressed, RecordsAreAJsonObject) {
  EXPECT_EQ(
      Show({.form = Presentation::Form::Json, .names = &names_}),
      R"({"my-hex":14540091053501105090,"my-ipv4":"202.203.204.205",)"
      R"("my-ipv4s":["206.207.208.209","210.211.212.213"],)"
      R"("my-ipv6":"d6d7:d8d9:dadb:dcdd:dedf:e0e1:e2e3:e4e5","my-four":"230.231.232.233",)"
      R"("my-sixteen":"eaeb:eced:eeef:f0f1:f2f3:f4f5:f6f7:f8f9","my-six":"fa:fb:fc:fd:fe:ff",)"
      R"("my-text":"a\\xffbc","my-textEscaped":true,"plain":"abcd",)"
      R"("my-flags":["both","up","0x1000"],"my-yes":true,"my-no":false,"my-counter":265,)"
      R"("my-hexes":[10,255],)"
      R"("subs":[{"is":[],"twice":[1,2]},{"is":["up","ready"],"twice":[0,4]}],"subCount":2,)"
      R"("split[0]":1,"middle":4660,"split[2]":3})"
      "\n");
}

TEST_F(Dressed, NumbersAreAtTheRightAndAllElseIsAtTheLeft) {
  EXPECT_EQ(
      Table({"my-hex", "my-counter", "my-flags", "my-yes", "my-four", "my-six", "plain"}),
      "            my-hex  my-counter  my-flags        my-yes  my-four          my-six             "
      "plain\n"
      "0xc9c8c7c6c5c4c3c2         265  both up 0x1000  yes     230.231.232.233  "
      "fa:fb:fc:fd:fe:ff  abcd\n"
      "               0x0           0  -               no      0.0.0.0          "
      "00:00:00:00:00:00  0000\n");
  EXPECT_EQ(
      Table({"my-hexes", "middle", "subs", "split[2]", "my-text", "split[0]"}),
      "my-hexes  middle  subs                                      split[2]  my-text  split[0]\n"
      "0xa 0xff  0x1234  {is=- twice=1 2} {is=up ready twice=0 4}         3  a\\xffbc         "
      "1\n"
      "0x0 0x0      0x0  -                                                0  -               "
      "0\n");
}

TEST(Tables, ShowAnArrayOfNumbersAtTheLeft) {
  auto bytes = EveryKind();
  bytes.insert(bytes.end(), bytes.begin(), bytes.end());
  bytes[53 + 19] = 0xff;
  EXPECT_EQ(Printed({.columns = {"halves", "byte"}}, vdrctl::ListReply<kEveryKind>(),
                    [&](Output& out) { out.List(bytes.data(), 2); }),
            "halves       byte\n"
            "1 256 0       254\n"
            "65281 256 0   254\n");
}

TEST(Records, AreALineAField) {
  EXPECT_EQ(EveryKindRecord(kTables, EveryKind()),
            "byte       254\n"
            "half       258\n"
            "three      66051\n"
            "word       4294967295\n"
            "long       18446744073709551615\n"
            "halves     1 256 0\n"
            "text       blue\n"
            "bytes      000ff0\n"
            "mac        02:00:5e:10:ab:ff\n"
            "pairs      {name=a size=7} {name=bc size=256}\n"
            "pairCount  2\n");
}

TEST(Records, AreAJsonObjectInTheOrderOfTheLayout) {
  EXPECT_EQ(EveryKindRecord(kJson, EveryKind()),
            R"({"byte":254,"half":258,"three":66051,"word":4294967295,)"
            R"("long":18446744073709551615,"halves":[1,256,0],"text":"blue","bytes":"000ff0",)"
            R"("mac":"02:00:5e:10:ab:ff",)"
            R"("pairs":[{"name":"a","size":7},{"name":"bc","size":256}],"pairCount":2})"
            "\n");
}

TEST(Records, ShowOnlyTheEntriesThatAreCounted) {
  auto bytes = EveryKind();
  bytes[52] = 1;
  EXPECT_NE(EveryKindRecord(kJson, bytes).find(R"("pairs":[{"name":"a","size":7}],"pairCount":1})"),
            std::string::npos);
  EXPECT_NE(EveryKindRecord(kTables, bytes).find("pairs      {name=a size=7}\n"),
            std::string::npos);
}

TEST(Records, ShowNoEntriesAsADashOrAnEmptyArray) {
  auto bytes = EveryKind();
  bytes[52] = 0;
  EXPECT_NE(EveryKindRecord(kJson, bytes).find(R"("pairs":[],"pairCount":0})"), std::string::npos);
  EXPECT_NE(EveryKindRecord(kTables, bytes).find("pairs      -\n"), std::string::npos);
}

TEST(Records, ShowNoEntriesBeyondTheirArray) {
  auto bytes = EveryKind();
  bytes[52] = 255;
  EXPECT_NE(
      EveryKindRecord(kJson, bytes)
          .find(R"("pairs":[{"name":"a","size":7},{"name":"bc","size":256}],"pairCount":255})"),
      std::string::npos);
}

TEST(Json, ListsAreArraysOfObjects) {
  const std::string bytes(
      "ab\0\0\x05\0"
      "abc\0\xff\xff",
      12);
  EXPECT_EQ(PairList(kJson, bytes), R"([{"name":"ab","size":5},{"name":"abc","size":65535}])"
                                    "\n");
}

TEST(Json, HasAllRowsOfARecordWhateverTheUsualColumns) {
  static constexpr const char* kUsual[] = {"size"};
  EXPECT_EQ(Printed(kJson, vdrctl::ListReply<kPair>(kUsual),
                    [](Output& out) { out.List("ab\0\0\x05\0", 1); }),
            R"([{"name":"ab","size":5}])"
            "\n");
}

TEST(Json, AnEmptyListIsAnEmptyArray) { EXPECT_EQ(PairList(kJson, ""), "[]\n"); }

TEST(Json, TextThatFillsItsFieldEndsWithIt) {
  EXPECT_EQ(TextAsJson("abcdef"), R"({"name":"abcd","size":26213})"
                                  "\n");
}

TEST(Json, TextIsWrittenInAscii) {
  EXPECT_EQ(TextAsJson("\xc3\xa9\x1b\x7f"), R"({"name":"\u00e9\u001b\u007f","size":0})"
                                            "\n");
}

TEST(Json, TextThatIsNotUtf8IsEscapedAsInTablesAndSaysSo) {
  EXPECT_EQ(TextAsJson("\\\xff\xc3"), R"({"name":"\\\\\\xff\\xc3","nameEscaped":true,"size":0})"
                                      "\n");
  for (const char* wrong :
       {"\xc0\x80", "\xe0\x80\x80", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\xf8"}) {
    EXPECT_NE(TextAsJson(wrong).find("nameEscaped"), std::string::npos) << Escaped(wrong);
  }
  EXPECT_EQ(TextAsJson("\xf0\x9f\x98\x80"), R"({"name":"\ud83d\ude00","size":0})"
                                            "\n");
}

TEST(Json, QuotesAndBackslashesAreEscaped) {
  EXPECT_EQ(TextAsJson("\"\\"), R"({"name":"\"\\","size":0})"
                                "\n");
}

TEST(ValuesAlone, AreALineOrAnObject) {
  const auto number = [](Output& out) { out.Number(4294967295); };
  EXPECT_EQ(Printed(kTables, vdrctl::NumberReply("level"), number), "4294967295\n");
  EXPECT_EQ(Printed(kJson, vdrctl::NumberReply("level"), number), "{\"level\":4294967295}\n");
  const auto address = [](Output& out) { out.Address(0x0100000a); };
  EXPECT_EQ(Printed(kTables, vdrctl::AddressReply("address"), address), "10.0.0.1\n");
  EXPECT_EQ(Printed(kJson, vdrctl::AddressReply("to"), address), "{\"to\":\"10.0.0.1\"}\n");
  const auto mac = [](Output& out) { out.Mac(std::vector<uint8_t>{2, 0, 0x5e, 0x10, 0xab, 0xff}); };
  EXPECT_EQ(Printed(kTables, vdrctl::MacReply("mac"), mac), "02:00:5e:10:ab:ff\n");
  EXPECT_EQ(Printed(kJson, vdrctl::MacReply("mac"), mac), "{\"mac\":\"02:00:5e:10:ab:ff\"}\n");
}

TEST(Replies, AreDumpedOrGivenAsHexadecimalBesideTheKernelsLength) {
  const uint8_t bytes[] = {0x00, 0x41, 0xff};
  const auto reply = [&](Output& out) { out.Bytes(4000000000, bytes); };
  EXPECT_EQ(Printed(kTables, vdrctl::BytesReply(), reply),
            "00000000  00 41 ff                                         |.A.|\n");
  EXPECT_EQ(Printed(kJson, vdrctl::BytesReply(), reply),
            "{\"length\":4000000000,\"bytes\":\"0041ff\"}\n");
}

TEST(Replies, WithoutBytesShowNothingInATable) {
  const auto reply = [](Output& out) { out.Bytes(0, {}); };
  EXPECT_EQ(Printed(kTables, vdrctl::BytesReply(), reply), "");
  EXPECT_EQ(Printed(kJson, vdrctl::BytesReply(), reply), "{\"length\":0,\"bytes\":\"\"}\n");
}

TEST(HexDumps, HaveSixteenBytesALine) {
  std::vector<uint8_t> bytes;
  for (uint8_t value = 0x1f; value < 0x30; ++value) bytes.push_back(value);
  EXPECT_EQ(HexDump(bytes),
            "00000000  1f 20 21 22 23 24 25 26 27 28 29 2a 2b 2c 2d 2e  |. !\"#$%&'()*+,-.|\n"
            "00000010  2f                                               |/|\n");
  bytes.pop_back();
  EXPECT_EQ(HexDump(bytes),
            "00000000  1f 20 21 22 23 24 25 26 27 28 29 2a 2b 2c 2d 2e  |. !\"#$%&'()*+,-.|\n");
}

TEST(HexDumps, ShowOfEqualLinesTheFirstAndTheLast) {
  const std::vector<uint8_t> bytes(64, 0x41);
  const std::string line = "41 41 41 41 41 41 41 41 41 41 41 41 41 41 41 41  |AAAAAAAAAAAAAAAA|\n";
  EXPECT_EQ(HexDump(bytes), "00000000  " + line + "*\n00000030  " + line);
}

TEST(HexDumps, ShowEachRowOfEqualLinesApartAndNoLineBeforeTheirFirst) {
  const std::vector<uint8_t> bytes(64, 0x41);
  const std::string line = "41 41 41 41 41 41 41 41 41 41 41 41 41 41 41 41  |AAAAAAAAAAAAAAAA|\n";
  EXPECT_EQ(HexDump(std::span(bytes).subspan(16)), "00000000  " + line + "*\n00000020  " + line);
  auto other = std::vector<uint8_t>(112, 0x41);
  other[48] = 0x42;
  EXPECT_EQ(HexDump(other), "00000000  " + line +
                                "*\n00000030  42 41 41 41 41 41 41 41 41 41 41 41 41 41 41 41  "
                                "|BAAAAAAAAAAAAAAA|\n00000040  " +
                                line + "*\n00000060  " + line);
}

TEST(HexDumps, HaveOffsetsOfThirtyTwoBits) {
  std::vector<uint8_t> bytes(0x1234560 + 2);
  bytes[0x1020300] = 0xff;
  const std::string zeros = "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00  |................|\n";
  EXPECT_EQ(HexDump(bytes),
            "00000000  " + zeros + "*\n01020300  ff" + zeros.substr(2) + "01020310  " + zeros +
                "*\n01234560  00 00                                            |..|\n");
}

TEST(HexDumps, ShowDeleteAndHighBytesAsDots) {
  const uint8_t bytes[] = {0x7e, 0x7f, 0x80, 0xff};
  EXPECT_EQ(HexDump(bytes), "00000000  7e 7f 80 ff                                      |~...|\n");
}

// A stream whose bytes are looked at.
class Parts : public testing::Test {
 protected:
  ~Parts() override {
    (void)std::fclose(stream_);
    std::free(bytes_);
  }
  std::string Arrived() {
    (void)std::fflush(stream_);
    return {bytes_, size_};
  }

  char* bytes_ = nullptr;
  std::size_t size_ = 0;
  std::FILE* stream_ = open_memstream(&bytes_, &size_);
  Writer writer_{stream_};
};

TEST_F(Parts, GoOutOnceTheyAreWorthAWrite) {
  writer_.Fill(65535, 'a');
  writer_.Part();
  EXPECT_EQ(Arrived(), "");
  writer_.Put('b');
  writer_.Part();
  EXPECT_EQ(Arrived(), std::string(65535, 'a') + 'b');
  writer_.Put("cd");
  writer_.Part();
  EXPECT_EQ(Arrived().size(), 65536U);
  writer_.Finish();
  EXPECT_EQ(Arrived(), std::string(65535, 'a') + "bcd");
}

TEST(Writers, KeepAllWithoutAStream) {
  Writer writer;
  writer.Fill(70'000, 'a');
  writer.Part();
  writer.Finish();
  EXPECT_EQ(writer.text(), std::string(70'000, 'a'));
}

TEST_F(Parts, OfALongListAreNotKept) {
  const std::string bytes(6UL * 20000, '\x01');
  for (const auto form : {Presentation::Form::Tables, Presentation::Form::Json}) {
    const std::size_t before = Arrived().size();
    const Presentation presentation{.form = form};
    Output out(presentation, vdrctl::ListReply<kPair>(), writer_);
    out.List(bytes.data(), 20000);
    EXPECT_GT(Arrived().size(), before + 200'000);
    EXPECT_LT(writer_.text().size(), 65536U + 64);
  }
}

TEST_F(Parts, OfALongDumpAreNotKept) {
  std::vector<uint8_t> bytes(100'000);
  std::iota(bytes.begin(), bytes.end(), uint8_t{0});
  vdrctl::PutHexDump(writer_, bytes);
  EXPECT_GT(Arrived().size(), 400'000U);
  EXPECT_LT(writer_.text().size(), 65536U + 80);
}

TEST(Cells, ShowAListWithoutElementsAsADash) {
  Writer writer;
  vdrctl::CellForm form(writer);
  form.Open();
  form.Next();
  form.Number(7);
  form.Next();
  form.Open();
  form.Close();
  form.Close();
  form.Open();
  form.Close();
  EXPECT_EQ(writer.text(), "7 --");
}

TEST(Escaping, LeavesPrintableAsciiAlone) {
  EXPECT_EQ(Escaped(" az AZ 09 ~!\"'"), " az AZ 09 ~!\"'");
}

TEST(Escaping, WritesEveryOtherByteInHexadecimal) {
  EXPECT_EQ(Escaped(std::string("\0\n\x1f\x7f\x80\xc3\xa9", 7)),
            "\\x00\\x0a\\x1f\\x7f\\x80\\xc3\\xa9");
}

TEST(Escaping, WritesTheBackslashTwice) { EXPECT_EQ(Escaped("\\x41"), "\\\\x41"); }

}  // namespace
