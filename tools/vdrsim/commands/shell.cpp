#include "commands/shell.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "common/standard_streams.h"

namespace vdrsim {

namespace {

std::string Environment(const char* name, const char* otherwise) {
  const char* value = std::getenv(name);
  return value && *value ? value : otherwise;
}

// Where this program lies and, in a build tree, where vdrctl does.
std::vector<std::string> ToolDirectories() {
  std::error_code none;
  const auto own = std::filesystem::read_symlink("/proc/self/exe", none).parent_path();
  std::vector<std::string> directories;
  if (own.empty()) return directories;
  directories.push_back(own);
  const auto beside = own.parent_path() / "vdrctl";
  const bool isTogether = access((own / "vdrctl").c_str(), X_OK) == 0 &&
                          !std::filesystem::is_directory(own / "vdrctl", none);
  if (!isTogether && access((beside / "vdrctl").c_str(), X_OK) == 0) directories.push_back(beside);
  return directories;
}

}  // namespace

void AddShellOption(CLI::App& subcommand, bool& isShell) {
  CLI::Option* command = subcommand.get_option("COMMAND")->required(false);
  subcommand
      .add_flag("--shell", isShell,
                "start $SHELL instead of a COMMAND, with the tools of this build on its path")
      ->excludes(command);
}

void ChooseShell(RunOptions& options) {
  std::string path;
  for (const std::string& directory : ToolDirectories()) path += directory + ":";
  path += Environment("PATH", "/usr/local/bin:/usr/bin:/bin");
  setenv("PATH", path.c_str(), 1);
  options.command = {Environment("SHELL", "/bin/sh")};
  tools::Tell(
      fmt::format("vdrsim: {} in a run: the datapath is simulated until you leave it by exit or "
                  "Ctrl-D\n",
                  options.command.front()));
}

}  // namespace vdrsim
