#pragma once

namespace vdrctl {

class Output;

// Prints the manual of this program: "man" for its page in section 1, "markdown" for that of the
// documentation.
int PrintReference(Output& out, const char* form);

}  // namespace vdrctl
