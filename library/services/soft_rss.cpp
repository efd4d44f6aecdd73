// A trusted count may take a copy past the array that it begins in; a fortified one would abort.
#undef _FORTIFY_SOURCE

#include <vdrzax/services.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "channel/failure.h"
#include "channel/record_decoder.h"
#include "channel/request.h"
#include "services/soft_rss_stats_record.h"

namespace {

using namespace vdrzax;

// Software RSS objects belong to no instance: their name stands where other commands have a key.
constexpr TextSlot<256> kObjectName;

constexpr uint32_t kIndTableSize = sizeof(SoftRssIndTable::entries);

int CopyStats(const void* reply, SoftRssStats** out);

}  // namespace

int VDRZAX_SoftRSSGetStats(const char* name, SoftRssStats** out) {
  if (!name) return InvalidArgument();
  Request request;
  request.Text(kObjectName, name);
  void* reply = std::malloc(sizeof(SoftRssStats));
  if (!reply) return OutOfMemory();
  int result = request.SendInto(CommandCode::SoftRSSGetStats, reply, sizeof(SoftRssStats));
  if (result == 0) result = CopyStats(reply, out);
  std::free(reply);
  return result;
}

int VDRZAX_SoftRSSStatsReset(const char* name) {
  if (!name) return InvalidArgument();
  return Request{}.Text(kObjectName, name).Send(CommandCode::SoftRSSStatsReset);
}

// The caller's structure is overwritten whatever the result, so that tunables of an earlier call
// are never taken for current ones.
int VDRZAX_SoftRSSGetTunables(const char* name, SoftRssTunables* out) {
  if (!name) return InvalidArgument();
  void* reply = std::malloc(sizeof *out);
  if (!reply) return OutOfMemory();
  const int result = Request{}
                         .Text(kObjectName, name)
                         .SendInto(CommandCode::SoftRSSGetTunables, reply, sizeof *out);
  std::memcpy(out, reply, sizeof *out);
  std::free(reply);
  return result;
}

int VDRZAX_SoftRSSSetTunables(const char* name, const SoftRssTunables* in) {
  if (!name) return InvalidArgument();
  // The kernel sets the word behind these eight bytes itself.
  return Request{}.Text(kObjectName, name).Bytes<320, 8>(in).Send(CommandCode::SoftRSSSetTunables);
}

int VDRZAX_SoftRSSGetIndTable(const char* name, uint8_t* table) {
  if (!name) return InvalidArgument();
  void* reply = std::malloc(kIndTableSize);
  if (!reply) return OutOfMemory();
  const int result = Request{}
                         .Text(kObjectName, name)
                         .SendInto(CommandCode::SoftRSSGetIndTable, reply, kIndTableSize);
  if (result == 0) std::memcpy(table, reply, kIndTableSize);
  std::free(reply);
  return result;
}

// More than 128 entries run over the count, with the count itself: it stands right behind them in
// the request and in the caller's structure alike.
int VDRZAX_SoftRSSTableSet(const char* name, const SoftRssIndTable* in) {
  if (!name) return InvalidArgument();
  const int32_t count = in->entryCount;
  return Request{}
      .Text(kObjectName, name)
      .Put<448>(count)
      .CountedBytes<320>(in, static_cast<std::size_t>(std::max(count, 0)))
      .Send(CommandCode::SoftRSSTableSet);
}

namespace {

// The record comes from malloc: what the kernel did not count stays as it is. The length of the
// reply is not examined.
int CopyStats(const void* reply, SoftRssStats** out) {
  auto* record = static_cast<SoftRssStats*>(std::malloc(sizeof(SoftRssStats)));
  *out = record;
  if (!record) return OutOfMemory();
  decoder::CopyRecord<kSoftRssStats>(static_cast<const uint8_t*>(reply),
                                     reinterpret_cast<uint8_t*>(record));
  return 0;
}

}  // namespace
