#include "faults/faults.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace vdrsim {

namespace {

// What the rules before say stays said.
void Join(Actions& all, const Actions& more) {
  all.delay += more.delay;
  all.kills |= more.kills;
  if (all.error == 0) all.error = more.error;
  if (!all.length) all.length = more.length;
  if (!all.written) all.written = more.written;
}

void Spoil(Answer& answer, const Actions& actions) {
  if (actions.written) {
    answer.reply.Shorten(*actions.written);
    answer.claimed = answer.reply.size();
  }
  if (actions.length) answer.claimed = actions.length;
}

}  // namespace

void Faults::Add(Rule rule) {
  const std::lock_guard lock(mutex_);
  std::seed_seq seed{seed_ & 0xffffffff, seed_ >> 32, added_++};
  active_.push_back({.rule = std::move(rule), .dice = std::mt19937_64(seed)});
  isIdle_ = false;
}

void Faults::Clear() {
  const std::lock_guard lock(mutex_);
  for (const Active& active : active_) {
    if (!active.hasMatched) clearedInVain_.push_back(active.rule.text);
  }
  active_.clear();
  isIdle_ = true;
}

std::vector<Faults::Listed> Faults::List() const {
  const std::lock_guard lock(mutex_);
  std::vector<Listed> all;
  for (const Active& active : active_) all.push_back({active.rule.text, active.times});
  return all;
}

std::vector<std::string> Faults::NeverMatched() const {
  const std::lock_guard lock(mutex_);
  std::vector<std::string> all = clearedInVain_;
  for (const Active& active : active_) {
    if (!active.hasMatched) all.push_back(active.rule.text);
  }
  return all;
}

Answer Faults::Execute(const Call& call) noexcept {
  if (isIdle_) return next_.Execute(call);
  const Actions actions = Judge(call);
  if (actions.delay.count() != 0 && !call.destination.HoldUp(actions.delay))
    return {.error = ESRCH};
  if (actions.kills) {
    call.destination.Kill();
    return {.error = ESRCH};
  }
  if (actions.error != 0) return {.error = actions.error};
  Answer answer = next_.Execute(call);
  if (answer.error == 0) Spoil(answer, actions);
  return answer;
}

Actions Faults::Judge(const Call& call) {
  const size_t request = requests::Identify(call.code, call.input);
  Actions all;
  const std::lock_guard lock(mutex_);
  for (Active& active : active_) {
    if (Acts(active, request, call)) Join(all, active.rule.actions);
  }
  return all;
}

bool Faults::Acts(Active& active, size_t request, const Call& call) {
  const Rule& rule = active.rule;
  if (!rule.selection.Has(request, call.code)) return false;
  if (!std::ranges::all_of(rule.conditions, [&](const FieldCondition& condition) {
        return condition.Holds(request, call.input);
      })) {
    return false;
  }
  if (!rule.counting.Has(++active.counted)) return false;
  active.hasMatched = true;
  if (rule.probability && static_cast<double>(active.dice()) >= *rule.probability * 0x1p64) {
    return false;
  }
  ++active.times;
  return true;
}

}  // namespace vdrsim
