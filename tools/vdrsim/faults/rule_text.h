#pragma once

#include <string>
#include <string_view>

#include "faults/rule.h"

namespace vdrsim {

// A part of the text of a rule, which knows where it stands.
struct RulePart {
  std::string_view rule;
  std::string_view text;

  RulePart At(std::string_view part) const { return {rule, part}; }
  [[noreturn]] void Refuse(std::string_view sentence) const {
    throw RuleError(rule, text, sentence);
  }
};

// Each reads one part, and refuses it by RuleError.
Selection ReadSelection(const RulePart& part);
FieldCondition ReadFieldCondition(const RulePart& part, const Selection& selection);
Counting ReadCounting(const RulePart& part);
double ReadProbability(const RulePart& part);
int ReadErrno(const RulePart& part);
std::chrono::nanoseconds ReadTime(const RulePart& part);
uint32_t ReadLength(const RulePart& part);

}  // namespace vdrsim
