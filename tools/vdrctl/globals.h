#pragma once

#include "parameter.h"

namespace vdrctl {

// Options that hold for all commands and may stand anywhere.
struct Global {
  Parameter parameter;
  const char* shortName = nullptr;  // "-j"
};

inline constexpr Global kGlobals[] = {
    {Switch("--json", "Print one JSON document instead of tables"), "-j"},
    {Text("--columns NAMES", 4096, "Show these fields alone, in this order: a,b,c")},
    {Switch("--no-header", "Print tables without their first line")},
    {Text("--sort NAME", 255, "Sort a list by this field")},
    {File("--names FILE", "Take the names of fields from FILE")},
    {Text("--watch SECONDS", 16, "Run the command again and again, and show what it prints")},
    {Switch("--help", "Print help and exit"), "-h"},
    {Switch("--version", "Print the version and exit"), "-V"},
};

}  // namespace vdrctl
