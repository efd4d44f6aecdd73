#pragma once

#include <fmt/format.h>

#include <array>
#include <atomic>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>

#include "datapath/ip_address.h"
#include "requests/input.h"
#include "state/shape.h"

// The forms that single values have in a document.
namespace vdrsim::forms {

using shape::Token;

// What all forms of one kind share.
uint64_t TakeNumber(const Token& token, uint64_t most);
int64_t TakeSigned(const Token& token, int64_t least, int64_t most);
std::string TakeText(const Token& token, size_t room);
void PutText(std::string_view text, std::string& out);
void TakeBytes(const Token& token, std::span<std::byte> bytes);
void PutBytes(std::span<const std::byte> bytes, std::string& out);
MacAddress TakeMac(const Token& token);
void PutMac(const MacAddress& address, std::string& out);
Ipv4 TakeIpv4(const Token& token);
void PutIpv4(const Ipv4& address, std::string& out);
IpAddress TakeIpv6(const Token& token);
void PutIpv6(const IpAddress& address, std::string& out);
std::string IpSchema(bool takesIpv4, bool takesIpv6);

template <typename Number>
struct Numbers {
  using Value = Number;
  static constexpr Number kMost = std::numeric_limits<Number>::max();

  static void Put(const Number& value, std::string& out) { out += std::to_string(value); }
  static void Take(const Token& token, Number& value) {
    if constexpr (std::signed_integral<Number>) {
      value = static_cast<Number>(TakeSigned(token, std::numeric_limits<Number>::min(), kMost));
    } else {
      value = static_cast<Number>(TakeNumber(token, kMost));
    }
  }
  static std::string Describe() {
    return fmt::format("number of {} bits{}", 8 * sizeof(Number),
                       std::signed_integral<Number> ? ", signed" : "");
  }
  static std::string Schema() {
    return fmt::format(R"("type": "integer", "minimum": {}, "maximum": {})",
                       std::numeric_limits<Number>::min(), kMost);
  }
};

// A number with a limit of its own.
template <uint32_t Most>
struct NumberUpTo {
  using Value = uint32_t;

  static void Put(const uint32_t& value, std::string& out) { out += std::to_string(value); }
  static void Take(const Token& token, uint32_t& value) {
    value = static_cast<uint32_t>(TakeNumber(token, Most));
  }
  static std::string Describe() { return fmt::format("number of 0 to {}", Most); }
  static std::string Schema() {
    return fmt::format(R"("type": "integer", "minimum": 0, "maximum": {})", Most);
  }
};

struct Truth {
  using Value = bool;

  static void Put(const bool& value, std::string& out) { out += value ? "true" : "false"; }
  static void Take(const Token& token, bool& value);
  static std::string Describe() { return "true or false"; }
  static std::string Schema() { return R"("type": "boolean")"; }
};

// Bytes are not characters: what is no longer than its room as a text can be longer in the document,
// so a schema can't tell.
template <size_t Room>
struct Text {
  using Value = std::string;

  static void Put(const std::string& value, std::string& out) { PutText(value, out); }
  static void Take(const Token& token, std::string& value) { value = TakeText(token, Room); }
  static std::string Describe() { return fmt::format("text of at most {} bytes", Room); }
  static std::string Schema() { return R"("type": "string")"; }
};

// The name of an object.
template <size_t Room>
struct ObjectName : Text<Room> {
  static void Take(const Token& token, std::string& value);
  static std::string Describe() { return fmt::format("name of 1 to {} bytes", Room); }
  static std::string Schema() { return R"("type": "string", "minLength": 1)"; }
};

template <size_t Size>
struct Bytes {
  using Value = std::array<std::byte, Size>;

  static void Put(const Value& value, std::string& out) { PutBytes(value, out); }
  static void Take(const Token& token, Value& value) { TakeBytes(token, value); }
  static std::string Describe() { return fmt::format("{} bytes in hexadecimal", Size); }
  static std::string Schema() {
    return fmt::format(R"("type": "string", "pattern": "^[0-9A-Fa-f]{{{}}}$")", 2 * Size);
  }
};

struct Mac {
  using Value = MacAddress;

  static void Put(const Value& value, std::string& out) { PutMac(value, out); }
  static void Take(const Token& token, Value& value) { value = TakeMac(token); }
  static std::string Describe() { return "hardware address"; }
  static std::string Schema();
};

// Four bytes in network order, held as they are or as a word.
template <typename Held>
struct Ipv4As {
  using Value = Held;

  static void Put(const Held& value, std::string& out) { PutIpv4(std::bit_cast<Ipv4>(value), out); }
  static void Take(const Token& token, Held& value) {
    value = std::bit_cast<Held>(TakeIpv4(token));
  }
  static std::string Describe() { return "IPv4 address"; }
  static std::string Schema() { return IpSchema(true, false); }
};

// Sixteen bytes that begin with four of an IPv4 address.
struct LongIpv4 {
  using Value = IpAddress;

  static void Put(const Value& value, std::string& out);
  static void Take(const Token& token, Value& value);
  static std::string Describe() { return "IPv4 address"; }
  static std::string Schema() { return IpSchema(true, false); }
};

struct Ipv6 {
  using Value = IpAddress;

  static void Put(const Value& value, std::string& out) { PutIpv6(value, out); }
  static void Take(const Token& token, Value& value) { value = TakeIpv6(token); }
  static std::string Describe() { return "IPv6 address"; }
  static std::string Schema() { return IpSchema(false, true); }
};

// The form that a value has where none is named. The room of a text is that of its field.
template <typename Value, size_t Room>
struct Usual;
template <std::integral Value, size_t Room>
struct Usual<Value, Room> {
  using Form = Numbers<Value>;
};
template <size_t Room>
struct Usual<bool, Room> {
  using Form = Truth;
};
template <size_t Room>
struct Usual<std::string, Room> {
  using Form = Text<Room>;
};
template <size_t Size, size_t Room>
struct Usual<std::array<std::byte, Size>, Room> {
  using Form = Bytes<Size>;
};
template <size_t Room>
struct Usual<MacAddress, Room> {
  using Form = Mac;
};

// The same for whoever does not know the type of the value.
template <typename Form>
inline constexpr shape::Scalar kScalar{
    .put =
        [](const void* value, std::string& out) {
          Form::Put(*static_cast<const typename Form::Value*>(value), out);
        },
    .take = [](const Token& token,
               void* value) { Form::Take(token, *static_cast<typename Form::Value*>(value)); },
    .describe = Form::Describe,
    .schema = Form::Schema,
};

void RefuseEmptyName(std::string_view name);

template <size_t Room>
void ObjectName<Room>::Take(const Token& token, std::string& value) {
  Text<Room>::Take(token, value);
  RefuseEmptyName(value);
}

}  // namespace vdrsim::forms
