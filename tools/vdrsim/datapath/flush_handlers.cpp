#include <cerrno>
#include <iterator>

#include "datapath/objects.h"
#include "datapath/route_handlers.h"

namespace vdrsim {

namespace {

template <auto Member>
void FlushRoutes(Instance& instance) {
  (instance.*Member).Clear();
}

template <auto Member>
void FlushNeighbours(Instance& instance) {
  instance.lifs.ForEach([](Lif& lif) { (lif.*Member).Clear(); });
}

// The targets from 1 on; 0 means all of them.
constexpr void (*kFlushes[])(Instance&) = {
    FlushRoutes<&Instance::routes>,        FlushRoutes<&Instance::ipv6Routes>,
    FlushNeighbours<&Lif::arps>,           FlushNeighbours<&Lif::proxyArps>,
    FlushNeighbours<&Lif::ipv6Neighbours>, FlushNeighbours<&Lif::ipv6Proxies>,
};

void Flush(Instance& instance, uint32_t target) {
  if (target != 0) return kFlushes[target - 1](instance);
  for (const auto flush : kFlushes) flush(instance);
}

}  // namespace

// The selectors and the value say nothing here.
int Handle(State& state, const Input<"GenericFlush">& input) {
  const uint32_t target = input.Word("flushTarget");
  const auto name = input.OptionalName("flushName");
  if (target > std::size(kFlushes) || !name) return EINVAL;
  const auto flush = [&](Instance& instance) { Flush(instance, target); };
  if (!name->empty()) return OnCounted(input, state.instances, name, flush);
  state.instances.ForEach(flush);
  return 0;
}

// Nothing is forwarded, so no path has been measured: the command is counted, no more.
int Handle(State&, const Input<"PMTUTableCearv6">&) { return 0; }

}  // namespace vdrsim
