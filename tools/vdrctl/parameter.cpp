#include "parameter.h"

#include <fmt/format.h>

#include <algorithm>

#include "common/escapes.h"
#include "output/text.h"
#include "values.h"

namespace vdrctl {

namespace {

std::string ComplaintOfText(const Parameter& parameter, std::string_view text) {
  const auto bytes = tools::Unescaped(text);
  if (!bytes) return "a backslash is written \\\\, and a byte \\xNN, from \\x01 to \\xff";
  if (parameter.accepts && !parameter.accepts(*bytes)) {
    return fmt::format("'{}' is not {}", Escaped(text), parameter.form);
  }
  if (bytes->size() <= parameter.limit) return "";
  return fmt::format("the text is {} bytes long, and at most {} are taken", bytes->size(),
                     parameter.limit);
}

std::string ComplaintOfNumber(const Parameter& parameter, std::string_view text) {
  const auto number = ParseNumber(text);
  if (number && *number <= parameter.limit) return "";
  return fmt::format("'{}' is not a number from 0 to {}", Escaped(text), parameter.limit);
}

bool IsChoice(std::string_view choices, std::string_view word) {
  const auto words = SplitAt(choices, '|');
  return std::ranges::find(words, word) != words.end();
}

std::string Unless(bool good, std::string_view text, std::string_view what) {
  return good ? "" : fmt::format("'{}' is not {}", Escaped(text), what);
}

}  // namespace

const char* KindName(Parameter::Kind kind) {
  static constexpr const char* kNames[] = {"text",    "number", "ipv4",   "prefix", "ipv6",
                                           "prefix6", "mac",    "switch", "file",   "choice"};
  return kNames[static_cast<std::size_t>(kind)];
}

std::string Complaint(const Parameter& parameter, std::string_view text) {
  using Kind = Parameter::Kind;
  switch (parameter.kind) {
    case Kind::Text:
      return ComplaintOfText(parameter, text);
    case Kind::Number:
      return ComplaintOfNumber(parameter, text);
    case Kind::Ipv4:
      return Unless(ParseIpv4(text).has_value(), text, "an IPv4 address such as 10.0.0.1");
    case Kind::Prefix:
      return Unless(ParsePrefix(text).has_value(), text,
                    "an IPv4 prefix such as 10.0.0.0/24 or 10.0.0.0/255.255.255.0");
    case Kind::Ipv6:
      return Unless(ParseIpv6(text).has_value(), text, "an IPv6 address such as 2001:db8::1");
    case Kind::Prefix6:
      return Unless(ParsePrefix6(text).has_value(), text, "an IPv6 prefix such as 2001:db8::/32");
    case Kind::Mac:
      return Unless(ParseMac(text).has_value(), text,
                    "a hardware address such as 02:00:5e:10:ab:ff");
    case Kind::Switch:
      return Unless(ParseSwitch(text).has_value(), text, "on or off");
    case Kind::Choice:
      return Unless(IsChoice(parameter.choices, text), text,
                    fmt::format("one of {}", parameter.choices));
    case Kind::File:
      return text.empty() ? "the name of a file is missing" : "";
  }
  return "";
}

}  // namespace vdrctl
