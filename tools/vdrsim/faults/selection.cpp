#include <fmt/format.h>

#include <algorithm>

#include "common/suggestion.h"
#include "common/values.h"
#include "faults/rule_text.h"

namespace vdrsim {

namespace {

using requests::kFamilies;
using requests::kHighestCode;
using requests::kRequests;
using requests::Request;

template <typename Predicate>
Selection Where(Predicate isMeant) {
  Selection selection;
  for (size_t index = 0; index < kRequests.size(); ++index) {
    selection.requests[index] = isMeant(*kRequests[index]);
  }
  return selection;
}

Selection Any() {
  Selection all = Where([](const Request&) { return true; });
  all.codes.set();
  return all;
}

Selection OfCode(const RulePart& part, uint64_t code) {
  if (code > kHighestCode) part.Refuse(fmt::format("codes go up to {}", kHighestCode));
  Selection selection = Where([code](const Request& request) { return request.code == code; });
  selection.codes.set(code);
  return selection;
}

Selection OfFamily(const RulePart& part) {
  const std::string_view name = part.text.substr(1);
  for (const auto& family : kFamilies) {
    if (family.name != name) continue;
    return Where([&family](const Request& request) {
      return &request >= &family.requests.front() && &request <= &family.requests.back();
    });
  }
  std::vector<std::string_view> names;
  for (const auto& family : kFamilies) names.push_back(family.name);
  part.Refuse(fmt::format("there is no family '{}'{}; there are %{}", name,
                          tools::Suggestion(name, names), fmt::join(names, ", %")));
}

Selection OfName(const RulePart& part) {
  const Selection named =
      Where([&part](const Request& request) { return request.name.view() == part.text; });
  if (named.requests.any()) return named;
  std::vector<std::string_view> names = {"any"};
  for (const Request* request : kRequests) names.push_back(request->name.view());
  part.Refuse(
      fmt::format("there is no command '{}'{}; a rule begins with a command, as "
                  "SetLif, a code, a %family or any",
                  part.text, tools::Suggestion(part.text, names)));
}

}  // namespace

Selection ReadSelection(const RulePart& part) {
  if (part.text == "any") return Any();
  if (part.text.starts_with('%')) return OfFamily(part);
  if (const auto code = tools::ParseNumber(part.text)) return OfCode(part, *code);
  return OfName(part);
}

}  // namespace vdrsim
