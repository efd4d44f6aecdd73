#include "reference/completion.h"

#include <fmt/format.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "command_words.h"
#include "globals.h"
#include "help.h"
#include "output/output.h"

namespace vdrctl {

namespace {

// Every beginning of a command's words, with the words that may follow.
std::vector<std::string> Beginnings() {
  std::vector<std::string> beginnings{""};
  std::set<std::string, std::less<>> seen;
  ForEachCommand([&](const Command& command) {
    const std::string_view object = command.object;
    for (std::size_t end = 0; end != std::string_view::npos;) {
      end = object.find(' ', end + 1);
      const std::string beginning(object.substr(0, end));
      const bool whole = beginning == object && command.verb.empty();
      if (!whole && seen.insert(beginning).second) beginnings.push_back(beginning);
    }
  });
  return beginnings;
}

std::string Joined(const std::vector<std::string_view>& words) {
  return fmt::format("{}", fmt::join(words, " "));
}

std::vector<std::string_view> OptionsOf(const Command& command) {
  std::vector<std::string_view> options;
  for (const Parameter& parameter : command.Parameters()) {
    if (parameter.IsOption()) options.push_back(parameter.LongName());
  }
  return options;
}

std::vector<std::string_view> GlobalOptions() {
  std::vector<std::string_view> options;
  for (const Global& global : kGlobals) options.push_back(global.parameter.LongName());
  return options;
}

// What the first parameter in its place completes to: words of a choice, or files.
std::string_view ArgumentsOf(const Command& command) {
  for (const Parameter& parameter : command.Parameters()) {
    if (parameter.IsOption()) continue;
    if (parameter.kind == Parameter::Kind::File) return "FILES";
    if (parameter.choices) return parameter.choices;
  }
  return "";
}

std::string Spaced(std::string_view choices) {
  std::string words(choices);
  for (char& character : words) {
    if (character == '|') character = ' ';
  }
  return words;
}

// Options that take a value, by what completes it.
template <typename Take>
void ForEachValueOption(Take take) {
  std::set<std::string_view> seen;
  const auto offer = [&](const Parameter& parameter) {
    if (!parameter.IsOption() || parameter.IsFlag()) return;
    if (seen.insert(parameter.LongName()).second) take(parameter);
  };
  for (const Global& global : kGlobals) offer(global.parameter);
  ForEachCommand([&](const Command& command) {
    for (const Parameter& parameter : command.Parameters()) offer(parameter);
  });
}

std::string OptionsWithValue(bool ofFile) {
  std::string names;
  ForEachValueOption([&](const Parameter& parameter) {
    if ((parameter.kind == Parameter::Kind::File) != ofFile) return;
    names += fmt::format("{}{}", names.empty() ? "" : "|", parameter.LongName());
  });
  return names;
}

// The cases of a shell's case statement, shared by bash and zsh: from the words so far to the words
// that may follow and to the options.
std::string Cases() {
  std::string cases;
  for (const std::string& beginning : Beginnings()) {
    cases += fmt::format("    '{}') words='{}' ;;\n", beginning, Joined(NextWords(beginning)));
  }
  ForEachCommand([&](const Command& command) {
    cases += fmt::format("    '{}') options='{}' arguments='{}' ;;\n", FullName(command),
                         Joined(OptionsOf(command)), Spaced(ArgumentsOf(command)));
  });
  return cases;
}

constexpr const char* kBash = R"(# Completes the command lines of vdrctl in bash.
_vdrctl() {{
  local current=${{COMP_WORDS[COMP_CWORD]}} previous=${{COMP_WORDS[COMP_CWORD - 1]}}
  local known='' words='' options='' arguments='' index=1 word
  COMPREPLY=()
  case $previous in
    {files}) compopt -o default; return ;;
    {values}) return ;;
  esac
  for ((; index < COMP_CWORD; ++index)); do
    word=${{COMP_WORDS[index]}}
    case $word in
      {files}|{values}) ((++index)); continue ;;
      -*) continue ;;
    esac
    _vdrctl_words "$known"
    [[ " $words " == *" $word "* ]] || break
    known=${{known:+$known }}$word
  done
  words='' options='' arguments=''
  _vdrctl_words "$known"
  if [[ $current == -* ]]; then
    COMPREPLY=($(compgen -W "$options {globals}" -- "$current"))
  elif [[ $arguments == FILES ]]; then
    compopt -o default
  else
    COMPREPLY=($(compgen -W "$words $arguments" -- "$current"))
  fi
}}
_vdrctl_words() {{
  words='' options='' arguments=''
  case $1 in
{cases}  esac
}}
complete -F _vdrctl vdrctl
)";

constexpr const char* kZsh = R"(#compdef vdrctl
# Completes the command lines of vdrctl in zsh.
_vdrctl() {{
  local current=${{words[CURRENT]}} previous=${{words[CURRENT - 1]}}
  local -a line=("${{(@)words[2,CURRENT - 1]}}")
  local known='' next='' options='' arguments='' word
  case $previous in
    {files}) _files; return ;;
    {values}) return ;;
  esac
  while (( $#line )); do
    word=${{line[1]}}
    shift line
    case $word in
      {files}|{values}) (( $#line )) && shift line; continue ;;
      -*) continue ;;
    esac
    _vdrctl_words "$known"
    [[ " $next " == *" $word "* ]] || break
    known=${{known:+$known }}$word
  done
  _vdrctl_words "$known"
  if [[ $current == -* ]]; then
    compadd -- ${{=options}} {globals}
  elif [[ $arguments == FILES ]]; then
    _files
  else
    compadd -- ${{=next}} ${{=arguments}}
  fi
}}
_vdrctl_words() {{
  local words
  words='' options='' arguments=''
  case $1 in
{cases}  esac
  next=$words
}}
if [ "$funcstack[1]" = "_vdrctl" ]; then
  _vdrctl "$@"
else
  compdef _vdrctl vdrctl
fi
)";

std::string ForShell(const char* script) {
  return fmt::format(fmt::runtime(script), fmt::arg("files", OptionsWithValue(true)),
                     fmt::arg("values", OptionsWithValue(false)), fmt::arg("cases", Cases()),
                     fmt::arg("globals", Joined(GlobalOptions())));
}

std::string Quoted(std::string_view text) {
  std::string quoted = "'";
  for (const char character : text) quoted += character == '\'' ? "\\'" : std::string(1, character);
  return quoted + "'";
}

std::string FishOption(const Parameter& parameter, std::string_view condition) {
  std::string_view name = parameter.LongName();
  name.remove_prefix(2);
  const bool ofFile = parameter.kind == Parameter::Kind::File;
  return fmt::format("complete -c vdrctl{} -l {}{} -d {}\n", condition, name,
                     parameter.IsFlag() ? ""
                     : ofFile           ? " -r -F"
                                        : " -x",
                     Quoted(parameter.meaning));
}

std::string_view SummaryOf(const std::string& words) {
  const Command* command = FindCommand(words);
  return command ? command->summary : SummaryOfObject(words);
}

std::string FishWords(const std::string& beginning) {
  std::string lines;
  for (const std::string_view word : NextWords(beginning)) {
    const std::string words = fmt::format("{}{}{}", beginning, beginning.empty() ? "" : " ", word);
    lines += fmt::format("complete -c vdrctl -n \"__vdrctl_said '{}'\" -a {} -d {}\n", beginning,
                         word, Quoted(SummaryOf(words)));
  }
  return lines;
}

constexpr const char* kFish = R"(# Completes the command lines of vdrctl in fish.
# The words so far, without options and their values.
function __vdrctl_words
    set -l is_value no
    for word in (commandline -opc)[2..-1]
        if test $is_value = yes
            set is_value no
            continue
        end
        switch $word
            case {options}
                set is_value yes
            case '-*'
            case '*'
                echo $word
        end
    end
end
function __vdrctl_said
    set -l words (__vdrctl_words)
    test "$words" = "$argv[1]"
end
function __vdrctl_begins
    set -l words (__vdrctl_words)
    string match -q -- "$argv[1] *" "$words "
end
complete -c vdrctl -f
)";

std::string ForFish() {
  std::string text = fmt::format(
      fmt::runtime(kFish),
      fmt::arg("options", Spaced(OptionsWithValue(true) + "|" + OptionsWithValue(false))));
  for (const Global& global : kGlobals) {
    std::string line = FishOption(global.parameter, "");
    if (global.shortName) {
      line.insert(line.find(" -l "), fmt::format(" -s {}", std::string_view(global.shortName)[1]));
    }
    text += line;
  }
  for (const std::string& beginning : Beginnings()) text += FishWords(beginning);
  ForEachCommand([&](const Command& command) {
    const std::string name = FullName(command);
    const std::string condition = fmt::format(" -n \"__vdrctl_begins '{}'\"", name);
    for (const Parameter& parameter : command.Parameters()) {
      if (parameter.IsOption()) text += FishOption(parameter, condition);
    }
    const std::string_view arguments = ArgumentsOf(command);
    if (arguments == "FILES") {
      text += fmt::format("complete -c vdrctl{} -F\n", condition);
    } else if (!arguments.empty()) {
      text += fmt::format("complete -c vdrctl -n \"__vdrctl_said '{}'\" -a '{}'\n", name,
                          Spaced(arguments));
    }
  });
  return text;
}

}  // namespace

int PrintCompletion(Output& out, const char* shell) {
  const std::string_view name = shell;
  out.Text(name == "bash" ? ForShell(kBash) : name == "zsh" ? ForShell(kZsh) : ForFish());
  return 0;
}

}  // namespace vdrctl
