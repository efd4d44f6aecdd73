#include "datapath/mcast_handlers.h"

#include "datapath/answers.h"
#include "datapath/caps.h"
#include "datapath/mcast_record.h"
#include "datapath/objects.h"

namespace vdrsim {

namespace {

// A group that nobody has joined has no receivers, which is no error.
McastGroup GroupOf(const Instance& instance, uint32_t key) {
  const McastGroup* group = instance.multicast.groups.Find(key);
  return group ? *group : McastGroup{};
}

int Join(Instance& instance, uint32_t key, const auto& join) {
  return instance.multicast.groups.Set(key, kMostMcastGroups, join);
}

int Leave(Instance& instance, uint32_t key, const auto& leave) {
  return DeleteWithin(instance.multicast.groups, key, leave);
}

}  // namespace

int Handle(State& state, const Input<"AddMRoutingLocalRcvrs">& input) {
  return OnInstance(state, input, [&](Instance& instance) {
    const auto name = input.OptionalName("rcvrName");
    if (!name) return EINVAL;
    return Join(instance, input.Word("key"), [&](McastGroup& group) {
      return group.localReceivers.Set(*name, kMostLocalReceivers, [](LocalReceiver&) { return 0; });
    });
  });
}

int Handle(State& state, const Input<"DelMRoutingLocalRcvrs">& input) {
  return OnInstance(state, input, [&](Instance& instance) {
    const auto name = input.OptionalName("rcvrName");
    if (!name) return EINVAL;
    return Leave(instance, input.Word("key"),
                 [&](McastGroup& group) { return group.localReceivers.Delete(*name); });
  });
}

Answer Handle(const State& state, const Input<"GetMRoutingLocalRcvrs">& input) {
  return OnInstance(state, input, [key = input.Word("key")](const Instance& instance) {
    return TableAnswer<vdrzax::kMRoutingLocalRcvr>(
        GroupOf(instance, key).localReceivers,
        [key](auto record, std::string_view name, const LocalReceiver&) {
          record.Text("rcvrName", name).Number("value64", key);
        });
  });
}

int Handle(State& state, const Input<"AddMRoutingRemoteRcvrs">& input) {
  return OnInstance(state, input, [&](Instance& instance) {
    return Join(instance, input.Word("a"), [&](McastGroup& group) {
      return group.remoteReceivers.Set(
          input.Word("b"), kMostRemoteReceivers, [&](RemoteReceiver& receiver) {
            receiver = {.c = input.Mac("c"), .d = input.Word("d"), .e = input.Word("e")};
            return 0;
          });
    });
  });
}

int Handle(State& state, const Input<"DelMRoutingRemoteRcvrs">& input) {
  return OnInstance(state, input, [&](Instance& instance) {
    return Leave(instance, input.Word("a"),
                 [&](McastGroup& group) { return group.remoteReceivers.Delete(input.Word("b")); });
  });
}

Answer Handle(const State& state, const Input<"GetMRoutingRemoteRcvrs">& input) {
  return OnInstance(state, input, [key = input.Word("key")](const Instance& instance) {
    return CountedTableAnswer<kRemoteReceiver>(
        GroupOf(instance, key).remoteReceivers,
        [key](auto record, uint32_t b, const RemoteReceiver& receiver) {
          record.Number("b", b)
              .Number("a", key)
              .Number("d", receiver.d)
              .Number("e", receiver.e)
              .Mac("c", receiver.c);
        });
  });
}

Answer Handle(const State& state, const Input<"GetMRoutingDomain">& input) {
  return OnInstance(state, input, [&](const Instance& instance) {
    return RecordAnswer<vdrzax::kMRoutingDomain>(ShowDomain, input.Text("instanceName"), instance);
  });
}

Answer Handle(const State& state, const Input<"GetMRoutingAllMcastGroups">& input) {
  return OnInstance(state, input, [](const Instance& instance) {
    return TableAnswer<vdrzax::kMRoutingMcastGroup>(instance.multicast.groups, ShowMcastGroup);
  });
}

// Packets for a group go to the first of its remote receivers, which hands them on.
Answer Handle(const State& state, const Input<"GetMRoutingReplicationIP">& input) {
  return OnInstance(state, input, [&](const Instance& instance) {
    const auto receivers = GroupOf(instance, input.Word("key")).remoteReceivers;
    return receivers.IsEmpty() ? Answer{.error = ENOENT} : NumberAnswer(receivers.begin()->first);
  });
}

int Handle(State& state, const Input<"AddMRoutingMRouter">& input) {
  return OnInstance(state, input,
                    [&](Instance& instance) { instance.multicast.router = input.Word("ip"); });
}

int Handle(State& state, const Input<"DelMRoutingMRouter">& input) {
  return OnInstance(state, input, [&](Instance& instance) {
    if (!instance.multicast.router) return ENOENT;
    instance.multicast.router.reset();
    return 0;
  });
}

// It is the same whatever the key.
Answer Handle(const State& state, const Input<"GetMRoutingMRouterIP">& input) {
  return OnInstance(state, input, [](const Instance& instance) {
    const auto& router = instance.multicast.router;
    return router ? NumberAnswer(*router) : Answer{.error = ENOENT};
  });
}

}  // namespace vdrsim
