#include "datapath/e2i_handlers.h"

#include <optional>

#include "datapath/answers.h"
#include "datapath/caps.h"
#include "datapath/e2i_record.h"
#include "datapath/objects.h"

namespace vdrsim {

namespace {

enum FlTable : uint16_t { kE2iByKey = 0, kPhysicalMacs = 1 };

void ShowFl(RecordWriter<kFl> record, FlTable table, const MacAddress& mac, uint32_t number) {
  record.Mac("mac", mac).Number("selector", table).Number("number", number);
}

// A request without an address has zeros in its place.
template <size_t Index>
std::optional<MacAddress> NamedMac(const InputOf<Index>& input) {
  const MacAddress mac = input.Mac("mac");
  return mac == MacAddress{} ? std::nullopt : std::optional(mac);
}

}  // namespace

int Handle(State& state, const Input<"AddE2I">& input) {
  return state.e2iEntries.Set(input.Word("key"), kMostE2i, [&](E2i& entry) {
    entry = {.value2 = input.Word("value2"),
             .mac = input.Mac("mac"),
             .value4 = input.Word("value4"),
             .value5 = input.Word("value5")};
    return 0;
  });
}

int Handle(State& state, const Input<"DelE2I">& input) {
  return state.e2iEntries.Delete(input.Word("key"));
}

int Handle(State& state, const Input<"DelAllE2I">&) {
  state.e2iEntries.Clear();
  return 0;
}

Answer Handle(const State& state, const Input<"GetE2ITable">&) {
  return CountedTableAnswer<kE2i>(state.e2iEntries, ShowE2i);
}

Answer Handle(const State& state, const Input<"GetE2IEntry">& input) {
  const uint32_t key = input.Word("key");
  return OnKey(state.e2iEntries, key,
               [&](const E2i& entry) { return RecordAnswer<kE2i>(ShowE2i, key, entry); });
}

int Handle(State& state, const Input<"AddPmac">& input) {
  const auto mac = NamedMac(input);
  if (!mac) return EINVAL;
  return state.physicalMacs.Set(*mac, kMostPhysicalMacs, [&](PhysicalMac& known) {
    known.value = input.Word("value");
    return 0;
  });
}

int Handle(State& state, const Input<"DelPmac">& input) {
  const auto mac = NamedMac(input);
  return mac ? state.physicalMacs.Delete(*mac) : EINVAL;
}

Answer Handle(const State& state, const Input<"GetPmac">&) {
  return TableAnswer<kPhysicalMac>(
      state.physicalMacs, [](auto record, const MacAddress& mac, const PhysicalMac& known) {
        record.Mac("mac", mac).Number("value", known.value);
      });
}

// There are two tables, and both have an address and a number for each entry.
Answer Handle(const State& state, const Input<"DumpFLTable">& input) {
  switch (input.Half("selector")) {
    case kE2iByKey:
      return TableAnswer<kFl>(state.e2iEntries, [](auto record, uint32_t key, const E2i& entry) {
        ShowFl(record, kE2iByKey, entry.mac, key);
      });
    case kPhysicalMacs:
      return TableAnswer<kFl>(state.physicalMacs,
                              [](auto record, const MacAddress& mac, const PhysicalMac& known) {
                                ShowFl(record, kPhysicalMacs, mac, known.value);
                              });
    default:
      return {.error = ENOENT};
  }
}

Answer Handle(const State&, const Input<"GetLocaleId">&) {
  return RecordAnswer<kLocaleId>([](auto record) { record.Text("name", "vdrsim"); });
}

}  // namespace vdrsim
