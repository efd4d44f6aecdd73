#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vdrctl {

// A line can't be split into words.
class WrongLine : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Splits a line as a shell would: blanks part words; between single quotes every character stands
// for itself; between double quotes a backslash takes the meaning from a double quote and from a
// backslash, outside of quotes from any character; a word that begins with # starts a comment.
// Nothing is expanded. Throws WrongLine.
std::vector<std::string> SplitLine(std::string_view line);

}  // namespace vdrctl
