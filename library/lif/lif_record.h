#pragma once

#include <vdrzax/lif.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kLifSubEntryRows[] = {
    Numbers("words0", 0, 4, 5),
    U8("byte20", 20),
    Skipped("skipped21", 21, 3),
};

inline constexpr RecordLayout kLifSubEntry{"LifSubEntry", sizeof(LifSubEntry), kLifSubEntryRows};
static_assert(Tiles(kLifSubEntry));

inline constexpr Field kLifRows[] = {
    Text("name", 0, 64),
    Text("auxName", 64, 64),
    U32("word128", 128),
    U32("word132", 132),
    U32("word136", 136),
    U32("word140", 140),
    U16("half144", 144),
    U32("word146", 146),
    U32("word150", 150),
    U32("word154", 154),
    U8("byte158", 158),
    U8("byte159", 159),
    U8("byte160", 160),
    U8("byte161", 161),
    Bytes("blob162", 162, 164),
    Entries("subEntries", 326, 10, kLifSubEntry, 566, 4),
    U32("subEntryCount", 566),
    U8("byte570", 570),
    U8("byte571", 571),
    U32("word572", 572),
    U8("byte576", 576),
    Text("description", 577, 128),
    Skipped("skipped705", 705, 256),
};

inline constexpr RecordLayout kLifRecord{"LifRecord", sizeof(LifRecord), kLifRows};
static_assert(Tiles(kLifRecord));

}  // namespace vdrzax
