#include "state/forms.h"

#include <arpa/inet.h>

#include <charconv>
#include <nlohmann/json.hpp>

#include "common/escapes.h"
#include "datapath/mac_text.h"

namespace vdrsim::forms {

namespace {

using shape::OddNumber;
using shape::Unfit;

// What stands where something else was expected.
std::string Words(const Token& token) {
  struct Name {
    std::string operator()(std::nullptr_t) const { return "null"; }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(uint64_t value) const { return std::to_string(value); }
    std::string operator()(int64_t value) const { return std::to_string(value); }
    std::string operator()(OddNumber number) const { return tools::Printable(number.digits); }
    std::string operator()(std::string_view text) const {
      constexpr size_t kMost = 40;
      return fmt::format("'{}'{}", tools::Printable(text.substr(0, kMost)),
                         text.size() > kMost ? "..." : "");
    }
  };
  return std::visit(Name{}, token);
}

[[noreturn]] void Refuse(const Token& token, std::string_view what) {
  throw Unfit(fmt::format("{} is not {}", Words(token), what));
}

std::string_view TextOf(const Token& token, std::string_view what) {
  const auto* text = std::get_if<std::string_view>(&token);
  if (!text) Refuse(token, what);
  return *text;
}

bool IsNumber(const Token& token) {
  return !std::holds_alternative<std::nullptr_t>(token) && !std::holds_alternative<bool>(token) &&
         !std::holds_alternative<std::string_view>(token);
}

bool IsPlain(std::string_view text) {
  return std::ranges::all_of(text, [](char character) {
    return character >= ' ' && character <= '~' && character != '"' && character != '\\';
  });
}

bool ParseIp(int family, std::string_view text, void* address) {
  return text.find('\0') == std::string_view::npos &&
         inet_pton(family, std::string(text).c_str(), address) == 1;
}

void PutIp(int family, const void* address, std::string& out) {
  std::array<char, INET6_ADDRSTRLEN> text{};
  inet_ntop(family, address, text.data(), text.size());
  out.append("\"").append(text.data()).append("\"");
}

}  // namespace

uint64_t TakeNumber(const Token& token, uint64_t most) {
  if (!IsNumber(token)) Refuse(token, "a number");
  const auto* number = std::get_if<uint64_t>(&token);
  if (!number || *number > most) Refuse(token, fmt::format("a whole number of 0 to {}", most));
  return *number;
}

int64_t TakeSigned(const Token& token, int64_t least, int64_t most) {
  if (!IsNumber(token)) Refuse(token, "a number");
  const auto* number = std::get_if<uint64_t>(&token);
  if (number && *number <= static_cast<uint64_t>(most)) return static_cast<int64_t>(*number);
  const auto* negative = std::get_if<int64_t>(&token);
  if (negative && *negative >= least) return *negative;
  Refuse(token, fmt::format("a whole number of {} to {}", least, most));
}

std::string TakeText(const Token& token, size_t room) {
  const std::string_view text = TextOf(token, "a text");
  const auto bytes = tools::Unescaped(text);
  if (!bytes) {
    throw Unfit(fmt::format(
        "{}: a backslash is written \\\\, and a byte \\xNN, from \\x01 to \\xff", Words(token)));
  }
  if (bytes->find('\0') != std::string::npos) throw Unfit("a text can't hold a byte of zero");
  if (bytes->size() > room) {
    throw Unfit(fmt::format("{} has {} bytes, and there is room for {}", Words(token),
                            bytes->size(), room));
  }
  return *bytes;
}

// Backslashes are doubled before the document doubles them again, so that a backslash that was there
// is told from one that was made.
void PutText(std::string_view text, std::string& out) {
  if (IsPlain(text)) {
    out.append("\"").append(text).append("\"");
    return;
  }
  const auto dump = [](std::string_view characters) {
    return nlohmann::json(characters).dump(-1, ' ', true);
  };
  try {
    out += dump(tools::BackslashesDoubled(text));
  } catch (const nlohmann::json::type_error&) {
    out += dump(tools::Printable(text));
  }
}

void RefuseEmptyName(std::string_view name) {
  if (name.empty()) throw Unfit("a name can't be empty");
}

void TakeBytes(const Token& token, std::span<std::byte> bytes) {
  const std::string what = fmt::format("{} bytes in hexadecimal", bytes.size());
  const std::string_view text = TextOf(token, what);
  if (text.size() != 2 * bytes.size()) Refuse(token, what);
  for (size_t index = 0; index < bytes.size(); ++index) {
    const char* const digits = text.data() + 2 * index;
    uint8_t value = 0;
    if (std::from_chars(digits, digits + 2, value, 16).ptr != digits + 2) Refuse(token, what);
    bytes[index] = std::byte{value};
  }
}

void PutBytes(std::span<const std::byte> bytes, std::string& out) {
  out += '"';
  for (const std::byte byte : bytes) fmt::format_to(std::back_inserter(out), "{:02x}", byte);
  out += '"';
}

void Truth::Take(const Token& token, bool& value) {
  const auto* truth = std::get_if<bool>(&token);
  if (!truth) Refuse(token, "true or false");
  value = *truth;
}

MacAddress TakeMac(const Token& token) {
  constexpr const char* kWhat = "a hardware address such as 02:00:5e:10:ab:ff";
  const auto address = ParseMac(TextOf(token, kWhat));
  if (!address) Refuse(token, kWhat);
  return *address;
}

void PutMac(const MacAddress& address, std::string& out) {
  fmt::format_to(std::back_inserter(out), "\"{:02x}\"", fmt::join(address, ":"));
}

std::string Mac::Schema() {
  return R"("type": "string", "pattern": "^[0-9A-Fa-f]{2}([:-][0-9A-Fa-f]{2}){5}$")";
}

Ipv4 TakeIpv4(const Token& token) {
  constexpr const char* kWhat = "an IPv4 address";
  Ipv4 address{};
  if (!ParseIp(AF_INET, TextOf(token, kWhat), address.data())) Refuse(token, kWhat);
  return address;
}

void PutIpv4(const Ipv4& address, std::string& out) { PutIp(AF_INET, address.data(), out); }

IpAddress TakeIpv6(const Token& token) {
  constexpr const char* kWhat = "an IPv6 address";
  IpAddress address{};
  if (!ParseIp(AF_INET6, TextOf(token, kWhat), address.data())) Refuse(token, kWhat);
  return address;
}

void PutIpv6(const IpAddress& address, std::string& out) { PutIp(AF_INET6, address.data(), out); }

void LongIpv4::Put(const Value& value, std::string& out) { PutIp(AF_INET, value.data(), out); }

void LongIpv4::Take(const Token& token, Value& value) {
  value = IpAddressOf(WordOf(TakeIpv4(token)), 0);
}

std::string IpSchema(bool takesIpv4, bool takesIpv6) {
  constexpr const char* kIpv4 = R"("type": "string", "format": "ipv4")";
  constexpr const char* kIpv6 = R"("type": "string", "format": "ipv6")";
  if (takesIpv4 && takesIpv6) {
    return fmt::format(R"("anyOf": [{{{}}}, {{{}}}])", kIpv4, kIpv6);
  }
  return takesIpv4 ? kIpv4 : kIpv6;
}

}  // namespace vdrsim::forms
