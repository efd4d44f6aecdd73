#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "journal/form.h"

namespace vdrsim {

// A line of JSON an entry, as docs/vdrsim-journal.md tells.
class JournalForm final : public Form {
 public:
  static constexpr std::string_view kFormat = "vdrsim-journal";
  static constexpr int kVersion = 1;

  explicit JournalForm(std::string program) : program_(std::move(program)) {}

  void PutBeginning(std::string& out) const override;
  void Put(const Entry& entry, std::string& out) const override;

  // The line of a command in two parts; between them belongs its output, if any, in hexadecimal.
  static constexpr std::string_view kBeforeOutput = ",\"output\":\"";
  static constexpr std::string_view kBehindOutput = "\"";
  static constexpr std::string_view kEndOfLine = "}\n";
  static void PutCommand(const Entry& entry, std::string& out);

 private:
  std::string program_;
};

}  // namespace vdrsim
