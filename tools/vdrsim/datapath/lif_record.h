#pragma once

#include <cstddef>
#include <string_view>

#include "datapath/lif_state.h"
#include "datapath/record_writer.h"
#include "lif/lif_record.h"

namespace vdrsim {

void ShowLif(RecordWriter<vdrzax::kLifRecord> record, std::string_view name, const Lif& lif);

// The same with the mark of a bridge LIF.
void ShowBridgeLif(RecordWriter<vdrzax::kLifRecord> record, std::string_view name, const Lif& lif);

}  // namespace vdrsim
