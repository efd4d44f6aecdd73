#pragma once

#include <cerrno>
#include <optional>
#include <string_view>
#include <type_traits>

#include "call.h"
#include "datapath/state.h"
#include "requests/input.h"

// How handlers reach the objects that a command names.
namespace vdrsim {

// What a handler returns: an errno value where there is no reply, else an answer.
inline int ErrorOf(int error) { return error; }
inline int ErrorOf(const Answer& answer) { return answer.error; }

template <typename Outcome>
Outcome Refused(int error) {
  if constexpr (std::is_same_v<Outcome, int>) {
    return error;
  } else {
    return {.error = error};
  }
}

// An action that returns nothing can't fail.
template <typename Action, typename Object>
auto Do(const Action& action, Object& object) {
  if constexpr (std::is_void_v<decltype(action(object))>) {
    action(object);
    return 0;
  } else {
    return action(object);
  }
}

// Does `action` on the object of that key: ENOENT without one.
template <typename Table, typename Key, typename Action>
auto OnKey(Table& table, const Key& key, const Action& action) {
  auto* object = table.Find(key);
  return object ? Do(action, *object) : Refused<decltype(Do(action, *object))>(ENOENT);
}

// Does `action` on the object of that name: EINVAL without a name, ENOENT without an object.
template <typename Table, typename Action>
auto OnNamed(Table& table, std::optional<std::string_view> name, const Action& action) {
  using Outcome = decltype(OnKey(table, *name, action));
  return name ? OnKey(table, *name, action) : Refused<Outcome>(EINVAL);
}

// Deletes something that the object of that key holds, and the object with the last of it.
template <typename Table, typename Key, typename Delete>
int DeleteWithin(Table& table, const Key& key, const Delete& deleteOne) {
  auto* object = table.Find(key);
  if (!object) return ENOENT;
  const int error = deleteOne(*object);
  if (object->IsEmpty()) table.Delete(key);
  return error;
}

template <typename Object>
void CountOn(const Object& object, requests::Effect effect, int error) {
  if constexpr (requires { object.counters; }) object.counters.Count(effect, error);
}

// The same, counted by an object that counts.
template <size_t Index, typename Table, typename Action>
auto OnCounted(const InputOf<Index>&, Table& table, std::optional<std::string_view> name,
               const Action& action) {
  return OnNamed(table, name, [&](auto& object) {
    auto outcome = Do(action, object);
    CountOn(object, InputOf<Index>::kRequest.effect, ErrorOf(outcome));
    return outcome;
  });
}

// Makes or updates the object of that name, of which there can be `most`.
template <typename Table, typename Update>
int SetNamed(Table& table, std::optional<std::string_view> name, size_t most,
             const Update& update) {
  if (!name) return EINVAL;
  return table.Set(*name, most, [&](auto& object) {
    const int error = Do(update, object);
    CountOn(object, requests::Sets, error);
    return error;
  });
}

template <typename Table>
int DeleteNamed(Table& table, std::optional<std::string_view> name) {
  return name ? table.Delete(*name) : EINVAL;
}

template <size_t Index>
std::optional<std::string_view> InstanceName(const InputOf<Index>& input) {
  if constexpr (InputOf<Index>::kRequest.Has("instanceName")) {
    return input.ObjectName("instanceName");
  } else {
    return input.ObjectName("name");
  }
}

// Does `action` on the instance that a command names.
template <typename AnyState, size_t Index, typename Action>
auto OnInstance(AnyState& state, const InputOf<Index>& input, const Action& action) {
  return OnCounted(input, state.instances, InstanceName(input), action);
}

// Does `action` on the LIF that a command names by its instance and itself.
template <typename AnyState, size_t Index, typename Action>
auto OnLif(AnyState& state, const InputOf<Index>& input, const Action& action) {
  return OnInstance(state, input, [&](auto& instance) {
    return OnCounted(input, instance.lifs, input.ObjectName("lifName"), action);
  });
}

}  // namespace vdrsim
