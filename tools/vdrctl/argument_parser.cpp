#include "argument_parser.h"

#include <fmt/format.h>

#include "common/escapes.h"
#include "common/suggestion.h"
#include "globals.h"
#include "output/text.h"
#include "values.h"

namespace vdrctl {

std::optional<Invocation> ArgumentParser::Parse(Arguments words) {
  invocation_.command = &command_;
  values_.resize(command_.Parameters().size());
  bool onlyArguments = false;
  while (!words.empty()) {
    const std::string_view word = words.front();
    if (!onlyArguments && word == "--") {
      onlyArguments = true;
    } else if (!onlyArguments && word.size() > 1 && word.front() == '-') {
      TakeOption(words);
    } else if (!onlyArguments && word == "help") {
      return std::nullopt;
    } else {
      TakeArgument(word);
    }
    words = words.subspan(1);
  }
  CheckWhatIsMissing();
  invocation_.globals.json = json_.has_value();
  invocation_.globals.noHeader = noHeader_.has_value();
  invocation_.given = Given(values_);
  return std::move(invocation_);
}

// An option of the command, or of all commands; NULL for neither.
ArgumentParser::Option ArgumentParser::FindOption(std::string_view name) {
  const auto parameters = command_.Parameters();
  for (std::size_t index = 0; index < parameters.size(); ++index) {
    if (parameters[index].IsCalled(name)) return {&parameters[index], &values_[index]};
  }
  for (const Global& global : kGlobals) {
    const bool isShort = global.shortName && name == global.shortName;
    if (!isShort && !global.parameter.IsCalled(name)) continue;
    return {&global.parameter, &GlobalPlace(global.parameter.LongName())};
  }
  return {};
}

// Takes the word behind the option too when that is its value.
void ArgumentParser::TakeOption(Arguments& words) {
  const std::string_view word = words.front();
  const std::size_t equals = word.find('=');
  const std::string_view name = word.substr(0, equals);
  const auto [parameter, place] = FindOption(name);
  if (!parameter) {
    // A number below zero is no option; what is wrong with it is for its parameter to say.
    if (ParseNumber(name.substr(1))) return TakeArgument(word);
    RefuseOption(name);
  }
  if (place->has_value()) Refuse(fmt::format("'{}' is given twice", Escaped(name)));
  if (parameter->IsFlag()) {
    if (equals != std::string::npos) Refuse(fmt::format("'{}' takes no value", name));
    *place = "on";
    return;
  }
  if (equals != std::string::npos) return Store(*parameter, *place, word.substr(equals + 1));
  if (words.size() < 2) Refuse(fmt::format("{}: a value is missing", parameter->name));
  words = words.subspan(1);
  Store(*parameter, *place, words.front());
}

void ArgumentParser::TakeArgument(std::string_view word) {
  const auto parameters = command_.Parameters();
  while (nextArgument_ < parameters.size() && parameters[nextArgument_].IsOption()) ++nextArgument_;
  if (nextArgument_ == parameters.size()) {
    Refuse(fmt::format("'{}' takes no further argument: '{}'", understood_, Escaped(word)));
  }
  Store(parameters[nextArgument_], values_[nextArgument_], word);
  ++nextArgument_;
}

void ArgumentParser::Store(const Parameter& parameter, std::optional<std::string>& place,
                           std::string_view value) const {
  const std::string complaint = Complaint(parameter, value);
  if (!complaint.empty()) Refuse(fmt::format("{}: {}", parameter.LongName(), complaint));
  const bool hasEscapes = parameter.kind == Parameter::Kind::Text;
  place = hasEscapes ? *tools::Unescaped(value) : std::string(value);
}

void ArgumentParser::CheckWhatIsMissing() const {
  const auto parameters = command_.Parameters();
  for (std::size_t index = 0; index < parameters.size(); ++index) {
    const Parameter& parameter = parameters[index];
    const bool given = values_[index].has_value();
    if (!given && !parameter.optional) Refuse(fmt::format("{} is required", parameter.LongName()));
    if (!given || !parameter.excludes) continue;
    for (std::size_t other = 0; other < index; ++other) {
      if (parameters[other].LongName() == parameter.excludes && values_[other].has_value()) {
        Refuse(fmt::format("{} excludes {}", parameter.excludes, parameter.LongName()));
      }
    }
  }
}

std::optional<std::string>& ArgumentParser::GlobalPlace(std::string_view name) {
  GlobalValues& globals = invocation_.globals;
  if (name == "--json") return json_;
  if (name == "--no-header") return noHeader_;
  if (name == "--columns") return globals.columns;
  if (name == "--sort") return globals.sort;
  if (name == "--names") return globals.names;
  return globals.watch;
}

void ArgumentParser::RefuseOption(std::string_view name) const {
  std::vector<std::string_view> names;
  for (const Parameter& parameter : command_.Parameters()) {
    if (parameter.IsOption()) names.push_back(parameter.LongName());
  }
  for (const Global& global : kGlobals) names.push_back(global.parameter.LongName());
  Refuse(fmt::format("'{}' has no option '{}'{}", understood_, Escaped(name),
                     tools::Suggestion(name, names)));
}

void ArgumentParser::Refuse(const std::string& complaint) const {
  throw WrongUsage(complaint, understood_);
}

}  // namespace vdrctl
