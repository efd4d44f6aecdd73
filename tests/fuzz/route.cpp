#include <vdrzax/route.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <utility>

#include "getters.h"
#include "require.h"
#include "route/demux_route_record.h"
#include "route/route_record.h"

namespace {

using namespace vdrzax;

const getters::OtherGetter& kTable = getters::Other("VDRZAX_GetRoutesv6");

// Two commands: the first four bytes of the payload answer the count, the rest is the table.
void Ipv6Routes(const Case& input) {
  constexpr uint32_t kNoCount = 0x5C5C5C5C;
  const auto first = input.payload.first(std::min<std::size_t>(4, input.payload.size()));
  device::Reply counted = {.bytes = {first.begin(), first.end()}, .length = 4};
  // Trusted to be written: the variable behind it is not set before.
  counted.bytes.resize(4);
  const auto routes = NumberAt<int32_t>(counted, 0);
  const auto capacity = static_cast<uint32_t>(kTable.size * (routes < 20000 ? kTable.cap : 30000));
  device::Reply replies[] = {counted, input.Answer(capacity, input.payload.subspan(first.size()))};
  if (!input.failsLater) {
    replies[0].result = std::exchange(replies[1].result, 0);
    replies[0].error = input.error;
  }

  void* table = Untouched();
  uint32_t count = kNoCount;
  const Outcome outcome =
      Call(input, replies, [&] { return VDRZAX_GetRoutesv6("edge-1", &table, &count); });
  if (input.openError != 0 || replies[0].Fails() || routes >= 30000) {
    Require(device::Commands().size() == (input.openError != 0 ? 0 : 1), "the count alone is sent");
    RequireFailure(outcome, ENOMEM);
    Require(table == Untouched(), "the table is not touched without a count");
    return Require(count == kNoCount, "the count is not touched without a count");
  }
  if (input.failingAllocation == 1) {
    Require(device::Commands().size() == 1, "the count alone is sent");
    RequireFailure(outcome, ENOMEM);
    Require(table == nullptr, "the table is NULL without memory");
    return Require(count == kNoCount, "the count is not touched without memory");
  }
  Require(device::Commands().size() == 2, "two commands are sent");
  Require(device::Commands()[0].code == 115 && device::Commands()[0].capacity == 4,
          "the first asks for the count");
  Require(device::Commands()[1].code == kTable.code && device::Commands()[1].capacity == capacity,
          "the second asks for the table");
  Require(count == replies[1].length / kTable.size, "the count is the length in records");
  if (replies[1].Fails()) return RequireFailure(outcome, input.error);
  RequireSuccess(outcome);
  RequireLive({capacity});
  RequireWritten(table, capacity, replies[1]);
  std::free(table);
}

}  // namespace

const std::vector<Subject>& Subjects() {
  static const auto subjects = SubjectsOf(getters::Route(),
                                          {{"VDRZAX_GetResolveRoute", Expected<kRouteRecord>},
                                           {"VDRZAX_GetRoutes", Expected<kRouteRecord>},
                                           {"VDRZAX_GetLifSelectionRoutes", Expected<kRouteRecord>},
                                           {"VDRZAX_GetDemuxRoutes", Expected<kDemuxRouteRecord>}},
                                          {{kTable.name, Ipv6Routes}});
  return subjects;
}
