#include <vdrzax/instance.h>

#include "channel/getters.h"
#include "instance/stats_record.h"

namespace {

using namespace vdrzax;

int32_t DecodeStats(const uint8_t* source, int32_t remaining, uint8_t* destination);

int GetStats(CommandCode code, StatsRecord** out, const Request& request) {
  return GetRecord<DecodeStats, VDRZAX_ReleaseStats>(code, out, request);
}

}  // namespace

int VDRZAX_GetVdrInstanceCPStats(const char* name, StatsRecord** out) {
  if (!name) return InvalidArgument();
  return GetStats(CommandCode::GetVdrInstanceCPStats, out, Request{}.Text(kInstanceName, name));
}

int VDRZAX_ResetVdrInstanceCPStats(const char* name) {
  if (!name) return InvalidArgument();
  return Request{}.Text(kInstanceName, name).Send(CommandCode::ResetVdrInstanceCPStats);
}

int VDRZAX_GetLifStats(const char* instanceName, const char* interfaceName, StatsRecord** out) {
  if (!instanceName) return InvalidArgument();
  return GetStats(CommandCode::GetLifStats, out,
                  Request{}.Text(kInstanceName, instanceName).Text(kLifName, interfaceName));
}

int VDRZAX_GetLifStatsCached(const char* instanceName, const char* interfaceName,
                             StatsRecord** out) {
  if (!instanceName) return InvalidArgument();
  return GetStats(CommandCode::GetLifStats, out,
                  Request{}
                      .Text(kInstanceName, instanceName)
                      .Text(kLifName, interfaceName)
                      .Put<552>(uint32_t{1}));
}

int VDRZAX_ResetLifStats(const char* instanceName, const char* interfaceName) {
  if (!instanceName) return InvalidArgument();
  return Request{}
      .Text(kInstanceName, instanceName)
      .Text(kLifName, interfaceName)
      .Send(CommandCode::ResetLifStats);
}

int VDRZAX_GetVdrDiStats(StatsRecord** out) {
  return GetStats(CommandCode::GetVdrDiStats, out, Request{});
}

int VDRZAX_ResetVdrDiStats() { return Request{}.Send(CommandCode::ResetVdrDiStats); }

void VDRZAX_ReleaseStats(StatsRecord* record) { std::free(record); }

namespace {

constexpr std::size_t OffsetOfSlot(std::size_t slot) {
  return offsetof(StatsRecord, slots) + 8 * slot;
}

int32_t DecodeStats(const uint8_t* source, int32_t remaining, uint8_t* destination) {
  if (remaining < static_cast<int32_t>(sizeof(StatsRecord))) return ShortReply();
  uint32_t type;
  std::memcpy(&type, source, sizeof type);
  switch (type) {
    case 0:
      return DecodeRecord<kStatsOfType0>(source, remaining, destination);
    case 1: {
      const int32_t consumed = DecodeRecord<kStatsOfType1>(source, remaining, destination);
      // Agents read slot 89 under both numbers and rely on their being equal.
      std::memcpy(destination + OffsetOfSlot(90), source + OffsetOfSlot(89), 8);
      return consumed;
    }
    case 3:
      return DecodeRecord<kStatsOfType3>(source, remaining, destination);
    default:
      return DecodeRecord<kStatsOfOtherTypes>(source, remaining, destination);
  }
}

}  // namespace
