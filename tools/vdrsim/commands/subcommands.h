#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace vdrsim {

// What a subcommand does once its options are read; returns the exit status.
using Action = std::function<int()>;

// The exit status where something is wrong with what was asked for or with what is there.
inline constexpr int kUnusable = 2;

// Each adds one subcommand, which leaves in `action` what is to be done when it was chosen.
void AddRun(CLI::App& app, Action& action);
void AddRecord(CLI::App& app, Action& action);
void AddReplay(CLI::App& app, Action& action);
void AddScenario(CLI::App& app, Action& action);
void AddSchema(CLI::App& app, Action& action);
void AddCtl(CLI::App& app, Action& action);

}  // namespace vdrsim
