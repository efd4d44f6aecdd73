#include <vdrzax/e2i.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include "getters.h"
#include "require.h"

namespace {

const getters::OtherGetter& kEntry = getters::Other("VDRZAX_GetE2IEntry");
const getters::OtherGetter& kTable = getters::Other("VDRZAX_GetE2ITable");

// The reply must be of exactly one entry, unlike that of other records.
void Entry(const Case& input) {
  const device::Reply reply = input.Answer(static_cast<uint32_t>(kEntry.size));
  auto* entry = static_cast<E2IEntry*>(Untouched());
  const Outcome outcome = Call(input, reply, [&] { return VDRZAX_GetE2IEntry(7, &entry); });
  if (input.failingAllocation == 1) {
    RequireNothingSent();
    RequireFailure(outcome, ENOMEM);
    return Require(entry == Untouched(), "the pointer is not touched without a reply buffer");
  }
  RequireSent(input, kEntry);
  if (input.CommandFails() || reply.length != kEntry.size) {
    RequireFailure(outcome, input.CommandFails() ? input.CommandError() : EBADMSG);
    return Require(entry == Untouched(), "the pointer is not touched without an entry");
  }
  if (input.failingAllocation == 2) {
    RequireFailure(outcome, ENOMEM);
    return Require(entry == nullptr, "the pointer is NULL without memory");
  }
  RequireSuccess(outcome);
  RequireLive({kEntry.size});
  RequireWritten(entry, kEntry.size, reply);
  std::free(entry);
}

// The count is trusted to be written and to be that of entries for which the reply has room.
void TrustCount(device::Reply& reply) {
  reply.bytes.resize(std::max<std::size_t>(reply.bytes.size(), 4));
  const auto count = NumberAt<int32_t>(reply, 0);
  const auto most = static_cast<int32_t>(kTable.cap);
  if (count > most) PutNumber(reply, 0, count % (most + 1));
}

void Table(const Case& input) {
  device::Reply reply = input.Answer(static_cast<uint32_t>(kTable.Capacity()));
  TrustCount(reply);
  const auto count = NumberAt<int32_t>(reply, 0);
  auto* table = static_cast<E2ITable*>(Untouched());
  const Outcome outcome = Call(input, reply, [&] { return VDRZAX_GetE2ITable(&table); });
  if (input.failingAllocation == 1) {
    RequireNothingSent();
    RequireFailure(outcome, ENOMEM);
    return Require(table == Untouched(), "the pointer is not touched without a reply buffer");
  }
  RequireSent(input, kTable);
  if (input.CommandFails() || reply.length > kTable.Capacity()) {
    RequireFailure(outcome, input.CommandFails() ? input.CommandError() : EBADMSG);
    return Require(table == Untouched(), "the pointer is not touched without a table");
  }
  if (input.failingAllocation != 0 || count < 0) {
    RequireFailure(outcome, ENOMEM);
    return Require(table == nullptr, "the pointer is NULL without memory");
  }
  RequireSuccess(outcome);
  const std::size_t size = static_cast<std::size_t>(count) * kTable.size;
  RequireLive({12, size});
  Require(table->count == count, "the count is that of the reply");
  const std::size_t written = std::min(size, reply.bytes.size() - 4);
  Require(AreSame(table->entries, reply.bytes.data() + 4, written),
          "the entries are those of the reply");
  VDRZAX_ReleaseE2ITable(table);
  // An allocation of no bytes stays behind.
  if (count == 0) RequireLost({0});
}

}  // namespace

const std::vector<Subject>& Subjects() {
  static const auto subjects =
      SubjectsOf(getters::E2i(), {}, {{kEntry.name, Entry}, {kTable.name, Table}});
  return subjects;
}
