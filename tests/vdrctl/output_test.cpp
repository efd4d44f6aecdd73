#include "output.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

using vdrctl::Escaped;
using vdrctl::HexDump;
using vdrctl::Output;
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
constexpr auto kPairColumns = vdrctl::Columns(kPair, {"name", "size"});

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

std::string PairList(Output::Form form, const std::string& bytes) {
  Output out(form);
  out.List(kPair, kPairColumns, bytes.data(), bytes.size() / 6);
  return out.text();
}

std::string EveryKindRecord(Output::Form form, const std::vector<uint8_t>& bytes) {
  Output out(form);
  out.Record(kEveryKind, bytes.data());
  return out.text();
}

std::string TextAsJson(const std::string& text) {
  std::string record(6, '\0');
  record.replace(0, text.size(), text);
  Output out(Output::Form::Json);
  out.Record(kPair, record.data());
  return out.text();
}

TEST(Tables, ShowTextsAtTheLeftAndNumbersAtTheRight) {
  const std::string bytes(
      "ab\0\0\x05\0"
      "abc\0\xff\xff",
      12);
  EXPECT_EQ(PairList(Output::Form::Tables, bytes),
            "name   size\n"
            "ab        5\n"
            "abc   65535\n");
}

TEST(Tables, HaveTheirHeaderWhenTheyAreEmpty) {
  EXPECT_EQ(PairList(Output::Form::Tables, ""), "name  size\n");
}

TEST(Tables, ShowAnEmptyTextAsADash) {
  EXPECT_EQ(PairList(Output::Form::Tables, std::string(6, '\0')),
            "name  size\n"
            "-        0\n");
}

TEST(Tables, WidenAColumnByWhatIsEscaped) {
  const std::string bytes("\x1b[m\0\x01\0", 6);
  EXPECT_EQ(PairList(Output::Form::Tables, bytes),
            "name    size\n"
            "\\x1b[m     1\n");
}

TEST(Tables, LeaveNoSpacesAtTheEndOfALine) {
  constexpr auto kColumns = vdrctl::Columns(kPair, {"size", "name"});
  const std::string bytes(
      "a\0\0\0\x01\0"
      "long\x02\0",
      12);
  Output out(Output::Form::Tables);
  out.List(kPair, kColumns, bytes.data(), 2);
  EXPECT_EQ(out.text(),
            "size  name\n"
            "   1  a\n"
            "   2  long\n");
}

TEST(Tables, ShowEntriesInTheirShortForm) {
  constexpr auto kColumns = vdrctl::Columns(kEveryKind, {"text", "pairs", "byte"});
  Output out(Output::Form::Tables);
  out.List(kEveryKind, kColumns, EveryKind().data(), 1);
  EXPECT_EQ(out.text(),
            "text  pairs                               byte\n"
            "blue  {name=a size=7} {name=bc size=256}   254\n");
}

TEST(Tables, ShowAnArrayOfNumbersAtTheLeft) {
  constexpr auto kColumns = vdrctl::Columns(kEveryKind, {"halves", "byte"});
  auto bytes = EveryKind();
  bytes.insert(bytes.end(), bytes.begin(), bytes.end());
  bytes[53 + 19] = 0xff;
  Output out(Output::Form::Tables);
  out.List(kEveryKind, kColumns, bytes.data(), 2);
  EXPECT_EQ(out.text(),
            "halves       byte\n"
            "1 256 0       254\n"
            "65281 256 0   254\n");
}

TEST(Records, AreALineAField) {
  EXPECT_EQ(EveryKindRecord(Output::Form::Tables, EveryKind()),
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
  EXPECT_EQ(EveryKindRecord(Output::Form::Json, EveryKind()),
            R"({"byte":254,"half":258,"three":66051,"word":4294967295,)"
            R"("long":18446744073709551615,"halves":[1,256,0],"text":"blue","bytes":"000ff0",)"
            R"("mac":"02:00:5e:10:ab:ff",)"
            R"("pairs":[{"name":"a","size":7},{"name":"bc","size":256}],"pairCount":2})"
            "\n");
}

TEST(Records, ShowOnlyTheEntriesThatAreCounted) {
  auto bytes = EveryKind();
  bytes[52] = 1;
  EXPECT_NE(EveryKindRecord(Output::Form::Json, bytes)
                .find(R"("pairs":[{"name":"a","size":7}],"pairCount":1})"),
            std::string::npos);
  EXPECT_NE(EveryKindRecord(Output::Form::Tables, bytes).find("pairs      {name=a size=7}\n"),
            std::string::npos);
}

TEST(Records, ShowNoEntriesAsADashOrAnEmptyArray) {
  auto bytes = EveryKind();
  bytes[52] = 0;
  EXPECT_NE(EveryKindRecord(Output::Form::Json, bytes).find(R"("pairs":[],"pairCount":0})"),
            std::string::npos);
  EXPECT_NE(EveryKindRecord(Output::Form::Tables, bytes).find("pairs      -\n"), std::string::npos);
}

TEST(Records, ShowNoEntriesBeyondTheirArray) {
  auto bytes = EveryKind();
  bytes[52] = 255;
  EXPECT_NE(
      EveryKindRecord(Output::Form::Json, bytes)
          .find(R"("pairs":[{"name":"a","size":7},{"name":"bc","size":256}],"pairCount":255})"),
      std::string::npos);
}

TEST(Json, ListsAreArraysOfObjects) {
  const std::string bytes(
      "ab\0\0\x05\0"
      "abc\0\xff\xff",
      12);
  EXPECT_EQ(PairList(Output::Form::Json, bytes),
            R"([{"name":"ab","size":5},{"name":"abc","size":65535}])"
            "\n");
}

TEST(Json, HasAllRowsOfARecordWhateverTheColumns) {
  constexpr auto kColumns = vdrctl::Columns(kPair, {"size"});
  Output out(Output::Form::Json);
  out.List(kPair, kColumns, "ab\0\0\x05\0", 1);
  EXPECT_EQ(out.text(), R"([{"name":"ab","size":5}])"
                        "\n");
}

TEST(Json, AnEmptyListIsAnEmptyArray) { EXPECT_EQ(PairList(Output::Form::Json, ""), "[]\n"); }

TEST(Json, TextThatFillsItsFieldEndsWithIt) {
  EXPECT_EQ(TextAsJson("abcdef"), R"({"name":"abcd","size":26213})"
                                  "\n");
}

TEST(Json, TextIsWrittenInAscii) {
  EXPECT_EQ(TextAsJson("\xc3\xa9\x1b\x7f"), R"({"name":"\u00e9\u001b\u007f","size":0})"
                                            "\n");
}

TEST(Json, BytesThatAreNotUtf8BecomeTheReplacementCharacter) {
  EXPECT_EQ(TextAsJson("a\xff"
                       "b\xc3"),
            R"({"name":"a\ufffdb\ufffd","size":0})"
            "\n");
}

TEST(Json, QuotesAndBackslashesAreEscaped) {
  EXPECT_EQ(TextAsJson("\"\\"), R"({"name":"\"\\","size":0})"
                                "\n");
}

TEST(NumbersAlone, AreALineOrAnObject) {
  Output table(Output::Form::Tables);
  table.Number("level", 4294967295);
  EXPECT_EQ(table.text(), "4294967295\n");
  Output json(Output::Form::Json);
  json.Number("level", 3);
  EXPECT_EQ(json.text(), "{\"level\":3}\n");
}

TEST(Replies, AreDumpedOrGivenAsHexadecimal) {
  const uint8_t bytes[] = {0x00, 0x41, 0xff};
  Output table(Output::Form::Tables);
  table.Reply(3, bytes);
  EXPECT_EQ(table.text(), "00000000  00 41 ff                                         |.A.|\n");
  Output json(Output::Form::Json);
  json.Reply(3, bytes);
  EXPECT_EQ(json.text(), "{\"length\":3,\"bytes\":\"0041ff\"}\n");
}

TEST(Replies, GiveTheKernelsLengthBesideTheBytesThatAreThere) {
  const uint8_t bytes[] = {0x01};
  Output json(Output::Form::Json);
  json.Reply(4000000000, bytes);
  EXPECT_EQ(json.text(), "{\"length\":4000000000,\"bytes\":\"01\"}\n");
}

TEST(Replies, WithoutBytesShowNothingInATable) {
  Output table(Output::Form::Tables);
  table.Reply(0, {});
  EXPECT_EQ(table.text(), "");
  Output json(Output::Form::Json);
  json.Reply(0, {});
  EXPECT_EQ(json.text(), "{\"length\":0,\"bytes\":\"\"}\n");
}

TEST(Replies, AreRawBytesOnRequestInEitherForm) {
  const uint8_t bytes[] = {0x00, 0x41, 0xff};
  for (const auto form : {Output::Form::Tables, Output::Form::Json}) {
    Output out(form);
    out.Raw(bytes);
    EXPECT_EQ(out.text(), std::string("\0A\xff", 3));
  }
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
