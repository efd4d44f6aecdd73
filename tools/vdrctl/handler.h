#pragma once

#include <cstddef>
#include <span>
#include <utility>

#include "arguments.h"

namespace vdrctl {

class Output;

// A function that carries out a command, behind one signature. It returns 0, or -1 with errno set.
// There is none where the program does it by itself.
struct Handler {
  int (*call)(Output& out, std::span<const Parameter> parameters, Values values);
  bool (*takes)(std::span<const Parameter> parameters);

  constexpr bool Takes(std::span<const Parameter> parameters) const { return takes(parameters); }
};

template <typename... Types>
constexpr bool FitAll(std::span<const Parameter> parameters) {
  if (parameters.size() != sizeof...(Types)) return false;
  std::size_t next = 0;
  return (Argument<Types>::Fits(parameters[next++]) && ...);
}

template <auto kFunction, typename... Types>
constexpr Handler MakeHandler(int (*)(Types...)) {
  return {[](Output&, std::span<const Parameter> parameters, Values values) {
            return [&]<std::size_t... kIndex>(std::index_sequence<kIndex...>) {
              return kFunction(Argument<Types>::From(parameters[kIndex], values[kIndex])...);
            }
            (std::index_sequence_for<Types...>{});
          },
          FitAll<Types...>};
}

template <auto kFunction, typename... Types>
constexpr Handler MakeHandler(int (*)(Output&, Types...)) {
  return {[](Output& out, std::span<const Parameter> parameters, Values values) {
            return [&]<std::size_t... kIndex>(std::index_sequence<kIndex...>) {
              return kFunction(out, Argument<Types>::From(parameters[kIndex], values[kIndex])...);
            }
            (std::index_sequence_for<Types...>{});
          },
          FitAll<Types...>};
}

// A command that the program carries out by itself, because it runs others.
template <typename... Types>
inline constexpr Handler kByTheProgram{nullptr, FitAll<Types...>};

// Any function or lambda whose arguments are the parameters of its row: one of the library's that
// reads nothing, or one that prints and so takes an Output first.
template <auto kFunction>
inline constexpr Handler Run = MakeHandler<kFunction>(+kFunction);

}  // namespace vdrctl
