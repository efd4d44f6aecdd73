#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <span>
#include <string_view>

#include "requests/requests.h"

namespace vdrsim {

using MacAddress = std::array<std::byte, 6>;

// The input of one command, of the length that its form demands. Its fields are read by their names
// in the table of requests; a name that the request does not have, or that is a field of another
// kind, does not compile.
template <size_t Index>
class InputOf {
 public:
  static constexpr const requests::Request& kRequest = *requests::kRequests[Index];

  // A field of one of two kinds, and of a certain width where one is named.
  template <requests::Field::Kind Kind, requests::Field::Kind OrKind = Kind, size_t Width = 0>
  struct Row {
    consteval Row(const char* name) : offset(Find(name).offset), width(Find(name).width) {}
    size_t offset;
    size_t width;

   private:
    static consteval const requests::Field& Find(std::string_view name) {
      for (const requests::Field& field : kRequest.fields()) {
        if (field.name == name && (field.kind == Kind || field.kind == OrKind) &&
            (Width == 0 || field.width == Width)) {
          return field;
        }
      }
      throw "the request has no field of this name, kind and width";
    }
  };
  template <size_t Width>
  using NumberRow = Row<requests::Field::Kind::Number, requests::Field::Kind::Number, Width>;
  using TextRow = Row<requests::Field::Kind::Text, requests::Field::Kind::OpenText>;

  explicit InputOf(std::span<const std::byte> bytes) : bytes_(bytes) {}

  uint8_t Byte(NumberRow<1> row) const { return At<uint8_t>(row.offset); }
  uint16_t Half(NumberRow<2> row) const { return At<uint16_t>(row.offset); }
  uint32_t Word(NumberRow<4> row) const { return At<uint32_t>(row.offset); }
  uint64_t Quad(NumberRow<8> row) const { return At<uint64_t>(row.offset); }
  int32_t Signed(Row<requests::Field::Kind::Signed> row) const { return At<int32_t>(row.offset); }
  MacAddress Mac(Row<requests::Field::Kind::Mac> row) const { return At<MacAddress>(row.offset); }

  std::span<const std::byte> Bytes(Row<requests::Field::Kind::Bytes> row) const {
    return bytes_.subspan(row.offset, row.width);
  }

  // The characters up to the terminator, or all of the field where there is none.
  std::string_view Text(TextRow row) const {
    const auto field = bytes_.subspan(row.offset, row.width);
    const char* first = reinterpret_cast<const char*>(field.data());
    return {first, strnlen(first, field.size())};
  }

  // A name that need not be given, and is empty then.
  std::optional<std::string_view> OptionalName(TextRow row) const {
    return Text(row).empty() ? std::string_view() : ObjectName(row);
  }

  // The text that says which object is meant. An empty one names nothing, and one without
  // terminator can't come from a well-behaved caller.
  std::optional<std::string_view> ObjectName(TextRow row) const {
    const std::string_view name = Text(row);
    if (name.empty() || name.size() == row.width) return std::nullopt;
    return name;
  }

 private:
  template <typename Value>
  Value At(size_t offset) const {
    Value value{};
    std::memcpy(&value, bytes_.subspan(offset, sizeof value).data(), sizeof value);
    return value;
  }

  std::span<const std::byte> bytes_;
};

// The input of the command of this name. A function of two codes needs its code as well.
template <requests::Name Function, uint32_t Code = std::numeric_limits<uint32_t>::max()>
using Input = InputOf<requests::IndexOf(Function, Code)>;

}  // namespace vdrsim
