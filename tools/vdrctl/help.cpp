#include "help.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "command_words.h"
#include "globals.h"

namespace vdrctl {

namespace {

using Lines = std::vector<std::pair<std::string, std::string>>;

constexpr const char* kNotes =
    "Numbers are decimal, or hexadecimal after 0x; addresses are written as 10.0.0.1, "
    "10.0.0.0/24,\n"
    "2001:db8::1, 2001:db8::/32 and 02:00:5e:10:ab:ff. In a text \\xNN stands for a byte and \\\\ "
    "for\n"
    "a backslash, as tables print them. 'help' may stand where a verb or an argument may; behind "
    "'--'\n"
    "every word is an argument.\n"
    "\n"
    "The exit status is 0, 1 when the command failed, 2 when it was not understood, 3 when there "
    "is\n"
    "no device.\n"
    "\n"
    "Examples:\n"
    "  vdrctl instance set edge-1 --text blue --flag 1\n"
    "  vdrctl lif address set edge-1 uplink 10.0.0.1/24\n"
    "  vdrctl --json instance list\n"
    "  vdrctl lif list edge-1 --columns name,word128 --sort word128\n"
    "  vdrctl command 9 --capacity 4\n"
    "  vdrsim run -- vdrctl instance list\n";

// Two columns; a long left one has a line of its own.
std::string TwoColumns(const char* heading, const Lines& lines) {
  constexpr std::size_t kLeft = 32;
  if (lines.empty()) return "";
  std::string text = fmt::format("\n{}:\n", heading);
  for (const auto& [left, right] : lines) {
    if (left.size() > kLeft) {
      text += fmt::format("  {}\n  {:<{}}  {}\n", left, "", kLeft, right);
    } else {
      text += fmt::format("  {:<{}}  {}\n", left, kLeft, right);
    }
  }
  return text;
}

std::string NameOf(const Global& global) {
  return global.shortName ? fmt::format("{}, {}", global.shortName, global.parameter.name)
                          : fmt::format("    {}", global.parameter.name);
}

std::string GlobalOptions() {
  Lines lines;
  for (const Global& global : kGlobals)
    lines.emplace_back(NameOf(global), global.parameter.meaning);
  return TwoColumns("Options of all commands, anywhere", lines);
}

std::string MeaningOf(const Parameter& parameter) {
  std::string meaning = parameter.meaning;
  if (parameter.choices) meaning += fmt::format(": {}", parameter.choices);
  if (parameter.excludes) meaning += fmt::format("; not with {}", parameter.excludes);
  return meaning;
}

std::string HelpOfCommand(const Command& command) {
  Lines arguments;
  Lines options;
  for (const Parameter& parameter : command.Parameters()) {
    (parameter.IsOption() ? options : arguments).emplace_back(parameter.name, MeaningOf(parameter));
  }
  return fmt::format("Usage: {}\n\n{}.\n", UsageLine(command), command.summary) +
         TwoColumns("Arguments", arguments) + TwoColumns("Options", options) +
         "\n'vdrctl --help' tells what holds for all commands.\n";
}

std::string HelpOfObject(std::string_view words) {
  Lines lines;
  ForEachCommand([&](const Command& command) {
    if (BeginsWith(command.object, words)) {
      lines.emplace_back(UsageLine(command).substr(std::string_view("vdrctl ").size()),
                         command.summary);
    }
  });
  const std::string_view summary = SummaryOfObject(words);
  return fmt::format("Usage: vdrctl {} VERB ...\n\n{}{}", words, summary,
                     summary.empty() ? "" : ".\n") +
         TwoColumns("Commands", lines) +
         fmt::format("\n'vdrctl {} VERB --help' tells about one.\n", words);
}

std::string HelpOfAll() {
  std::string text =
      "Usage: vdrctl [OPTIONS] OBJECT VERB [ARGUMENTS]\n\n"
      "Controls the virtual distributed router of this host.\n";
  Lines lines;
  std::string_view object;
  ForEachCommand([&](const Command& command) {
    if (object != command.object) lines.emplace_back(std::string(command.object), "");
    object = command.object;
    std::string& verbs = lines.back().second;
    verbs += fmt::format("{}{}", verbs.empty() ? "" : ", ",
                         command.verb.empty() ? command.summary : command.verb);
  });
  return text + TwoColumns("Objects and their verbs", lines) +
         "\n'vdrctl OBJECT --help' and 'vdrctl OBJECT VERB --help' tell more.\n" + GlobalOptions() +
         "\n" + kNotes;
}

}  // namespace

std::string HelpText(std::string_view words) {
  if (words.empty()) return HelpOfAll();
  const Command* command = FindCommand(words);
  return command ? HelpOfCommand(*command) : HelpOfObject(words);
}

std::string UsageLine(const Command& command) {
  std::string line = "vdrctl " + FullName(command);
  for (const Parameter& parameter : command.Parameters()) {
    const std::string name = parameter.name;
    line += parameter.optional ? " [" + name + "]" : " " + name;
  }
  return line;
}

std::string_view SummaryOfObject(std::string_view words) {
  for (const Family* family : kFamilies) {
    for (const Object& object : family->objects) {
      if (words == object.words) return object.summary;
    }
  }
  return "";
}

}  // namespace vdrctl
