#include "workers_of.h"

#include <unistd.h>

#include <exception>
#include <memory>
#include <vector>

#include "transport/intercepted_calls.h"
#include "transport/unique_fd.h"

namespace transport_test {

namespace {

// No command comes in these runs.
struct Nobody final : vdrsim::Executor {
  vdrsim::Answer Execute(const vdrsim::Call&) noexcept override { std::terminate(); }
};

struct Answering {
  explicit Answering(int listener) : held(dup(listener)) {}

  vdrsim::UniqueFd held;
  vdrsim::DeviceNodes nodes{true};
  Nobody nobody{};
  vdrsim::InterceptedCalls calls{nodes, nobody};
  vdrsim::Workers workers{held.get(), calls};
};

}  // namespace

vdrsim::Workers& WorkersOf(const Caller& caller) {
  static auto& kept = *new std::vector<std::unique_ptr<Answering>>;
  return kept.emplace_back(std::make_unique<Answering>(caller.listener()))->workers;
}

}  // namespace transport_test
