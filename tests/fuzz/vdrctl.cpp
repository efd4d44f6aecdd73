#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <variant>

#include "batch/line.h"
#include "command_line.h"
#include "files.h"
#include "names/names_file.h"
#include "output/text.h"
#include "require.h"

// What an operator may hand to vdrctl: lines of commands, names of fields, texts to be shown.
namespace {

bool IsPrintable(std::string_view text) {
  for (const char character : text) {
    if (character < ' ' || character > '~') return false;
  }
  return true;
}

// A line is a command, help, or wrong with a complaint that can be shown.
void Read(std::string_view line) try {
  const auto words = vdrctl::SplitLine(line);
  const auto parsed = vdrctl::Parse(words);
  if (const auto* invocation = std::get_if<vdrctl::Invocation>(&parsed)) {
    Require(invocation->command && !words.empty(), "no words are no command");
    vdrctl::Given::Room room;
    Require(invocation->given.In(room).size() == invocation->command->Parameters().size(),
            "each parameter has a place for its value");
  }
} catch (const vdrctl::WrongLine& wrong) {
  Require(IsPrintable(wrong.what()), "a complaint about a line is printable");
} catch (const vdrctl::WrongUsage& wrong) {
  Require(IsPrintable(wrong.what()), "a complaint about words is printable");
}

// What is shown of a text can be typed back.
void ShowAndType(std::string_view text) {
  const std::string_view field = text.substr(0, text.find('\0'));
  const std::string shown = vdrctl::Escaped(field);
  Require(IsPrintable(shown), "what is shown is printable");
  std::string quoted = "'";
  for (const char character : shown)
    quoted += character == '\'' ? "'\\''" : std::string(1, character);
  const auto words = vdrctl::SplitLine("instance show " + quoted + "'");
  try {
    const auto parsed = vdrctl::Parse(words);
    const auto* invocation = std::get_if<vdrctl::Invocation>(&parsed);
    // A word of help, or one that looks like an option, is typed behind "--".
    if (invocation && !shown.starts_with('-')) {
      vdrctl::Given::Room room;
      Require(invocation->given.In(room)[0] == field, "what is shown can be typed back");
    }
  } catch (const vdrctl::WrongUsage&) {
    Require(field.size() > 63 || shown.starts_with('-'), "only a name that is too long is refused");
  }
}

void ReadNamesOf(std::string_view document) {
  const int file = memfd_create("names", MFD_CLOEXEC);
  Require(write(file, document.data(), document.size()) == static_cast<ssize_t>(document.size()),
          "a memory file takes the document");
  try {
    vdrctl::ReadNames("/proc/self/fd/" + std::to_string(file));
  } catch (const vdrctl::NamesFailure& wrong) {
    Require(IsPrintable(wrong.what()), "a complaint about names is printable");
  }
  close(file);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, std::size_t size) {
  setenv("LC_ALL", "C", 1);
  if (size == 0) return 0;
  const std::string_view rest(reinterpret_cast<const char*>(input) + 1, size - 1);
  switch (input[0] % 3) {
    case 0:
      Read(rest);
      break;
    case 1:
      ShowAndType(rest);
      break;
    default:
      ReadNamesOf(rest);
  }
  return 0;
}
