#include <vdrzax/services.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include "getters.h"
#include "require.h"

namespace {

const getters::OtherGetter& kStats = getters::Other("VDRZAX_SoftRSSGetStats");
const getters::OtherGetter& kTunables = getters::Other("VDRZAX_SoftRSSGetTunables");
const getters::OtherGetter& kIndTable = getters::Other("VDRZAX_SoftRSSGetIndTable");
const getters::OtherGetter& kEntry = getters::Other("VDRZAX_GetVMPublicIPEntry");
const getters::OtherGetter& kTable = getters::Other("VDRZAX_GetVMPublicIPTable");

uint32_t CapacityOf(const getters::OtherGetter& getter) {
  return static_cast<uint32_t>(getter.Capacity());
}

// 16 counters fit an array, and up to 65 lie over what is behind it within the record. The count
// is trusted to be written, because the length of the reply is not looked at.
void TrustQueueCount(device::Reply& reply) {
  reply.bytes.resize(std::max<std::size_t>(reply.bytes.size(), 8));
  TrustCounts(reply, kStats.size, {.offset = 4, .width = 4, .most = 16}, 65);
}

// The record is not zero where nothing was copied, so only what was copied is compared.
void ReadStats(const Case& input) {
  device::Reply reply = input.Answer(CapacityOf(kStats));
  TrustQueueCount(reply);
  auto* stats = static_cast<SoftRssStats*>(Untouched());
  const Outcome outcome =
      Call(input, reply, [&] { return VDRZAX_SoftRSSGetStats("edge-1", &stats); });
  if (input.failingAllocation == 1) {
    RequireNothingSent();
    RequireFailure(outcome, ENOMEM);
    return Require(stats == Untouched(), "the pointer is not touched without a reply buffer");
  }
  RequireSent(input, kStats);
  if (input.CommandFails()) {
    RequireFailure(outcome, input.CommandError());
    return Require(stats == Untouched(), "the pointer is not touched by a failed command");
  }
  if (input.failingAllocation == 2) {
    RequireFailure(outcome, ENOMEM);
    return Require(stats == nullptr, "the pointer is NULL without a record");
  }
  RequireSuccess(outcome);
  RequireLive({kStats.size});
  const auto* record = reinterpret_cast<const uint8_t*>(stats);
  const auto same = [&](std::size_t offset, std::size_t size) {
    const std::size_t end = std::min(offset + size, reply.bytes.size());
    for (; offset < end; ++offset) {
      Require(record[offset] == reply.bytes[offset], "the counters are those of the reply");
    }
  };
  same(4, 4);
  const auto queues = NumberAt<uint32_t>(reply, 4);
  same(8, std::size_t{queues} * 4);
  for (const std::size_t offset : {76U, 204U, 332U}) same(offset, std::size_t{queues} * 8);
  std::free(stats);
}

void ReadTunables(const Case& input) {
  const device::Reply reply = input.Answer(CapacityOf(kTunables));
  SoftRssTunables tunables = {.qword0 = 0x5C5C, .word8 = 0x5C5C};
  const Outcome outcome =
      Call(input, reply, [&] { return VDRZAX_SoftRSSGetTunables("edge-1", &tunables); });
  if (input.failingAllocation == 1) {
    RequireNothingSent();
    RequireFailure(outcome, ENOMEM);
    return Require(tunables.qword0 == 0x5C5C && tunables.word8 == 0x5C5C,
                   "the tunables are not touched without memory");
  }
  RequireSent(input, kTunables);
  // They are overwritten by a failed command too.
  if (input.openError == 0) RequireWritten(&tunables, sizeof tunables, reply);
  if (input.CommandFails()) return RequireFailure(outcome, input.CommandError());
  RequireSuccess(outcome);
}

void ReadIndirectionTable(const Case& input) {
  const device::Reply reply = input.Answer(CapacityOf(kIndTable));
  uint8_t table[128] = {};
  const Outcome outcome =
      Call(input, reply, [&] { return VDRZAX_SoftRSSGetIndTable("edge-1", table); });
  if (outcome.result != 0) {
    Require(std::all_of(std::begin(table), std::end(table), [](uint8_t byte) { return byte == 0; }),
            "a failure leaves the table");
  }
  if (input.failingAllocation == 1) {
    RequireNothingSent();
    return RequireFailure(outcome, ENOMEM);
  }
  RequireSent(input, kIndTable);
  if (input.CommandFails()) return RequireFailure(outcome, input.CommandError());
  RequireSuccess(outcome);
  RequireWritten(table, sizeof table, reply);
}

// A malformed reply leaves errno as it was.
void RequireRefused(const Outcome& outcome) {
  Require(outcome.result == -1, "it fails");
  Require(outcome.error == kUntouched, "errno is as it was");
}

int64_t EntrySize(const device::Reply& reply, std::size_t offset) {
  return 18 + int64_t{4} * NumberAt<uint32_t>(reply, offset + 14);
}

void PublicIpEntry(const Case& input) {
  device::Reply reply = input.Answer(CapacityOf(kEntry));
  auto* entry = static_cast<VMPublicIPEntry*>(Untouched());
  const Outcome outcome = Call(input, reply, [&] { return VDRZAX_GetVMPublicIPEntry(7, &entry); });
  if (outcome.result != 0) Require(entry == Untouched(), "a failure leaves the pointer");
  if (input.failingAllocation == 1) {
    RequireNothingSent();
    return RequireFailure(outcome, ENOMEM);
  }
  RequireSent(input, kEntry);
  if (input.CommandFails()) {
    RequireFailure(outcome, input.CommandError());
    return RequireLost({kEntry.size});
  }
  // The memory is zero where nothing was written.
  reply.bytes.resize(kEntry.size);
  if (SignedLength(reply) < EntrySize(reply, 0)) return RequireRefused(outcome);
  RequireSuccess(outcome);
  RequireLive({kEntry.size});
  RequireWritten(entry, kEntry.size, reply);
  VDRZAX_ReleaseVMPublicIPEntry(entry);
}

bool HoldsWholeEntries(const device::Reply& reply) {
  const int64_t length = SignedLength(reply);
  if (length >= 0 && length < 4) return false;
  int64_t end = 4;
  for (auto entries = NumberAt<uint32_t>(reply, 0); entries > 0; --entries) {
    if (length < end + 18) return false;
    end += EntrySize(reply, static_cast<std::size_t>(end));
    if (length < end) return false;
  }
  return true;
}

const uint32_t kTableCapacity = CapacityOf(kTable);

// The memory is zero where nothing is written, so the whole room may be claimed. A length beyond it
// would be walked to its end; the kernel is trusted there.
device::Reply TableAnswer(const Case& input) {
  device::Reply reply = input.Answer(kTableCapacity);
  if (input.claims && input.claim <= INT32_MAX) reply.length = input.claim % (kTableCapacity + 1);
  return reply;
}

void PublicIpTable(const Case& input) {
  const device::Reply reply = TableAnswer(input);
  auto* table = static_cast<VMPublicIPTable*>(Untouched());
  const Outcome outcome = Call(input, reply, [&] { return VDRZAX_GetVMPublicIPTable(&table); });
  if (outcome.result != 0) Require(table == Untouched(), "a failure leaves the pointer");
  if (input.failingAllocation == 1) {
    RequireNothingSent();
    return RequireFailure(outcome, ENOMEM);
  }
  RequireSent(input, kTable);
  if (input.CommandFails()) {
    RequireFailure(outcome, input.CommandError());
    return RequireLost({kTableCapacity});
  }
  if (!HoldsWholeEntries(reply)) return RequireRefused(outcome);
  RequireSuccess(outcome);
  RequireLive({kTableCapacity});
  RequireWritten(table, kTableCapacity, reply);
  VDRZAX_ReleaseVMPublicIPTable(table);
}

}  // namespace

const std::vector<Subject>& Subjects() {
  static const auto subjects = SubjectsOf(getters::Services(), {},
                                          {{kStats.name, ReadStats},
                                           {kTunables.name, ReadTunables},
                                           {kIndTable.name, ReadIndirectionTable},
                                           {kEntry.name, PublicIpEntry},
                                           {kTable.name, PublicIpTable}});
  return subjects;
}
