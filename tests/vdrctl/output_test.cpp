#include "output/output.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

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

constexpr Presentation kTables{};
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
}

TEST(Tables, AndJsonAreSortedByAColumnAsAReaderWouldAndKeepEqualsInTheirOrder) {
  const std::string bytes(
      "b\0\0\0\x00\x01"
      "c\0\0\0\x02\0"
      "a\0\0\0\x02\0",
      18);
  EXPECT_EQ(PairList({.header = false, .sort = "size"}, bytes), "c    2\na    2\nb  256\n");
  EXPECT_EQ(PairList({.header = false, .sort = "name"}, bytes), "a    2\nb  256\nc    2\n");
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

TEST(HexDumps, ShowDeleteAndHighBytesAsDots) {
  const uint8_t bytes[] = {0x7e, 0x7f, 0x80, 0xff};
  EXPECT_EQ(HexDump(bytes), "00000000  7e 7f 80 ff                                      |~...|\n");
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
