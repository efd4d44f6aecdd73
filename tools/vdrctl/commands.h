#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <stdexcept>
#include <string_view>

#include "handler.h"
#include "parameter.h"
#include "reply.h"

namespace vdrctl {

// A list of few elements that lives in the row itself.
template <typename Type, std::size_t kMost>
struct Few {
  std::array<Type, kMost> elements{};
  std::size_t count = 0;

  constexpr Few(std::initializer_list<Type> given) : count(given.size()) {
    if (given.size() > kMost) throw std::logic_error("too many elements for a row");
    std::copy(given.begin(), given.end(), elements.begin());
  }
  constexpr void Add(const Type& element) {
    if (count == kMost) throw std::logic_error("too many elements for a row");
    elements[count++] = element;
  }
  constexpr std::span<const Type> All() const { return std::span(elements).first(count); }
};

// One row of the table of commands, which drives parsing, help, completion and all other lists of
// them. The compilation ends when the handler does not take just these parameters in this order.
struct Command {
  std::string_view object;        // one or several words: "lif", "lif address"
  std::string_view verb;          // empty for an object that is a command by itself
  const char* summary;            // without a full stop, as it stands in help
  Few<const char*, 2> functions;  // of the library, that it calls; none for what the tool does
  Few<uint32_t, 2> codes;         // of the device's commands that these send
  Few<Parameter, kMostParameters> parameters;
  Handler handler;
  Reply reply = {};

  constexpr Command(const char* itsObject, const char* itsVerb, const char* itsSummary,
                    std::initializer_list<const char*> itsFunctions,
                    std::initializer_list<uint32_t> itsCodes,
                    std::initializer_list<Parameter> itsParameters, Handler itsHandler,
                    Reply itsReply = {})
      : object(itsObject),
        verb(itsVerb ? itsVerb : std::string_view()),
        summary(itsSummary),
        functions(itsFunctions),
        codes(itsCodes),
        parameters(itsParameters),
        handler(itsHandler),
        reply(itsReply) {
    if (!handler.Takes(Parameters())) throw std::logic_error("parameters and handler differ");
    if (Deletes()) parameters.Add(kIfExists);
    if (!reply.columns.empty() && !HasRows(*reply.layouts.front(), reply.columns)) {
      throw std::logic_error("a column that the layout does not have");
    }
  }

  constexpr std::span<const Parameter> Parameters() const { return parameters.All(); }

  // A command that deletes takes one option more, which its handler never sees.
  constexpr bool Deletes() const { return verb == "delete"; }
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
extern const Family kLifFamily;
extern const Family kRouteFamily;
extern const Family kNeighbourFamily;
extern const Family kPolicyFamily;
extern const Family kBridgeFamily;
extern const Family kClusterFamily;
extern const Family kMappingFamily;
extern const Family kMulticastFamily;
extern const Family kServicesFamily;
extern const Family kToolFamily;

// In the order of help.
inline constexpr const Family* kFamilies[] = {
    &kInstanceFamily,  &kSettingsFamily,  &kLifFamily,      &kRouteFamily,
    &kNeighbourFamily, &kPolicyFamily,    &kBridgeFamily,   &kClusterFamily,
    &kMappingFamily,   &kMulticastFamily, &kServicesFamily, &kToolFamily,
};

// Other words for a verb, exact ones: no command has both.
struct Synonym {
  const char* word;
  const char* verb;
};
inline constexpr Synonym kSynonyms[] = {
    {"ls", "list"},    {"get", "show"},   {"show", "get"},  {"add", "create"},
    {"create", "add"}, {"del", "delete"}, {"rm", "delete"},
};

}  // namespace vdrctl
