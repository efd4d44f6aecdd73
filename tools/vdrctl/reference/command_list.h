#pragma once

namespace vdrctl {

class Output;

// Prints the table of commands: a line each for people, all of a row as JSON.
int ListCommands(Output& out);

}  // namespace vdrctl
