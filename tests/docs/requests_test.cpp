#include "requests/requests.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <initializer_list>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "sweep/sweep.h"

// The table by which the simulated datapath reads requests, against the protocol page and against
// what each function of the library sends.

namespace {

using vdrsim::requests::Field;
using vdrsim::requests::Form;
using vdrsim::requests::Identify;
using vdrsim::requests::kRequests;
using vdrsim::requests::Meanings;
using vdrsim::requests::Request;

// "384 t64 lifName", as the page writes it.
std::string Written(const Field& field) {
  const std::string bits = std::to_string(field.width * 8);
  const std::string bytes = std::to_string(field.width);
  std::string form;
  switch (field.kind) {
    case Field::Kind::Number:
      form = "u" + bits;
      break;
    case Field::Kind::Signed:
      form = "i" + bits;
      break;
    case Field::Kind::Text:
      form = "t" + bytes;
      break;
    case Field::Kind::OpenText:
      form = "p" + bytes;
      break;
    case Field::Kind::Mac:
      form = field.width == 6 ? "mac" : "mac of " + bytes;
      break;
    case Field::Kind::Bytes:
      form = "b" + bytes;
      break;
  }
  return fmt::format("{} {} {}", field.offset, form, field.isOne ? "= 1" : field.name);
}

using Fields = std::set<std::string>;

Fields FieldsOf(const std::string& input) {
  static const std::regex field(
      R"((\d+) ([tpbui]\d+|mac|entryCount|refCount x 24)\?? (?:low 29 bits of )?(= 1|\w+))");
  Fields fields;
  for (std::sregex_iterator found(input.begin(), input.end(), field), end; found != end; ++found) {
    std::string form = (*found)[2];
    if (form == "entryCount") form = "b128";
    if (form == "refCount x 24") form = "b480";
    fields.insert(fmt::format("{} {} {}", (*found)[1].str(), form, (*found)[3].str()));
  }
  return fields;
}

struct PageRow {
  Form form;
  Fields fields;
};

Form FormOf(const std::string& input) {
  if (input.starts_with("none")) return Form::None;
  return input.starts_with("bare") ? Form::Scalar : Form::Block;
}

// By function without prefix, then by code.
std::map<std::string, std::map<uint32_t, PageRow>> ReadPage() {
  static const std::regex row(R"(^\| `VDRZAX_(\w+)` \| ([\d, ]+) \| ([^|]+) \|)");
  static const std::regex reference(R"(^as `VDRZAX_(\w+)`(?:, without (\d+))?)");
  static const std::regex number(R"(\d+)");
  std::ifstream page(SOURCE_TREE "/docs/protocol.md");
  std::map<std::string, std::map<uint32_t, PageRow>> rows;
  std::smatch match;
  for (std::string line; std::getline(page, line);) {
    if (!std::regex_search(line, match, row)) continue;
    const std::string name = match[1];
    const std::string codes = match[2];
    const std::string input = match[3];
    PageRow read{.form = FormOf(input), .fields = FieldsOf(input)};
    if (std::regex_search(input, match, reference)) {
      read = rows.at(match[1]).begin()->second;
      if (match[2].matched) {
        std::erase_if(read.fields,
                      [&](const auto& field) { return field.starts_with(match[2].str() + " "); });
      }
    }
    for (std::sregex_iterator code(codes.begin(), codes.end(), number), end; code != end; ++code) {
      rows[name][static_cast<uint32_t>(std::stoul(code->str()))] = read;
    }
  }
  return rows;
}

Fields FieldsOf(const Request& request) {
  Fields fields;
  for (const Field& field : request.fields()) fields.insert(Written(field));
  return fields;
}

// Where the page says more, or less, in words.
void SetRight(const Request& request, Fields& fields) {
  if (request.code == 33) {
    fields.insert({"556 u32 count", "560 b160 servers"});
  } else if (request.code == 94) {
    fields.erase("320 mac mac");
  } else if (request.code == 108 || request.code == 109) {
    fields.erase("276 p64 lifName");
    fields.insert("276 p64 lifName276");
  }
}

TEST(Requests, EachIsThatOfTheProtocolPage) {
  auto page = ReadPage();
  for (const Request* request : kRequests) {
    SCOPED_TRACE(fmt::format("{} {}", request->name.view(), request->code));
    auto& codes = page[std::string(request->name.view())];
    ASSERT_TRUE(codes.contains(request->code)) << "docs/protocol.md has no row of this code";
    PageRow& row = codes.at(request->code);
    EXPECT_EQ(request->form, row.form);
    if (row.form == Form::Block) {
      SetRight(*request, row.fields);
      EXPECT_EQ(FieldsOf(*request), row.fields);
    }
    codes.erase(request->code);
  }
  for (const auto& [name, codes] : page)
    EXPECT_TRUE(codes.empty()) << name << " has no request in tools/vdrsim/requests/";
}

// A caller's own choice, or twice as much when there is more.
bool IsAnyRoom(const Request& request) {
  return request.room.bytes == vdrsim::requests::kAnyRoom.bytes;
}

// What fields there are begins with a byte that is not zero, and there is none outside of them.
void ExpectFilled(const Request& request, const fake::Bytes& sent) {
  std::set<std::size_t> covered;
  for (const Field& field : request.fields()) {
    for (std::size_t byte = field.offset; byte < field.End(); ++byte) covered.insert(byte);
    if (request.code == 33 && field.offset >= 556) continue;  // the library never sets servers
    EXPECT_NE(sent[field.offset], 0) << field.name;
    if (field.isOne) {
      EXPECT_EQ(sent[field.offset], 1) << field.name;
    }
  }
  for (std::size_t byte = 0; byte < sent.size(); ++byte) {
    EXPECT_TRUE(sent[byte] == 0 || covered.contains(byte)) << "byte " << byte;
  }
}

TEST(Requests, WhatEachFunctionSendsIsIdentifiedAndFillsItsFields) {
  std::set<const Request*> sent;
  for (const sweep::Row& row : sweep::AllRows()) {
    // Sends what the caller made; sends a block that is not cleared.
    if (row.name == "VDRZAXIoctl" || row.name == "VDRZAX_BridgeSetConfig") continue;
    fake::Device device;
    device.answer = [&](const fake::Command& command) {
      const bool asksForSize = row.sizeQuery && command.request == row.sizeQuery->code;
      return asksForSize ? fake::Reply{.bytes = row.sizeQuery->reply} : fake::Failure(EXDEV);
    };
    row.call(device);
    device.FreeLost();
    for (const fake::Command& command : device.commands) {
      SCOPED_TRACE(fmt::format("{} {}", row.name, command.request));
      const std::size_t index =
          Identify(static_cast<uint32_t>(command.request), std::as_bytes(std::span(command.input)));
      ASSERT_NE(index, Meanings::kNone) << "tools/vdrsim/requests/ has no request of this code";
      const Request& request = *kRequests[index];
      sent.insert(&request);
      const std::string prefix = row.name.starts_with("VDRZAX_") ? "VDRZAX_" : "VDRZAX";
      EXPECT_EQ(row.name, prefix + std::string(request.name.view()));
      ASSERT_EQ(command.input.size(), InputLength(request.form));
      if (row.name != "VDRZAX_DelMRoutingRemoteRcvrs") ExpectFilled(request, command.input);
      if (!IsAnyRoom(request)) {
        EXPECT_EQ(command.outLength, request.room.bytes);
      }
    }
  }
  for (const Request* request : kRequests) {
    EXPECT_TRUE(sent.contains(request)) << request->name.view() << ' ' << request->code;
  }
}

// What the compiler refuses in the tables, put together while the program runs.

bool Refuses(std::initializer_list<Field> fields) {
  try {
    const Request request(1, "Made", vdrsim::requests::Sets, fields);
    EXPECT_EQ(request.fields().size(), fields.size());
  } catch (const char*) {
    return true;
  }
  return false;
}

Request Of(uint32_t code, uint16_t variant = 0) {
  return {code, "Made", vdrsim::requests::Sets, {}, 0, variant};
}

// Which of these requests a code means.
std::vector<std::size_t> Meant(const std::vector<Request>& requests, uint32_t code) {
  std::vector<const Request*> all;
  for (const Request& request : requests) all.push_back(&request);
  const Meanings meanings = vdrsim::requests::MeaningsByCode(all)[code];
  return {meanings.plain, meanings.variant};
}

TEST(Requests, HaveFieldsThatNeitherOverlapNorReachBeyondTheBlock) {
  using namespace vdrsim::requests;
  EXPECT_FALSE(Refuses({}));
  EXPECT_FALSE(Refuses({U32("a", 0), U16("b", 4), U8("c", 6), Text("d", 7, 961)}));
  EXPECT_TRUE(Refuses({U32("a", 0), U16("b", 3)}));
  EXPECT_TRUE(Refuses({U32("b", 4), U32("a", 0)}));
  EXPECT_TRUE(Refuses({Text("d", 7, 962)}));
  EXPECT_TRUE(Refuses({Text("d", 7, 0)}));
}

TEST(Requests, HaveEachNameOnce) {
  using namespace vdrsim::requests;
  EXPECT_TRUE(Refuses({U32("a", 0), U32("b", 4), U32("a", 8)}));
  EXPECT_FALSE(Refuses({U32("a", 0), U32("b", 4), U32("c", 8)}));
}

TEST(Requests, HaveNoMoreThanTwelveFields) {
  using namespace vdrsim::requests;
  EXPECT_FALSE(Refuses({U8("a", 0), U8("b", 1), U8("c", 2), U8("d", 3), U8("e", 4), U8("f", 5),
                        U8("g", 6), U8("h", 7), U8("i", 8), U8("j", 9), U8("k", 10), U8("l", 11)}));
  EXPECT_TRUE(
      Refuses({U8("a", 0), U8("b", 1), U8("c", 2), U8("d", 3), U8("e", 4), U8("f", 5), U8("g", 6),
               U8("h", 7), U8("i", 8), U8("j", 9), U8("k", 10), U8("l", 11), U8("m", 12)}));
}

TEST(Requests, HaveEachCodeOnceAndVariantsOfOthers) {
  constexpr std::size_t kNone = Meanings::kNone;
  EXPECT_EQ(Meant({Of(1), Of(2), Of(255)}, 255), (std::vector<std::size_t>{2, kNone}));
  EXPECT_EQ(Meant({Of(1), Of(2), Of(255)}, 3), (std::vector<std::size_t>{kNone, kNone}));
  EXPECT_EQ(Meant({Of(2, 552), Of(1), Of(2)}, 2), (std::vector<std::size_t>{2, 0}));
  EXPECT_THROW(Meant({Of(1), Of(2), Of(1)}, 1), const char*);
  EXPECT_THROW(Meant({Of(1), Of(1, 552), Of(1, 917)}, 1), const char*);
  EXPECT_THROW(Meant({Of(1), Of(2, 552)}, 1), const char*);
}

TEST(Requests, AreAskedForByTheNameOfOne) {
  using vdrsim::requests::IndexOf;
  constexpr uint32_t kAny = 0xffffffff;
  EXPECT_EQ(kRequests[IndexOf("BridgeAdd", kAny)]->code, 53U);
  EXPECT_EQ(kRequests[IndexOf("BridgeAdd", 53)]->code, 53U);
  EXPECT_EQ(kRequests[IndexOf("SetBridgeLif", 58)]->code, 58U);
  EXPECT_THROW(IndexOf("SetBridgeLif", kAny), const char*);
  EXPECT_THROW(IndexOf("SetBridgeLif", 53), const char*);
  EXPECT_THROW(IndexOf("NoneSuch", kAny), const char*);
}

}  // namespace
