#pragma once

#include <cstddef>
#include <string_view>

#include "datapath/lif_state.h"
#include "datapath/record_writer.h"
#include "lif/lif_record.h"

namespace vdrsim {

// What a list of LIFs has room for, for each instance.
inline constexpr size_t kMostLifs = 10000;
// What a record has room for.
inline constexpr size_t kMostLifAddresses = 10;
inline constexpr size_t kMostRelayServers = 8;

void ShowLif(RecordWriter<vdrzax::kLifRecord> record, std::string_view name, const Lif& lif);

// The same with the mark of a bridge LIF.
void ShowBridgeLif(RecordWriter<vdrzax::kLifRecord> record, std::string_view name, const Lif& lif);

}  // namespace vdrsim
