#pragma once

#include <vdrzax/instance.h>

#include "channel/record_layout.h"

namespace vdrzax {

inline constexpr Field kInstanceRows[] = {
    Text("name", 0, 64),
    U32("word64", 64),
    U32("word68", 68),
    U8("byte72", 72),
    Text("text73", 73, 256),
    Text("text329", 329, 64),
    Mac("address393", 393),
    U32("word399", 399),
    U32("word403", 403),
    U32("word407", 407),
    U8("byte411", 411),
    U16("half412", 412),
    Skipped("skipped414", 414, 2),
    U8("byte416", 416),
    U8("byte417", 417),
    Numbers("bytes418", 418, 1, 13),
    Numbers("words431", 431, 4, 4),
    Mac("address447", 447),
    U8("byte453", 453),
    U16("half454", 454),
    U8("byte456", 456),
    Text("text457", 457, 64),
    U16("half521", 521),
    Bytes("bytes523", 523, 40),
    U32("word563", 563),
    U8("byte567", 567),
    U32("word568", 568),
    U32("word572", 572),
    U8("byte576", 576),
};

inline constexpr RecordLayout kInstanceRecord{"InstanceRecord", sizeof(InstanceRecord),
                                              kInstanceRows};
static_assert(Tiles(kInstanceRecord));

}  // namespace vdrzax
