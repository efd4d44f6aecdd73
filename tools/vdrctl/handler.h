#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "output.h"
#include "parameter.h"

namespace vdrctl {

// What the operator gave for each parameter of a row. Every text was found good before.
using Values = std::span<const std::optional<std::string>>;

// How a value becomes an argument of a given type, and which parameters fit it. An absent value is
// NULL or 0, as the library has it, or an empty std::optional.
template <typename Type>
struct Argument {
  static constexpr Parameter::Kind kKind = Parameter::Kind::Number;
  static constexpr uint64_t kLimit = std::numeric_limits<Type>::max();
  static Type From(const std::optional<std::string>& value) {
    return value ? static_cast<Type>(*ParseNumber(*value)) : Type{};
  }
};

template <typename Type>
struct Argument<std::optional<Type>> : Argument<Type> {
  static std::optional<Type> From(const std::optional<std::string>& value) {
    return value ? std::optional(Argument<Type>::From(value)) : std::nullopt;
  }
};

template <>
struct Argument<const char*> {
  static constexpr Parameter::Kind kKind = Parameter::Kind::Text;
  static const char* From(const std::optional<std::string>& value) {
    return value ? value->c_str() : nullptr;
  }
};

template <typename Type>
constexpr bool Fits(const Parameter& parameter) {
  if (parameter.kind != Argument<Type>::kKind) return false;
  if constexpr (Argument<Type>::kKind == Parameter::Kind::Number) {
    return parameter.limit == Argument<Type>::kLimit;
  } else {
    return true;
  }
}

// A function that carries out a command, behind one signature. It returns 0, or -1 with errno set.
struct Handler {
  int (*call)(Output& out, Values values);
  bool (*takes)(std::span<const Parameter> parameters);

  constexpr bool Takes(std::span<const Parameter> parameters) const { return takes(parameters); }
};

template <typename... Types>
constexpr bool FitAll(std::span<const Parameter> parameters) {
  if (parameters.size() != sizeof...(Types)) return false;
  std::size_t next = 0;
  return (Fits<Types>(parameters[next++]) && ...);
}

template <auto kFunction, typename... Types>
constexpr Handler MakeHandler(int (*)(Types...)) {
  return {[](Output&, Values values) {
            return [&]<std::size_t... kIndex>(std::index_sequence<kIndex...>) {
              return kFunction(Argument<Types>::From(values[kIndex])...);
            }
            (std::index_sequence_for<Types...>{});
          },
          FitAll<Types...>};
}

template <auto kFunction, typename... Types>
constexpr Handler MakeHandler(int (*)(Output&, Types...)) {
  return {[](Output& out, Values values) {
            return [&]<std::size_t... kIndex>(std::index_sequence<kIndex...>) {
              return kFunction(out, Argument<Types>::From(values[kIndex])...);
            }
            (std::index_sequence_for<Types...>{});
          },
          FitAll<Types...>};
}

// Any function whose arguments are the parameters of its row: one of the library's that reads
// nothing, or one that prints and so takes an Output first.
template <auto kFunction>
inline constexpr Handler Run = MakeHandler<kFunction>(kFunction);

}  // namespace vdrctl
