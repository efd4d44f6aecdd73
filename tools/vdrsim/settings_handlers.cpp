#include <cstring>

#include "command.h"

namespace vdrsim {

namespace {

template <uint32_t State::*Setting>
Outcome Get(State& state, const Input&) {
  Outcome outcome{.reply = std::vector<std::byte>(sizeof(uint32_t))};
  std::memcpy(outcome.reply.data(), &(state.*Setting), sizeof(uint32_t));
  return outcome;
}

template <uint32_t State::*Setting>
Outcome Set(State& state, const Input& input) {
  state.*Setting = input.Word(0);
  return {};
}

// The notice changes nothing: the simulated module stays where it is.
Outcome PreUnload(State& state, const Input&) {
  state.preUnloadAnnounced = true;
  return {};
}

constexpr Command kCommands[] = {
    {9, InputForm::None, Get<&State::logLevel>},
    {10, InputForm::Scalar, Set<&State::logLevel>},
    {11, InputForm::None, Get<&State::extendedLogLevel>},
    {12, InputForm::Scalar, Set<&State::extendedLogLevel>},
    {13, InputForm::None, Get<&State::statsLevel>},
    {14, InputForm::Scalar, Set<&State::statsLevel>},
    {42, InputForm::None, PreUnload},
    {159, InputForm::None, Get<&State::txDispatchQueueSize>},
    {160, InputForm::Scalar, Set<&State::txDispatchQueueSize>},
};

}  // namespace

std::span<const Command> SettingsCommands() { return kCommands; }

}  // namespace vdrsim
