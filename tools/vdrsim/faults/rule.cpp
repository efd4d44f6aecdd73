#include "faults/rule.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "common/suggestion.h"
#include "common/values.h"
#include "faults/rule_text.h"

namespace vdrsim {

namespace {

// What can stand behind WHICH, and what it does to the rule that is being read.
struct Clause {
  std::string_view word;
  std::string_view form;  // for messages
  bool isAction;
  bool isRepeatable;
  void (*read)(const RulePart& value, Rule& rule);
};

constexpr Clause kClauses[] = {
    {"error", "error=ERRNO", true, false,
     [](const RulePart& value, Rule& rule) { rule.actions.error = ReadErrno(value); }},
    {"length", "length=N", true, false,
     [](const RulePart& value, Rule& rule) { rule.actions.length = ReadLength(value); }},
    {"short", "short=N", true, false,
     [](const RulePart& value, Rule& rule) { rule.actions.written = ReadLength(value); }},
    {"delay", "delay=TIME", true, false,
     [](const RulePart& value, Rule& rule) { rule.actions.delay = ReadTime(value); }},
    {"kill", "kill", true, false, [](const RulePart&, Rule& rule) { rule.actions.kills = true; }},
    {"when", "when=N", false, false,
     [](const RulePart& value, Rule& rule) { rule.counting = ReadCounting(value); }},
    {"if", "if=FIELD==VALUE", false, true,
     [](const RulePart& value, Rule& rule) {
       rule.conditions.push_back(ReadFieldCondition(value, rule.selection));
     }},
    {"prob", "prob=N%", false, false,
     [](const RulePart& value, Rule& rule) { rule.probability = ReadProbability(value); }},
};

bool TakesValue(const Clause& clause) { return clause.word != clause.form; }

std::string Forms(bool isAction) {
  std::vector<std::string_view> forms;
  for (const Clause& clause : kClauses) {
    if (clause.isAction == isAction) forms.push_back(clause.form);
  }
  return fmt::format("{}", fmt::join(forms, ", "));
}

std::string_view WordOf(std::string_view part) { return part.substr(0, part.find('=')); }

bool IsLetter(char character) { return character >= 'a' && character <= 'z'; }

// A colon within the value of a condition, as in an address, is not followed by such.
bool BeginsClause(std::string_view part) {
  const std::string_view word = WordOf(part);
  if (word.empty() || !std::ranges::all_of(word, IsLetter)) return false;
  const std::string_view value = part.substr(word.size());
  return value.starts_with("=") || std::ranges::any_of(kClauses, [word](const Clause& clause) {
           return clause.word == word && !TakesValue(clause);
         });
}

std::vector<std::string_view> Split(std::string_view rule) {
  std::vector<std::string_view> parts;
  for (const std::string_view piece : tools::SplitAt(rule, ':')) {
    if (!parts.empty() && WordOf(parts.back()) == "if" && !BeginsClause(piece)) {
      const std::string_view last = parts.back();
      parts.back() = {last.data(), last.size() + 1 + piece.size()};
    } else {
      parts.push_back(piece);
    }
  }
  return parts;
}

const Clause& FindClause(const RulePart& part) {
  const std::string_view word = WordOf(part.text);
  if (part.text.empty()) part.Refuse("nothing stands between this colon and what follows");
  const auto* clause = std::ranges::find(kClauses, word, &Clause::word);
  if (clause == std::end(kClauses)) {
    std::vector<std::string_view> words;
    for (const Clause& known : kClauses) words.push_back(known.word);
    part.At(word).Refuse(fmt::format("'{}' is neither an action ({}) nor a condition ({}){}", word,
                                     Forms(true), Forms(false), tools::Suggestion(word, words)));
  }
  const bool hasValue = part.text.size() > word.size();
  if (hasValue != TakesValue(*clause)) {
    part.Refuse(fmt::format("it is written {}", clause->form));
  }
  return *clause;
}

std::string Printable(std::string_view text) {
  std::string printable(text);
  std::ranges::replace_if(
      printable,
      [](char character) {
        return static_cast<unsigned char>(character) < ' ' || character == 0x7f;
      },
      '?');
  return printable;
}

// Characters beyond ASCII are several bytes, of which all but one begin with the bits 10.
size_t Width(std::string_view text) {
  return static_cast<size_t>(std::ranges::count_if(
      text, [](char character) { return (static_cast<unsigned char>(character) & 0xc0) != 0x80; }));
}

}  // namespace

RuleError::RuleError(std::string_view rule, std::string_view place, std::string_view sentence)
    : runtime_error(
          fmt::format("fault rule: {}\n  {}\n  {:>{}}{:~<{}}", Printable(sentence), Printable(rule),
                      "", Width(rule.substr(0, static_cast<size_t>(place.data() - rule.data()))),
                      "^", Width(place))) {}

bool FieldCondition::Holds(size_t request, std::span<const std::byte> input) const {
  const auto found = byRequest.find(request);
  if (found == byRequest.end()) return false;
  const auto& [offset, bytes] = found->second;
  if (offset + bytes.size() > input.size()) return false;
  return std::ranges::equal(input.subspan(offset, bytes.size()), bytes) == isEqual;
}

Rule ReadRule(std::string_view text) {
  const std::vector<std::string_view> parts = Split(text);
  Rule rule{.text = std::string(text), .selection = ReadSelection({text, parts.front()})};
  bool hasAction = false;
  std::set<std::string_view> seen;
  for (const std::string_view each : std::span(parts).subspan(1)) {
    const RulePart part{text, each};
    const Clause& clause = FindClause(part);
    if (!seen.insert(clause.word).second && !clause.isRepeatable) {
      part.Refuse(fmt::format("'{}' is given twice", clause.word));
    }
    hasAction |= clause.isAction;
    clause.read(part.At(each.substr(std::min(each.size(), clause.word.size() + 1))), rule);
  }
  if (!hasAction) {
    RulePart{text, text.substr(text.size())}.Refuse(
        fmt::format("the rule does nothing: it takes an action ({})", Forms(true)));
  }
  return rule;
}

}  // namespace vdrsim
