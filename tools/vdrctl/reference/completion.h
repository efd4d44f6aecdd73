#pragma once

namespace vdrctl {

class Output;

// Prints what completes command lines in a shell: "bash", "zsh" or "fish".
int PrintCompletion(Output& out, const char* shell);

}  // namespace vdrctl
