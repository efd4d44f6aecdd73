#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <stdexcept>

#include "handler.h"
#include "parameter.h"

namespace vdrctl {

// One row of the table of commands, which drives parsing and help. The compilation ends when the
// handler does not take just these parameters in this order.
struct Command {
  static constexpr std::size_t kMostParameters = 12;

  const char* object;   // one or several words: "lif", "lif ip"
  const char* verb;     // nullptr for an object that is a command by itself
  const char* summary;  // without a full stop, as it stands in help
  Handler handler;
  std::array<Parameter, kMostParameters> parameters{};
  std::size_t parameterCount = 0;

  constexpr Command(const char* itsObject, const char* itsVerb, const char* itsSummary,
                    std::initializer_list<Parameter> itsParameters, Handler itsHandler)
      : object(itsObject), verb(itsVerb), summary(itsSummary), handler(itsHandler) {
    if (itsParameters.size() > kMostParameters) throw std::logic_error("too many parameters");
    std::copy(itsParameters.begin(), itsParameters.end(), parameters.begin());
    parameterCount = itsParameters.size();
    if (!handler.Takes(Parameters())) throw std::logic_error("parameters and handler differ");
  }

  constexpr std::span<const Parameter> Parameters() const {
    return std::span(parameters).first(parameterCount);
  }
};

// What help says of an object.
struct Object {
  const char* words;
  const char* summary;
};

// The commands of one file.
struct Family {
  std::span<const Object> objects;
  std::span<const Command> commands;
};

extern const Family kInstanceFamily;
extern const Family kSettingsFamily;
extern const Family kRawFamily;

// In the order of help.
inline constexpr const Family* kFamilies[] = {
    &kInstanceFamily,
    &kSettingsFamily,
    &kRawFamily,
};

}  // namespace vdrctl
