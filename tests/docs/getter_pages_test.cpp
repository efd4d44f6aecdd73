#include <fmt/format.h>
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <regex>
#include <string>

#include "support/getters/table.h"

// What the pages say of getters, against the table.

namespace {

// What stands behind the functions that the first cell of a row names, by function, where the page
// names them first.
std::map<std::string, std::string> ReadRows(const char* page) {
  static const std::regex name(R"(`(VDRZAX\w+)`)");
  std::ifstream file(page);
  std::map<std::string, std::string> rows;
  for (std::string line; std::getline(file, line);) {
    if (!line.starts_with("| `VDRZAX")) continue;
    const std::size_t cell = line.find(" | ");
    const std::string names = line.substr(0, cell);
    for (std::sregex_iterator found(names.begin(), names.end(), name), end; found != end; ++found) {
      rows.emplace((*found)[1], line.substr(cell + 3));
    }
  }
  return rows;
}

// The page has a row of the function that begins and ends so.
void ExpectRow(const std::map<std::string, std::string>& rows, const char* page,
               const std::string& function, const std::string& begin, const std::string& reply) {
  const auto row = rows.find(function);
  ASSERT_NE(row, rows.end()) << page << " has no row for " << function;
  const std::string& text = row->second;
  const std::size_t last = text.rfind(" | ");
  EXPECT_TRUE(text.starts_with(begin) && text.substr(last + 3).starts_with(reply))
      << page << " says of " << function << ": " << text << "\nexpected " << begin << "... | "
      << reply;
}

std::string ReplyOf(const getters::RawGetter& getter) {
  switch (getter.into) {
    case getters::Into::Buffer:
      return fmt::format("raw {} |", getter.size);
    case getters::Into::ClearedBuffer:
      return "result |";
    case getters::Into::Variable:
      return "u32 |";
  }
  return {};
}

TEST(GetterPages, TheProtocolPageSaysCodeAndReplyOfEachGetter) {
  const char* page = "docs/protocol.md";
  const auto rows = ReadRows(SOURCE_TREE "/docs/protocol.md");
  const auto expect = [&](const std::string& name, unsigned long code, const std::string& reply) {
    ExpectRow(rows, page, name, fmt::format("{} | ", code), reply);
  };
  for (const getters::Family* family : getters::Families()) {
    for (const auto& getter : family->lists) {
      expect(getter.name, getter.code, fmt::format("{} x ", getter.cap));
      if (getter.fetch) expect(getter.FetchName(), getter.code, "the same |");
    }
    for (const auto& getter : family->records) expect(getter.name, getter.code, "");
    for (const auto& getter : family->raws) expect(getter.name, getter.code, ReplyOf(getter));
  }
}

TEST(GetterPages, TheMemoryPageSaysWhatEachListReserves) {
  const auto rows = ReadRows(SOURCE_TREE "/docs/memory.md");
  for (const getters::Family* family : getters::Families()) {
    for (const auto& getter : family->lists) {
      const std::size_t bytes = getter.cap * getter.size;
      ExpectRow(rows, "docs/memory.md", getter.name, fmt::format("{} | ", bytes),
                fmt::format("{} |", bytes));
    }
  }
}

}  // namespace
