#pragma once

#include <vdrzax/services.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kVMPublicIPItemRows[] = {
    U32("item", 0),
};

inline constexpr RecordLayout kVMPublicIPItem{"VMPublicIPItem", 4, kVMPublicIPItemRows};
static_assert(Tiles(kVMPublicIPItem));

// The largest entry. One of fewer items ends behind its last item.
inline constexpr Field kVMPublicIPEntryRows[] = {
    Bytes("entryHeader", 0, 14),
    U32("itemCount", 14),
    Entries("items", 18, 256, kVMPublicIPItem, 14, 4),
};

inline constexpr RecordLayout kVMPublicIPEntry{"VMPublicIPEntry", sizeof(VMPublicIPEntry),
                                               kVMPublicIPEntryRows};
static_assert(Tiles(kVMPublicIPEntry));

}  // namespace vdrzax
