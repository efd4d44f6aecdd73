#pragma once

#include <cstddef>
#include <cstdint>

#include "channel/record_layout.h"
#include "datapath/caps.h"
#include "datapath/e2i_state.h"
#include "datapath/record_writer.h"
#include "e2i/e2i_entry_record.h"

// Where the protocol leaves a layout to the datapath, it is the simulation's own.
namespace vdrsim {

inline constexpr vdrzax::Field kE2iRows[] = {
    vdrzax::U32("key", 0),     vdrzax::U32("value2", 4),  vdrzax::Mac("mac", 8),
    vdrzax::U32("value4", 14), vdrzax::U32("value5", 18), vdrzax::Skipped("unused", 22, 4),
};
inline constexpr vdrzax::RecordLayout kE2i{"E2i", vdrzax::kE2IEntry.size, kE2iRows};
static_assert(Tiles(kE2i));

inline constexpr vdrzax::Field kPhysicalMacRows[] = {
    vdrzax::Mac("mac", 0),
    vdrzax::Skipped("unused6", 6, 2),
    vdrzax::U32("value", 8),
    vdrzax::Skipped("unused12", 12, 4),
};
inline constexpr vdrzax::RecordLayout kPhysicalMac{"PhysicalMac", 16, kPhysicalMacRows};
static_assert(Tiles(kPhysicalMac));

inline constexpr vdrzax::Field kFlRows[] = {
    vdrzax::Mac("mac", 0),
    vdrzax::U16("selector", 6),
    vdrzax::U32("number", 8),
    vdrzax::Skipped("unused", 12, 40),
};
inline constexpr vdrzax::RecordLayout kFl{"Fl", 52, kFlRows};
static_assert(Tiles(kFl));

inline constexpr vdrzax::Field kLocaleIdRows[] = {vdrzax::Text("name", 0, 16)};
inline constexpr vdrzax::RecordLayout kLocaleId{"LocaleId", 16, kLocaleIdRows};
static_assert(Tiles(kLocaleId));

// What replies have room for.
static_assert(kMostPhysicalMacs == 131072 / kPhysicalMac.size);
static_assert(kMostE2i * kFl.size <= 426080 && kMostPhysicalMacs * kFl.size <= 426080);

inline void ShowE2i(RecordWriter<kE2i> record, uint32_t key, const E2i& entry) {
  record.Number("key", key)
      .Number("value2", entry.value2)
      .Mac("mac", entry.mac)
      .Number("value4", entry.value4)
      .Number("value5", entry.value5);
}

}  // namespace vdrsim
