#pragma once

#include <string>
#include <string_view>

#include "commands.h"

namespace vdrctl {

// What the operator is told about the program as a whole (""), an object, or a command; `words` are
// of the table.
std::string HelpText(std::string_view words);

// "vdrctl lif create INSTANCE LIF [OPTIONS]"
std::string UsageLine(const Command& command);

// "" for words that have none.
std::string_view SummaryOfObject(std::string_view words);

}  // namespace vdrctl
