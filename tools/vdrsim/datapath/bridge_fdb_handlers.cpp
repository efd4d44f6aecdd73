#include "bridge/bridge_fdb_record.h"
#include "datapath/answers.h"
#include "datapath/bridge_handlers.h"
#include "datapath/bridge_objects.h"
#include "datapath/caps.h"
#include "datapath/mac_text.h"

namespace vdrsim {

namespace {

using vdrzax::kBridgeFdbRecord;
using FdbEntries = Table<MacAddress, FdbEntry>;

template <size_t Index>
FdbTableName TableName(const InputOf<Index>& input) {
  return {.segment = input.Word("segment"), .selector = input.Word("selector")};
}

}  // namespace

Answer Handle(const State& state, const Input<"GetBridgeFdbEntries">& input) {
  return OnBridging(state, input, [&](const Bridging& bridging) {
    const FdbTableName name = TableName(input);
    const FdbEntries* entries = bridging.forwarding.Find(name);
    return TableAnswer<kBridgeFdbRecord>(
        entries ? *entries : FdbEntries{},
        [name](auto record, const MacAddress& mac, const FdbEntry& entry) {
          ShowMac(record, "word0", "half4", mac);
          record.Number("half6", name.segment)
              .Number("triple8", name.segment >> 16)
              .Number("flags", entry.flag)
              .Number("word12", entry.value)
              .Number("word16", name.selector);
        });
  });
}

int Handle(State& state, const Input<"BridgeSetFdbEntry">& input) {
  return OnBridging(state, input, [&](Bridging& bridging) {
    const auto mac = ParseMac(input.Text("macText"));
    if (!mac) return EINVAL;
    return bridging.forwarding.Set(TableName(input), kNoCap, [&](FdbEntries& entries) {
      return entries.Set(*mac, kMostFdbEntries, [&](FdbEntry& entry) {
        entry = {.value = input.Word("value"), .flag = input.Byte("flag")};
        return 0;
      });
    });
  });
}

// One that is empty can be cleared as well.
int Handle(State& state, const Input<"BridgeClearFdbTable">& input) {
  return OnBridging(state, input,
                    [&](Bridging& bridging) { bridging.forwarding.Delete(TableName(input)); });
}

}  // namespace vdrsim
