#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <system_error>

#include "commands/subcommands.h"
#include "common/standard_streams.h"
#include "control/client.h"
#include "state/state_file.h"

namespace vdrsim {

namespace {

// The exit statuses of `vdrsim ctl`, which are those of vdrctl.
constexpr int kRefused = 1;
constexpr int kNotInARun = 3;

int Print(const std::string& text) {
  const int error = tools::Print(text);
  if (error == 0) return 0;
  tools::Complain("vdrsim", std::string("standard output: ") + std::strerror(error));
  return kUnusable;
}

// What a verb does with its argument. Returns what there is to print.
using Verb = std::function<std::string(const std::string& argument)>;

int Carry(const Verb& verb, const std::string& argument) try {
  return Print(verb(argument));
} catch (const control::NotInARun& failure) {
  tools::Complain("vdrsim", failure.what());
  return kNotInARun;
} catch (const std::runtime_error& failure) {
  tools::Complain("vdrsim", failure.what());
  return kRefused;
}

// Gives its argument to the run.
Verb Gives(const char* word) {
  return [word](const std::string& argument) {
    return control::Give({.word = word, .body = argument});
  };
}

std::string LoadFrom(const std::string& file) {
  const bool isInput = file == "-";
  if (!isInput && std::filesystem::is_directory(file)) {
    throw std::system_error(EISDIR, std::generic_category(), file);
  }
  std::ifstream opened;
  if (!isInput) opened.open(file, std::ios::binary);
  std::istream& stream = isInput ? std::cin : opened;
  const std::string name = isInput ? "standard input" : file;
  std::string body = name + '\0';
  body.append(std::istreambuf_iterator(stream), {});
  if (!stream) throw std::system_error(errno, std::generic_category(), name);
  return control::Give({.word = "state load", .body = body});
}

// The document is read once more, so that what is saved can be loaded.
std::string SaveTo(const std::string& file) {
  const SavedState saved(file);
  saved.Save(ReadState(control::Give({.word = "state show", .body = {}}), "the state of the run"));
  return "";
}

CLI::App* AddGroup(CLI::App& parent, const char* name, const char* description) {
  CLI::App* group = parent.add_subcommand(name, description);
  group->require_subcommand(1);
  return group;
}

// Adds a verb, with an argument where that has a name.
void AddVerb(CLI::App& group, Action& action, const char* name, const char* argument,
             const char* description, const Verb& verb) {
  CLI::App* added = group.add_subcommand(name, description);
  const auto text = std::make_shared<std::string>();
  if (*argument) added->add_option(argument, *text)->required();
  added->callback([&action, verb, text] { action = [verb, text] { return Carry(verb, *text); }; });
}

}  // namespace

void AddCtl(CLI::App& app, Action& action) {
  CLI::App* ctl =
      AddGroup(app, "ctl", "Change the run that this is started in, between two steps of a test.");
  CLI::App* fault = AddGroup(*ctl, "fault", "What makes commands of the run fail");
  AddVerb(*fault, action, "add", "RULE", "Add a rule, as with vdrsim run --fault",
          Gives("fault add"));
  AddVerb(*fault, action, "list", "",
          "Print the rules, each behind the number of times that it acted", Gives("fault list"));
  AddVerb(*fault, action, "clear", "", "Drop all rules", Gives("fault clear"));
  CLI::App* state = AddGroup(*ctl, "state", "What the simulated datapath remembers");
  AddVerb(*state, action, "save", "FILE", "Write it to a file, as with vdrsim run --save", SaveTo);
  AddVerb(*state, action, "load", "FILE",
          "Put that of a file in its place, all of it or, where something is wrong, nothing; - is "
          "standard input",
          LoadFrom);
  AddVerb(*state, action, "show", "", "Print it", Gives("state show"));
  CLI::App* journal = AddGroup(*ctl, "journal", "What is written down of the run");
  AddVerb(*journal, action, "mark", "TEXT", "Put a text between the commands before and after",
          Gives("journal mark"));
}

}  // namespace vdrsim
