#pragma once

namespace vdrctl {

class Output;

// Prints the JSON Schema of what a command prints with --json; that of all reading commands, by
// their names under "$defs", without one. The words name the command, as far as they are given.
// Throws WrongUsage for one that doesn't exist or prints nothing.
int PrintSchema(Output& out, const char* first, const char* second, const char* third);

}  // namespace vdrctl
