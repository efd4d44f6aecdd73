#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

// What the input of each command means: a reading of the protocol of its own, which is never the
// library's, so that a wrong offset there can't agree with itself.
namespace vdrsim::requests {

// A name that can be the argument of a template.
struct Name {
  char text[32] = {};

  template <size_t Size>
  constexpr Name(const char (&literal)[Size]) {
    static_assert(Size <= sizeof text);
    std::ranges::copy(literal, text);
  }

  constexpr std::string_view view() const { return text; }
  constexpr bool operator==(const Name&) const = default;
};

// One field of a block.
struct Field {
  enum class Kind : uint8_t {
    Number,
    Signed,
    Text,      // a caller forces a terminator at the last byte
    OpenText,  // may fill all of its room
    Mac,
    Bytes,
  };

  std::string_view name{};
  Kind kind = Kind::Number;
  uint16_t offset = 0;
  uint16_t width = 0;
  bool isOne = false;  // the number 1 in every block, not an argument

  constexpr uint32_t End() const { return offset + uint32_t{width}; }
};

constexpr Field U8(const char* name, uint16_t offset) {
  return {name, Field::Kind::Number, offset, 1};
}
constexpr Field U16(const char* name, uint16_t offset) {
  return {name, Field::Kind::Number, offset, 2};
}
constexpr Field U32(const char* name, uint16_t offset) {
  return {name, Field::Kind::Number, offset, 4};
}
constexpr Field U64(const char* name, uint16_t offset) {
  return {name, Field::Kind::Number, offset, 8};
}
constexpr Field I32(const char* name, uint16_t offset) {
  return {name, Field::Kind::Signed, offset, 4};
}
constexpr Field One(const char* name, uint16_t offset, uint16_t width) {
  return {name, Field::Kind::Number, offset, width, true};
}
constexpr Field Text(const char* name, uint16_t offset, uint16_t width) {
  return {name, Field::Kind::Text, offset, width};
}
constexpr Field OpenText(const char* name, uint16_t offset, uint16_t width) {
  return {name, Field::Kind::OpenText, offset, width};
}
constexpr Field Mac(const char* name, uint16_t offset) {
  return {name, Field::Kind::Mac, offset, 6};
}
constexpr Field Bytes(const char* name, uint16_t offset, uint16_t width) {
  return {name, Field::Kind::Bytes, offset, width};
}

// The three shapes of input.
enum class Form : uint8_t { None, Scalar, Block };

constexpr uint32_t InputLength(Form form) {
  constexpr uint32_t kLengths[] = {0, 4, 968};
  return kLengths[static_cast<size_t>(form)];
}

// What a command does to the datapath when it succeeds.
enum class Effect : uint8_t { Reads, Sets, Deletes };
using enum Effect;

// The room that callers give for the reply, in bytes. A command that changes something fills it.
struct Room {
  constexpr Room(uint32_t size, bool optional = false) : bytes(size), isOptional(optional) {}

  uint32_t bytes;
  bool isOptional;  // none at all will do as well
};

inline constexpr Room kResult{88, true};
inline constexpr Room kAnyRoom{0xffffffff};  // as much as the caller likes

// One command: what its code and its input mean.
struct Request {
  static constexpr size_t kMostFields = 12;

  // The fields are in order, none reaches into the next or beyond the block. A request with a
  // `variant` is meant when the number at that offset is not 0; another of the same code has none.
  constexpr Request(uint32_t command, Name function, Effect does, Form input,
                    std::initializer_list<Field> rows, Room reply, uint16_t variantOffset)
      : fieldCount(rows.size()),
        code(command),
        room(reply),
        variant(variantOffset),
        effect(does),
        form(input),
        name(function) {
    if (rows.size() > kMostFields) throw "more fields than there is room for";
    uint32_t end = 0;
    for (const Field& field : rows) {
      if (field.offset < end || field.width == 0) throw "the field overlaps the one before";
      end = field.End();
      if (end > InputLength(input)) throw "the field reaches beyond the input";
      if (std::ranges::count(rows, field.name, &Field::name) != 1) throw "a name is given twice";
    }
    std::ranges::copy(rows, all.begin());
  }

  constexpr Request(uint32_t command, Name function, Effect does, std::initializer_list<Field> rows,
                    Room reply = 0, uint16_t variantOffset = 0)
      : Request(command, function, does, Form::Block, rows, reply, variantOffset) {}

  // A number alone is a field as well.
  constexpr Request(uint32_t command, Name function, Effect does, Form input, Room reply = 0)
      : Request(command, function, does, input, {}, reply, 0) {
    if (input == Form::Scalar) all[fieldCount++] = U32("value", 0);
  }

  constexpr std::span<const Field> fields() const { return std::span(all).first(fieldCount); }

  constexpr bool Has(std::string_view field) const {
    return std::ranges::count(fields(), field, &Field::name) == 1;
  }

  std::array<Field, kMostFields> all{};
  size_t fieldCount;
  uint32_t code;
  Room room;
  uint16_t variant;
  Effect effect;
  Form form;
  Name name;  // of the library's function, without its prefix; a function can have two codes
};

}  // namespace vdrsim::requests
