#pragma once

#include "requests/request.h"

namespace vdrsim::requests {

inline constexpr Request kE2iRequests[] = {
    Request(72, "DumpFLTable", Reads, {U16("selector", 256)}, 426080),
    Request(73, "GetPmac", Reads, Form::Block, 131072),
    Request(74, "AddPmac", Sets, {U32("value", 256), Mac("mac", 260)}),
    Request(75, "DelPmac", Deletes, {Mac("mac", 260)}),
    Request(86, "GetLocaleId", Reads, Form::Block, 16),
    Request(161, "AddE2I", Sets,
            {U32("key", 256), U32("value2", 260), Mac("mac", 264), U32("value4", 272),
             U32("value5", 276)}),
    Request(162, "DelE2I", Deletes, {U32("key", 256)}),
    Request(163, "DelAllE2I", Deletes, Form::Block),
    Request(164, "GetE2ITable", Reads, Form::Block, 4 + 8192 * 26),
    Request(165, "GetE2IEntry", Reads, {U32("key", 256)}, 26),
};

}  // namespace vdrsim::requests
