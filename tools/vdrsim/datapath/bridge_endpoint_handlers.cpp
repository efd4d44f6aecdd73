#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "bridge/bridge_endpoint_record.h"
#include "datapath/answers.h"
#include "datapath/bridge_handlers.h"
#include "datapath/bridge_layouts.h"
#include "datapath/bridge_objects.h"
#include "datapath/caps.h"

namespace vdrsim {

namespace {

using vdrzax::kBridgeEndpointRecord;

size_t FreePlaces(const State& state) {
  size_t count = 0;
  for (const auto& [instanceName, instance] : state.instances) {
    for (const auto& [name, lif] : instance.bridgeLifs) count += lif.endpoints.size();
  }
  return kMostBridgeEndpoints - count;
}

// The first instance that has a bridge LIF of that name.
std::optional<std::string> InstanceOf(const Instances& instances, std::string_view lifName) {
  for (const auto& [name, instance] : instances) {
    if (instance.bridgeLifs.Find(lifName)) return name;
  }
  return std::nullopt;
}

// Does `action` on the bridge LIF that a command names without its instance. Counts are those of
// the instance and of the LIF.
template <typename AnyState, size_t Index, typename Action>
auto OnBridgeLif(AnyState& state, const InputOf<Index>& input, const Action& action) {
  const auto lifName = input.ObjectName("lifName");
  const auto onInstance = [&](auto& instance) {
    return OnCounted(input, instance.bridgeLifs, lifName, action);
  };
  using Outcome = decltype(onInstance(*state.instances.Find("")));
  if (!lifName) return Refused<Outcome>(EINVAL);
  const auto instanceName = InstanceOf(state.instances, *lifName);
  if (!instanceName) return Refused<Outcome>(ENOENT);
  return OnCounted(input, state.instances, std::string_view(*instanceName), onInstance);
}

// A command that names the LIF alone means the first of its endpoints.
Answer OnFirstEndpoint(const Lif& lif, const auto& action) {
  if (lif.endpoints.size() == 0) return {.error = ENOENT};
  const auto& [name, endpoint] = *lif.endpoints.begin();
  return action(name, endpoint);
}

void ShowStats(RecordWriter<kEndpointStats> record, std::string_view name, const Counts& counts) {
  record.Text("name", name)
      .Number("counts", 0, counts.sets)
      .Number("counts", 1, counts.deletes)
      .Number("counts", 2, counts.lookups)
      .Number("counts", 3, counts.failures);
}

void ShowStatus(RecordWriter<kEndpointStatus> record, std::string_view name,
                const BridgeEndpoint& endpoint) {
  record.Text("name", name)
      .Text("fourthName", endpoint.fourthName)
      .Text("fifthName", endpoint.fifthName)
      .Number("value1", endpoint.value1)
      .Number("value2", endpoint.value2)
      .Number("tag", endpoint.tag)
      .Number("flag1", endpoint.flag1)
      .Number("flag2", endpoint.flag2);
}

void ShowRaw(RecordWriter<kRawEndpoint> record, const EndpointRow& row) {
  record.Text("name", row.name)
      .Text("lifName", row.lif)
      .Text("secondName", row.endpoint->secondName)
      .Number("value1", row.endpoint->value1)
      .Number("value2", row.endpoint->value2)
      .Number("tag", row.endpoint->tag)
      .Number("flag1", row.endpoint->flag1)
      .Number("flag2", row.endpoint->flag2);
}

// The area at the end is the kernel's own: a name, and one of the flags.
void ShowEndpoint(RecordWriter<kBridgeEndpointRecord> record, const EndpointRow& row) {
  const auto flag2 = static_cast<std::byte>(row.endpoint->flag2);
  record.Bytes("nameArea", std::as_bytes(std::span(row.name)))
      .Number("half128", row.endpoint->tag)
      .Number("flag", row.endpoint->flag1)
      .Number("word131", row.endpoint->value1)
      .Number("word135", row.endpoint->value2)
      .Bytes("bytes139", std::as_bytes(std::span(row.endpoint->secondName)))
      .Bytes("bytes139", std::span(&flag2, 1), 64);
}

// A copy is changed, because each LIF's endpoints may have to be copied for that, and either all of
// them go or none.
int Flush(State& state, bool (*isMeant)(const BridgeEndpoint&)) {
  Instances instances = state.instances;
  instances.ForEach([&](Instance& instance) {
    instance.bridgeLifs.ForEach([&](Lif& lif) { lif.endpoints.DeleteIf(isMeant); });
  });
  state.instances = std::move(instances);
  return 0;
}

}  // namespace

int Handle(State& state, const Input<"AddBridgeEndpoint">& input) {
  const size_t places = FreePlaces(state);
  return OnBridgeLif(state, input, [&](Lif& lif) {
    const size_t most = lif.endpoints.size() + places;
    const auto name = input.ObjectName("endpointName");
    return SetNamed(lif.endpoints, name, most, [&](BridgeEndpoint& endpoint) {
      endpoint = {.secondName = std::string(input.Text("secondName")),
                  .fourthName = std::string(input.Text("fourthName")),
                  .fifthName = std::string(input.Text("fifthName")),
                  .value1 = input.Word("value1"),
                  .value2 = input.Word("value2"),
                  .tag = input.Half("tag"),
                  .flag1 = input.Byte("flag1"),
                  .flag2 = input.Byte("flag2"),
                  .counters = endpoint.counters};
    });
  });
}

int Handle(State& state, const Input<"DelBridgeEndpoint">& input) {
  return OnBridgeLif(state, input, [&](Lif& lif) {
    return DeleteNamed(lif.endpoints, input.ObjectName("endpointName"));
  });
}

int Handle(State& state, const Input<"FlushBridgeEndpoint", 47>&) {
  return Flush(state, [](const BridgeEndpoint&) { return true; });
}

int Handle(State& state, const Input<"FlushBridgeEndpoint", 48>&) {
  return Flush(state, [](const BridgeEndpoint& endpoint) { return endpoint.flag1 == 0; });
}

// What asks for counters leaves those of the endpoint as they are.
Answer Handle(const State& state, const Input<"GetBeStats">& input) {
  return OnBridgeLif(state, input, [](const Lif& lif) {
    return OnFirstEndpoint(lif, [](std::string_view name, const BridgeEndpoint& endpoint) {
      return RecordAnswer<kEndpointStats>(ShowStats, name, endpoint.counters.counts());
    });
  });
}

Answer Handle(const State& state, const Input<"GetBeStatus">& input) {
  return OnBridgeLif(state, input, [](const Lif& lif) {
    return OnFirstEndpoint(lif, [](std::string_view name, const BridgeEndpoint& endpoint) {
      CountOn(endpoint, requests::Reads, 0);
      return RecordAnswer<kEndpointStatus>(ShowStatus, name, endpoint);
    });
  });
}

Answer Handle(const State& state, const Input<"GetBeAll">&) {
  return SelectionAnswer<kRawEndpoint>(
      state.instances, [](const Instances& instances) { return EndpointsOf(instances, ""); },
      ShowRaw);
}

Answer Handle(const State& state, const Input<"GetBridgeEndpoints">& input) {
  return OnInstanceOrAll(state, input, [&] {
    return SelectionAnswer<kBridgeEndpointRecord>(
        state.instances,
        [only = std::string(input.Text("name"))](const Instances& instances) {
          return EndpointsOf(instances, only);
        },
        ShowEndpoint);
  });
}

}  // namespace vdrsim
