#pragma once

#include <vdrzax/channel.h>

#include <concepts>
#include <cstdint>
#include <cstdlib>
#include <type_traits>

#include "channel/failure.h"
#include "channel/record_decoder.h"
#include "channel/request.h"

// The three ways to read from the datapath: a scalar, a record, a list of records. Each keeps the
// order that callers can observe: allocate, fill the request, send, allocate the result, store its
// address, decode, free. Argument tests stand before them, in the exported functions.

namespace vdrzax {

// Reads one u32. The local is not pre-set and the length of the reply is not examined: what the
// kernel leaves is what the caller gets, and nothing is written when the command fails.
inline int GetScalar(CommandCode code, uint32_t* out) {
  uint32_t value;
  uint32_t length = sizeof value;
  if (Exchange(code, nullptr, 0, &value, length) != 0) return -1;
  *out = value;
  return 0;
}

// Sends a filled request and turns the reply into a record of the caller's. Takes over `reply`, a
// buffer of one record.
template <Decoder kDecode, auto kRelease, typename Record>
int ReceiveRecord(const Request& request, CommandCode code, void* reply, Record** out) {
  uint32_t length = sizeof(Record);
  if (request.Receive(code, reply, length) != 0) {
    std::free(reply);
    return -1;
  }
  auto* record = static_cast<Record*>(std::calloc(1, sizeof(Record)));
  *out = record;
  if (!record) {
    std::free(reply);
    return OutOfMemory();
  }
  const int32_t consumed = kDecode(static_cast<const uint8_t*>(reply), static_cast<int32_t>(length),
                                   reinterpret_cast<uint8_t*>(record));
  if (consumed == -1) {
    kRelease(record);
    *out = nullptr;
  }
  std::free(reply);
  return consumed == -1 ? -1 : 0;
}

// Reads one record. `fill` completes the request after the reply buffer was allocated, so that a
// failed allocation is reported before any untested argument is read.
template <Decoder kDecode, auto kRelease, typename Record, std::invocable<Request&> Fill>
int GetRecord(CommandCode code, Record** out, Fill fill) {
  void* reply = std::malloc(sizeof(Record));
  if (!reply) return OutOfMemory();
  Request request;
  fill(request);
  return ReceiveRecord<kDecode, kRelease>(request, code, reply, out);
}

// The same for the few commands that fill their request first.
template <Decoder kDecode, auto kRelease, typename Record>
int GetRecord(CommandCode code, Record** out, const Request& request) {
  void* reply = std::malloc(sizeof(Record));
  if (!reply) return OutOfMemory();
  return ReceiveRecord<kDecode, kRelease>(request, code, reply, out);
}

// What becomes of the caller's header when the command of a list fails. Dropping it loses 16 bytes;
// agents that hold on to the header they passed to an exported fetch depend on its surviving.
enum class HeaderOnFailure { Free, Drop };

// What becomes of a record in which the reply ends: the list is refused, or the record taken whole.
enum class CutRecord { Refuse, Take };

// The kind of a list: its records, their cap, and who releases it.
template <typename RecordType, const RecordLayout& kRecordLayout>
struct ListKind {
  using Record = RecordType;
  static constexpr const RecordLayout& Layout() { return kRecordLayout; }
  int32_t cap;
  void (*release)(RecordList*);
  HeaderOnFailure onFailedCommand = HeaderOnFailure::Free;
  CutRecord onCutRecord = CutRecord::Refuse;
};

// Decodes a reply into new entries of `list`. A length of 2^31 and more is negative here and gives
// an empty list; records beyond the cap are ignored.
template <const auto& kKind>
int DecodeList(const uint8_t* reply, int32_t length, RecordList* list) {
  using Kind = std::remove_cvref_t<decltype(kKind)>;
  constexpr auto kSize = static_cast<int32_t>(sizeof(typename Kind::Record));
  static_assert(Kind::Layout().size == kSize);
  list->count = 0;
  list->entries = std::calloc(static_cast<std::size_t>(kKind.cap), kSize);
  if (!list->entries) return OutOfMemory();
  if (length <= 0) return 0;

  const int32_t whole = length / kSize;
  const bool endsInRecord = whole < kKind.cap && length % kSize != 0;
  list->count = whole < kKind.cap ? whole : kKind.cap;
  if constexpr (kKind.onCutRecord == CutRecord::Take) {
    if (endsInRecord) ++list->count;
  }
  CopyRecords<Kind::Layout()>(reply, static_cast<uint8_t*>(list->entries),
                              static_cast<std::size_t>(list->count));
  return kKind.onCutRecord == CutRecord::Refuse && endsInRecord ? ShortReply() : 0;
}

// Fills the header of the caller. On failure the whole list is gone, but for a header that the kind
// leaves to the caller when the command itself fails.
template <const auto& kKind, std::invocable<Request&> Fill>
int FetchList(CommandCode code, RecordList* list, Fill fill) {
  using Record = typename std::remove_cvref_t<decltype(kKind)>::Record;
  uint32_t length = static_cast<uint32_t>(kKind.cap) * sizeof(Record);
  auto* reply = static_cast<uint8_t*>(std::malloc(length));
  if (!reply) {
    std::free(list);
    return OutOfMemory();
  }
  Request request;
  fill(request);
  if (request.Receive(code, reply, length) != 0) {
    if constexpr (kKind.onFailedCommand == HeaderOnFailure::Free) std::free(list);
    std::free(reply);
    return -1;
  }
  const int result = DecodeList<kKind>(reply, static_cast<int32_t>(length), list);
  if (result != 0) kKind.release(list);
  std::free(reply);
  return result;
}

// Allocates the header, stores it in the caller's pointer and has `fetch` fill it. The pointer is
// NULL after any failure.
template <std::invocable<RecordList*> Fetch>
int GetList(RecordList** out, Fetch fetch) {
  auto* list = static_cast<RecordList*>(std::calloc(1, sizeof(RecordList)));
  *out = list;
  if (!list) return OutOfMemory();
  const int result = fetch(list);
  if (result != 0) *out = nullptr;
  return result;
}

// The usual list getter: a new header and one fetch.
template <const auto& kKind, std::invocable<Request&> Fill>
int GetList(CommandCode code, RecordList** out, Fill fill) {
  return GetList(out, [&](RecordList* list) { return FetchList<kKind>(code, list, fill); });
}

// The common list Release: entries, then header.
inline void ReleaseList(RecordList* list) {
  if (!list) return;
  if (list->entries) std::free(list->entries);
  std::free(list);
}

}  // namespace vdrzax
