#include "command_line.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <functional>
#include <map>
#include <memory>
#include <string_view>

namespace vdrctl {

namespace {

constexpr const char* kVersion = "vdrctl " TOOL_VERSION;

constexpr const char* kFooter =
    "Numbers are decimal, or hexadecimal after 0x. --json may stand anywhere.\n"
    "The exit status is 0, 1 when the command failed, 2 when it was not understood.\n"
    "\n"
    "Examples:\n"
    "  vdrctl instance set edge-1 --text blue --flag 1\n"
    "  vdrctl --json instance list\n"
    "  vdrctl instance show edge-1\n"
    "  vdrctl log-level set 3\n"
    "  vdrctl command 9 --capacity 4\n"
    "  vdrsim run -- vdrctl instance list";

// The parser of the whole table.
class Parser {
 public:
  Parser();

  std::variant<Invocation, Notice> Parse(int argc, const char* const* argv);

 private:
  void Add(const Command& command);
  CLI::App* Group(std::string_view words);
  const CLI::App* Deepest() const;
  std::string Understood() const;
  std::string Complaint(const CLI::ParseError& error) const;

  CLI::App root_{"Controls the virtual distributed router of this host.", "vdrctl"};
  bool json_ = false;
  std::map<std::string, const char*, std::less<>> summaries_;
  std::map<std::string, CLI::App*, std::less<>> groups_;
  std::map<const CLI::App*, const Command*> commands_;
  std::map<const CLI::App*, std::vector<const CLI::Option*>> options_;
};

CLI::Option* AddParameter(CLI::App& app, const Parameter& parameter);
std::shared_ptr<CLI::FormatterBase> HelpFormatter(const char* next);

}  // namespace

std::variant<Invocation, Notice> Parse(int argc, const char* const* argv) {
  return Parser().Parse(argc, argv);
}

std::string Words(const Invocation& invocation) {
  const Command& command = *invocation.command;
  std::string words = command.object;
  if (command.verb) words += fmt::format(" {}", command.verb);
  for (std::size_t index = 0; index < command.parameterCount; ++index) {
    const auto& value = invocation.values[index];
    if (!value || command.parameters[index].IsOption()) continue;
    words += fmt::format(" {}", value->empty() ? "''" : *value);
  }
  return words;
}

namespace {

Parser::Parser() {
  root_.formatter(HelpFormatter("OBJECT VERB"));
  // One object and one verb: a name that follows is never taken for another object or verb.
  root_.require_subcommand(1);
  root_.fallthrough();
  root_.set_version_flag("--version", kVersion, "Print the version and exit");
  root_.add_flag("--json", json_, "Print one JSON document instead of tables");
  root_.footer("'vdrctl --help' tells what holds for all commands.");
  for (const Family* family : kFamilies) {
    for (const Object& object : family->objects) summaries_[object.words] = object.summary;
    for (const Command& command : family->commands) Add(command);
  }
  // Each level took over the footer that stood here when it was added.
  root_.footer(kFooter);
}

std::variant<Invocation, Notice> Parser::Parse(int argc, const char* const* argv) {
  try {
    root_.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    return Notice{root_.help()};
  } catch (const CLI::CallForVersion&) {
    return Notice{std::string(kVersion) + "\n"};
  } catch (const CLI::ParseError& error) {
    throw WrongUsage(Complaint(error), Understood());
  }
  const CLI::App* app = Deepest();
  Invocation invocation{commands_.at(app), json_ ? Output::Form::Json : Output::Form::Tables, {}};
  for (const CLI::Option* option : options_.at(app)) {
    invocation.values.push_back(option->count() == 0 ? std::nullopt
                                                     : std::optional(option->results().front()));
  }
  return invocation;
}

void Parser::Add(const Command& command) {
  const bool alone = !command.verb;
  CLI::App* parent = alone ? &root_ : Group(command.object);
  CLI::App* app = parent->add_subcommand(alone ? command.object : command.verb, command.summary);
  app->group(alone ? "Commands" : "Verbs");
  if (!alone) {
    const std::string& verbs = parent->get_description();
    parent->description(
        fmt::format("{}{} {}", verbs, verbs.ends_with(':') ? "" : ",", command.verb));
  }
  commands_[app] = &command;
  auto& options = options_[app];
  for (const Parameter& parameter : command.Parameters()) {
    CLI::Option* option = AddParameter(*app, parameter);
    if (parameter.excludes) option->excludes(app->get_option(parameter.excludes));
    options.push_back(option);
  }
}

// Finds the level of an object, or makes it with the levels above.
CLI::App* Parser::Group(std::string_view words) {
  if (words.empty()) return &root_;
  if (const auto known = groups_.find(words); known != groups_.end()) return known->second;
  const std::size_t space = words.rfind(' ');
  const bool top = space == std::string_view::npos;
  CLI::App* parent = Group(top ? "" : words.substr(0, space));
  const std::string last(top ? words : words.substr(space + 1));
  const auto summary = summaries_.find(words);
  // The verbs follow.
  CLI::App* app = parent->add_subcommand(
      last, fmt::format("{}:", summary == summaries_.end() ? "" : summary->second));
  groups_.emplace(words, app);
  app->group("Objects");
  app->formatter(HelpFormatter("VERB"));
  app->require_subcommand(1);
  return app;
}

const CLI::App* Parser::Deepest() const {
  const CLI::App* app = &root_;
  while (!app->get_subcommands().empty()) app = app->get_subcommands().front();
  return app;
}

std::string Parser::Understood() const {
  std::string words = root_.get_name();
  for (const CLI::App* app = &root_; !app->get_subcommands().empty();) {
    app = app->get_subcommands().front();
    words += " " + app->get_name();
  }
  return words;
}

// The parser asks for a missing verb before it names the word that it did not know.
std::string Parser::Complaint(const CLI::ParseError& error) const {
  if (error.get_name() != "RequiredError" || commands_.contains(Deepest())) return error.what();
  const auto rest = root_.remaining(true);
  if (rest.empty()) return fmt::format("'{}' is not a complete command", Understood());
  return fmt::format("'{}' has no '{}'", Understood(), rest.front());
}

CLI::Option* AddParameter(CLI::App& app, const Parameter& parameter) {
  const std::string_view name = parameter.name;
  const std::size_t space = name.find(' ');
  CLI::Option* option =
      app.add_option(std::string(name.substr(0, space)), CLI::callback_t{}, parameter.meaning);
  option->type_name(space == std::string_view::npos ? "" : std::string(name.substr(space + 1)));
  option->required(!parameter.optional);
  option->check(CLI::Validator(
      [&parameter](std::string& text) { return vdrctl::Complaint(parameter, text); }, ""));
  return option;
}

std::shared_ptr<CLI::FormatterBase> HelpFormatter(const char* next) {
  auto formatter = std::make_shared<CLI::Formatter>();
  formatter->label("SUBCOMMAND", next);
  formatter->label("REQUIRED", "(required)");
  formatter->label("Excludes", "not with");
  formatter->column_width(34);
  return formatter;
}

}  // namespace

}  // namespace vdrctl
