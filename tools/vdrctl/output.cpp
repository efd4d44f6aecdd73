#include "output.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

namespace vdrctl {

namespace {

using Json = nlohmann::ordered_json;
using vdrzax::Field;
using vdrzax::RecordLayout;

Json Value(const Field& row, const uint8_t* record);
Json Object(const RecordLayout& layout, const uint8_t* record);
std::string Document(const Json& value);
std::string Table(std::span<const Field> columns,
                  const std::vector<std::vector<std::string>>& lines);
std::string Cell(const Json& value);
uint64_t NumberAt(const uint8_t* bytes, uint32_t width);
std::string Hex(std::span<const uint8_t> bytes, std::string_view separator = "");

}  // namespace

void Output::List(const RecordLayout& layout, std::span<const Field> columns, const void* records,
                  std::size_t count) {
  const auto* record = static_cast<const uint8_t*>(records);
  Json array = Json::array();
  std::vector<std::vector<std::string>> lines;
  for (std::size_t index = 0; index < count; ++index, record += layout.size) {
    if (form_ == Form::Json) {
      array.push_back(Object(layout, record));
      continue;
    }
    auto& line = lines.emplace_back();
    for (const Field& column : columns) line.push_back(Cell(Value(column, record)));
  }
  text_ += form_ == Form::Json ? Document(array) : Table(columns, lines);
}

void Output::Record(const RecordLayout& layout, const void* record) {
  const Json object = Object(layout, static_cast<const uint8_t*>(record));
  if (form_ == Form::Json) {
    text_ += Document(object);
    return;
  }
  std::size_t width = 0;
  for (const auto& [name, value] : object.items()) width = std::max(width, name.size());
  for (const auto& [name, value] : object.items()) {
    fmt::format_to(std::back_inserter(text_), "{:<{}}  {}\n", name, width, Cell(value));
  }
}

void Output::Number(std::string_view name, uint64_t value) {
  text_ +=
      form_ == Form::Json ? Document(Json{{std::string(name), value}}) : fmt::format("{}\n", value);
}

void Output::Reply(uint32_t length, std::span<const uint8_t> bytes) {
  text_ += form_ == Form::Json ? Document(Json{{"length", length}, {"bytes", Hex(bytes)}})
                               : HexDump(bytes);
}

void Output::Raw(std::span<const uint8_t> bytes) { text_.append(bytes.begin(), bytes.end()); }

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char character : text) {
    if (character == '\\') {
      escaped += "\\\\";
    } else if (character >= ' ' && character <= '~') {
      escaped += character;
    } else {
      fmt::format_to(std::back_inserter(escaped), "\\x{:02x}", static_cast<uint8_t>(character));
    }
  }
  return escaped;
}

std::string HexDump(std::span<const uint8_t> bytes) {
  constexpr std::size_t kPerLine = 16;
  std::string text;
  for (std::size_t offset = 0; offset < bytes.size(); offset += kPerLine) {
    const auto line = bytes.subspan(offset, std::min(kPerLine, bytes.size() - offset));
    std::string characters;
    for (const uint8_t byte : line) {
      characters += byte >= ' ' && byte <= '~' ? static_cast<char>(byte) : '.';
    }
    fmt::format_to(std::back_inserter(text), "{:08x}  {:<47}  |{}|\n", offset, Hex(line, " "),
                   characters);
  }
  return text;
}

namespace {

// The one reading of a field. Tables show the same value as JSON does, in another dress.
Json Value(const Field& row, const uint8_t* record) {
  const uint8_t* bytes = record + row.offset;
  switch (row.kind) {
    case Field::Kind::Number: {
      if (row.elements == 1) return NumberAt(bytes, row.width);
      Json numbers = Json::array();
      for (std::size_t index = 0; index < row.elements; ++index) {
        numbers.push_back(NumberAt(bytes + index * row.ElementWidth(), row.ElementWidth()));
      }
      return numbers;
    }
    case Field::Kind::Text: {
      const auto* text = reinterpret_cast<const char*>(bytes);
      return std::string(text, strnlen(text, row.width));
    }
    case Field::Kind::Bytes:
      return Hex({bytes, row.width});
    case Field::Kind::Mac:
      return Hex({bytes, row.width}, ":");
    case Field::Kind::Entries: {
      // The count is the kernel's and may exceed the array.
      const uint64_t count =
          std::min<uint64_t>(NumberAt(record + row.countOffset, row.countWidth), row.elements);
      Json entries = Json::array();
      for (uint64_t index = 0; index < count; ++index) {
        entries.push_back(Object(*row.entry, bytes + index * row.entry->size));
      }
      return entries;
    }
    case Field::Kind::Skipped:
      break;
  }
  return nullptr;
}

Json Object(const RecordLayout& layout, const uint8_t* record) {
  Json object = Json::object();
  for (const Field& row : layout.rows) {
    if (row.kind != Field::Kind::Skipped) object[row.name] = Value(row, record);
  }
  return object;
}

// All ASCII, so that a JSON document is as harmless to a terminal as a table. Text from the kernel
// need not be UTF-8: what is not becomes the replacement character.
std::string Document(const Json& value) {
  return value.dump(-1, ' ', true, Json::error_handler_t::replace) + "\n";
}

std::string Table(std::span<const Field> columns,
                  const std::vector<std::vector<std::string>>& lines) {
  std::vector<std::size_t> widths;
  std::vector<std::string> header;
  for (const Field& column : columns) {
    std::size_t width = std::strlen(column.name);
    for (const auto& line : lines) width = std::max(width, line[widths.size()].size());
    widths.push_back(width);
    header.emplace_back(column.name);
  }
  std::string text;
  const auto append = [&](const std::vector<std::string>& line) {
    std::string padded;
    for (std::size_t index = 0; index < line.size(); ++index) {
      const Field& column = columns[index];
      const bool right = column.kind == Field::Kind::Number && column.elements == 1;
      if (index > 0) padded += "  ";
      padded += right ? fmt::format("{:>{}}", line[index], widths[index])
                      : fmt::format("{:<{}}", line[index], widths[index]);
    }
    padded.erase(padded.find_last_not_of(' ') + 1);
    text += padded + "\n";
  };
  append(header);
  for (const auto& line : lines) append(line);
  return text;
}

std::string Cell(const Json& value) {
  std::string text;
  if (value.is_string()) {
    text = Escaped(value.get_ref<const std::string&>());
  } else if (value.is_array()) {
    for (const Json& element : value) text += (text.empty() ? "" : " ") + Cell(element);
  } else if (value.is_object()) {
    for (const auto& [name, member] : value.items()) {
      text += fmt::format("{}{}={}", text.empty() ? "" : " ", name, Cell(member));
    }
    return "{" + text + "}";
  } else {
    text = value.dump();
  }
  // Something must stand in each column, or the eye takes one column for the next.
  return text.empty() ? "-" : text;
}

// Records are little-endian, whatever the width of their numbers.
uint64_t NumberAt(const uint8_t* bytes, uint32_t width) {
  uint64_t value = 0;
  for (uint32_t index = width; index > 0; --index) value = value << 8 | bytes[index - 1];
  return value;
}

std::string Hex(std::span<const uint8_t> bytes, std::string_view separator) {
  return fmt::format("{:02x}", fmt::join(bytes, separator));
}

}  // namespace

}  // namespace vdrctl
