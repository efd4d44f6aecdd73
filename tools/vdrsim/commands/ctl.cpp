#include <cerrno>
#include <cstring>
#include <memory>
#include <string>

#include "commands/subcommands.h"
#include "common/standard_streams.h"
#include "control/client.h"

namespace vdrsim {

namespace {

// The exit statuses of `vdrsim ctl`, which are those of vdrctl.
constexpr int kRefused = 1;

// Gives an order and prints what there is to say about it.
int Give(const control::Order& order) try {
  const std::string said = control::Give(order);
  const int error = tools::Print(said);
  if (error == 0) return 0;
  tools::Complain("vdrsim", std::string("standard output: ") + std::strerror(error));
  return kUnusable;
} catch (const control::NotInARun& failure) {
  tools::Complain("vdrsim", failure.what());
  return kNotInARun;
} catch (const std::runtime_error& failure) {
  tools::Complain("vdrsim", failure.what());
  return kRefused;
}

CLI::App* AddGroup(CLI::App& parent, const char* name, const char* description) {
  CLI::App* group = parent.add_subcommand(name, description);
  group->require_subcommand(1);
  return group;
}

// Adds a verb that gives the order `word`, with `parameter` as its body where there is one.
void AddVerb(CLI::App& group, Action& action, const char* name, const char* parameter,
             const char* description) {
  CLI::App* verb = group.add_subcommand(name, description);
  const auto body = std::make_shared<std::string>();
  const std::string word = group.get_name() + " " + name;
  verb->callback([&action, word, body] {
    action = [word, body] { return Give({.word = word, .body = *body}); };
  });
  if (*parameter) verb->add_option(parameter, *body)->required();
}

}  // namespace

void AddCtl(CLI::App& app, Action& action) {
  CLI::App* ctl =
      AddGroup(app, "ctl", "Change the run that this is started in, between two steps of a test.");
  CLI::App* fault = AddGroup(*ctl, "fault", "What makes commands of the run fail");
  AddVerb(*fault, action, "add", "RULE", "Add a rule, as with vdrsim run --fault");
  AddVerb(*fault, action, "list", "",
          "Print the rules, each behind the number of times that it acted");
  AddVerb(*fault, action, "clear", "", "Drop all rules");
}

}  // namespace vdrsim
