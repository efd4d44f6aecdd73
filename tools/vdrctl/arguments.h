#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <type_traits>

#include "given.h"
#include "parameter.h"
#include "values.h"

namespace vdrctl {

// How a value becomes an argument of a given type, and which parameters fit it. An absent value is
// NULL or 0, as the library has it, or an empty std::optional.
//
// A number fits a parameter of its own width. A narrower parameter fits only where a row says so,
// with a limit that is not that of another type.
template <typename Type>
struct Argument {
  static_assert(std::is_integral_v<Type>);
  using Kind = Parameter::Kind;

  static constexpr bool Fits(const Parameter& parameter) {
    if (parameter.kind == Kind::Ipv4) return std::is_same_v<Type, uint32_t>;
    if (parameter.kind == Kind::Switch) return sizeof(Type) == 1;
    return parameter.kind == Kind::Number && parameter.limit <= kLargest &&
           (parameter.limit == kLargest || !IsOfAnotherType(parameter.limit));
  }

  static Type From(const Parameter& parameter, const char* value) {
    if (!value) return Type{};
    if (parameter.kind == Kind::Ipv4) return static_cast<Type>(*ParseIpv4(value));
    if (parameter.kind == Kind::Switch) return static_cast<Type>(*ParseSwitch(value));
    return static_cast<Type>(*ParseNumber(value));
  }

 private:
  static constexpr uint64_t kLargest = std::numeric_limits<Type>::max();
  static constexpr bool IsOfAnotherType(uint64_t limit) {
    return limit == UINT8_MAX || limit == UINT16_MAX || limit == UINT32_MAX || limit == INT32_MAX;
  }
};

// A type whose values one reader makes of one kind of parameter.
template <typename Type, Parameter::Kind kKind, auto kParse>
struct ParsedArgument {
  static constexpr bool Fits(const Parameter& parameter) { return parameter.kind == kKind; }
  static Type From(const Parameter& /*parameter*/, const char* value) {
    return value ? *kParse(value) : Type{};
  }
};
template <>
struct Argument<Prefix> : ParsedArgument<Prefix, Parameter::Kind::Prefix, ParsePrefix> {};
template <>
struct Argument<Ipv6> : ParsedArgument<Ipv6, Parameter::Kind::Ipv6, ParseIpv6> {};
template <>
struct Argument<Prefix6> : ParsedArgument<Prefix6, Parameter::Kind::Prefix6, ParsePrefix6> {};
template <>
struct Argument<MacValue> : ParsedArgument<MacValue, Parameter::Kind::Mac, ParseMac> {};

template <typename Type>
struct Argument<std::optional<Type>> {
  static constexpr bool Fits(const Parameter& parameter) {
    return parameter.optional && Argument<Type>::Fits(parameter);
  }
  static std::optional<Type> From(const Parameter& parameter, const char* value) {
    return value ? std::optional(Argument<Type>::From(parameter, value)) : std::nullopt;
  }
};

// A text as it was given, a file, a choice, or a hardware address in the spelling of the protocol.
template <>
struct Argument<const char*> {
  using Kind = Parameter::Kind;
  static constexpr bool Fits(const Parameter& parameter) {
    return parameter.kind == Kind::Text || parameter.kind == Kind::File ||
           parameter.kind == Kind::Choice;
  }
  static const char* From(const Parameter& /*parameter*/, const char* value) { return value; }
};

// The address itself while the command runs: the library takes it by pointer.
struct MacArgument {
  std::optional<MacValue> mac;
  operator const MacValue*() const { return mac ? &*mac : nullptr; }
};
template <>
struct Argument<const MacValue*> {
  static constexpr bool Fits(const Parameter& parameter) {
    return parameter.kind == Parameter::Kind::Mac;
  }
  static MacArgument From(const Parameter& /*parameter*/, const char* value) {
    return {value ? ParseMac(value) : std::nullopt};
  }
};

}  // namespace vdrctl
