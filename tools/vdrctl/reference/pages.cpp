#include "reference/pages.h"

#include <fmt/format.h>

#include <string>
#include <string_view>

#include "command_words.h"
#include "globals.h"
#include "help.h"
#include "output/output.h"

namespace vdrctl {

namespace {

std::string LimitOf(const Parameter& parameter) {
  switch (parameter.kind) {
    case Parameter::Kind::Text:
      return fmt::format("text of at most {} bytes", parameter.limit);
    case Parameter::Kind::Number:
      return fmt::format("number up to {}", parameter.limit);
    case Parameter::Kind::Switch:
      return parameter.IsFlag() ? "switch" : "on or off";
    case Parameter::Kind::Choice:
      return parameter.choices;
    default:
      return KindName(parameter.kind);
  }
}

std::string MeaningOf(const Parameter& parameter) {
  std::string meaning = fmt::format("{} ({})", parameter.meaning, LimitOf(parameter));
  if (parameter.excludes) meaning += fmt::format("; not with {}", parameter.excludes);
  return meaning;
}

std::string FunctionsOf(const Command& command) {
  return fmt::format("{}", fmt::join(command.functions.All(), ", "));
}

// A text that nroff must not read.
std::string Plain(std::string_view text) {
  std::string plain;
  for (const char character : text) {
    if (character == '\\') {
      plain += "\\e";
    } else if (character == '-') {
      plain += "\\-";
    } else if (character == '\'') {
      plain += "\\(aq";
    } else {
      plain += character;
    }
  }
  return plain.starts_with('.') ? "\\&" + plain : plain;
}

std::string ManCommand(const Command& command) {
  const std::string usage = UsageLine(command);
  std::string text = fmt::format(".TP\n.B {}\n{}.\n", Plain(usage), Plain(command.summary));
  if (!command.functions.All().empty()) {
    text += fmt::format("Calls\n.BR {} .\n", Plain(FunctionsOf(command)));
  }
  for (const Parameter& parameter : command.Parameters()) {
    text += fmt::format(".RS\n.TP\n.I {}\n{}\n.RE\n", Plain(parameter.name),
                        Plain(MeaningOf(parameter)));
  }
  return text;
}

constexpr const char* kManHead = R"(.\" Made by `vdrctl reference man` from the table of commands.
.TH VDRCTL 1 "" "vdrzax" "User commands"
.SH NAME
vdrctl \- control the virtual distributed router of this host
.SH SYNOPSIS
.B vdrctl
.RI [ OPTIONS ] " OBJECT VERB " [ ARGUMENTS ]
.SH DESCRIPTION
Each command carries out one function of
.B libvdrzax
on the datapath of this host, and prints what the kernel says: tables, or JSON with
.BR \-\-json .
.SH OPTIONS
)";

std::string ManTail() {
  return R"(.SH EXIT STATUS
.TP
0
The command succeeded.
.TP
1
The command failed.
.TP
2
The command line was not understood.
.TP
3
There is no device: it is absent, another kind of file, or not permitted.
.SH ENVIRONMENT
.TP
.B USE_UPGRADE_DEV
When it exists, with any value, commands go to the upgrade node.
.TP
.B XDG_CONFIG_HOME
Where
.I vdrzax/names.json
is looked for.
.TP
.B NO_COLOR
Is respected: nothing is ever coloured.
.SH FILES
.TP
.I /etc/vdrzax/names.json
Names of fields on this host.
.SH SEE ALSO
.BR vdrsim (1)
)";
}

std::string ManPage() {
  std::string text = kManHead;
  for (const Global& global : kGlobals) {
    const std::string name = global.shortName
                                 ? fmt::format("{}, {}", global.shortName, global.parameter.name)
                                 : global.parameter.name;
    text += fmt::format(".TP\n.B {}\n{}\n", Plain(name), Plain(global.parameter.meaning));
  }
  text += ".SH COMMANDS\n";
  std::string_view object;
  ForEachCommand([&](const Command& command) {
    const std::string_view summary = SummaryOfObject(command.object);
    if (object != command.object && !summary.empty()) {
      text += fmt::format(".SS {}\n{}.\n", Plain(command.object), Plain(summary));
    }
    object = command.object;
    text += ManCommand(command);
  });
  return text + ManTail();
}

std::string Cell(std::string_view text) {
  std::string cell;
  for (const char character : text) cell += character == '|' ? "\\|" : std::string(1, character);
  return cell;
}

std::string MarkdownCommand(const Command& command) {
  std::string text = fmt::format("\n### `{}`\n\n{}.", FullName(command), command.summary);
  if (!command.functions.All().empty()) text += fmt::format(" Calls `{}`", FunctionsOf(command));
  if (!command.codes.All().empty()) {
    text += fmt::format(", code {}", fmt::join(command.codes.All(), ", "));
  }
  text += command.functions.All().empty() ? "\n" : ".\n";
  text += fmt::format("\n    {}\n", UsageLine(command));
  if (command.Parameters().empty()) return text;
  text += "\n| Parameter | Meaning |\n|---|---|\n";
  for (const Parameter& parameter : command.Parameters()) {
    text += fmt::format("| `{}` | {} |\n", parameter.name, Cell(MeaningOf(parameter)));
  }
  return text;
}

std::string MarkdownPage() {
  std::string text =
      "# The commands of vdrctl\n\n"
      "Made by `vdrctl reference markdown` from the table of commands; a test compares the two.\n\n"
      "## Options of all commands\n\n| Option | Meaning |\n|---|---|\n";
  for (const Global& global : kGlobals) {
    const std::string shortName = global.shortName ? fmt::format("`{}`, ", global.shortName) : "";
    text += fmt::format("| {}`{}` | {} |\n", shortName, global.parameter.name,
                        Cell(global.parameter.meaning));
  }
  text += "\n## Other words for verbs\n\n| Word | Verb |\n|---|---|\n";
  for (const Synonym& synonym : kSynonyms) {
    text += fmt::format("| `{}` | `{}` |\n", synonym.word, synonym.verb);
  }
  text += "\n## Commands\n";
  ForEachCommand([&](const Command& command) { text += MarkdownCommand(command); });
  return text;
}

}  // namespace

int PrintReference(Output& out, const char* form) {
  out.Text(std::string_view(form) == "man" ? ManPage() : MarkdownPage());
  return 0;
}

}  // namespace vdrctl
