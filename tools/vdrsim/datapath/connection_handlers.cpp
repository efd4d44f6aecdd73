#include "datapath/connection_handlers.h"

#include <algorithm>
#include <span>

#include "channel/record_layout.h"
#include "datapath/answers.h"
#include "datapath/caps.h"
#include "datapath/objects.h"

namespace vdrsim {

namespace {

// The layouts that the protocol leaves to the datapath. One connection alone has no room for all of
// the longest text.
constexpr vdrzax::Field kConnectionRows[] = {
    vdrzax::Text("name", 0, 64),    vdrzax::Text("second", 64, 16), vdrzax::Text("fourth", 80, 18),
    vdrzax::Text("fifth", 98, 32),  vdrzax::U32("seventh", 130),    vdrzax::Mac("vmac", 134),
    vdrzax::Text("sixth", 140, 12),
};
constexpr vdrzax::RecordLayout kConnection{"Connection", 152, kConnectionRows};
static_assert(Tiles(kConnection));

constexpr vdrzax::Field kListedConnectionRows[] = {
    vdrzax::Text("name", 0, 64),     vdrzax::Text("second", 64, 16),
    vdrzax::Text("fourth", 80, 18),  vdrzax::Text("fifth", 98, 32),
    vdrzax::U32("seventh", 130),     vdrzax::Mac("vmac", 134),
    vdrzax::Text("sixth", 140, 256), vdrzax::Skipped("unused", 396, 4),
};
constexpr vdrzax::RecordLayout kListedConnection{"ListedConnection", 400, kListedConnectionRows};
static_assert(Tiles(kListedConnection));

// What the reply of all has room for.
static_assert(kMostConnections == 131072 / kListedConnection.size);

// An address of local administration, made of the number that the connection was given.
MacAddress VmacOf(const Connection& connection) {
  MacAddress mac{std::byte{2}};
  const auto number = std::as_bytes(std::span(&connection.seventh, 1));
  std::ranges::copy(number, mac.begin() + 2);
  return mac;
}

template <const vdrzax::RecordLayout& Layout>
void ShowConnection(RecordWriter<Layout> record, std::string_view name,
                    const Connection& connection) {
  record.Text("name", name)
      .Text("second", connection.second)
      .Text("fourth", connection.fourth)
      .Text("fifth", connection.fifth)
      .Number("seventh", connection.seventh)
      .Mac("vmac", VmacOf(connection))
      .Text("sixth", connection.sixth);
}

}  // namespace

int Handle(State& state, const Input<"PlumbVdrConnection">& input) {
  const auto name = input.ObjectName("connectionName");
  return SetNamed(state.connections, name, kMostConnections, [&](Connection& connection) {
    connection = {.second = std::string(input.Text("second")),
                  .fourth = std::string(input.Text("fourth")),
                  .fifth = std::string(input.Text("fifth")),
                  .sixth = std::string(input.Text("sixth")),
                  .seventh = input.Word("seventh")};
  });
}

int Handle(State& state, const Input<"UnPlumbVdrConnection">& input) {
  return DeleteNamed(state.connections, input.ObjectName("connectionName"));
}

Answer Handle(const State& state, const Input<"GetConnections">&) {
  return TableAnswer<kListedConnection>(state.connections, ShowConnection<kListedConnection>);
}

Answer Handle(const State& state, const Input<"GetConnection">& input) {
  const auto name = input.ObjectName("connectionName");
  return OnNamed(state.connections, name, [&](const Connection& connection) {
    return RecordAnswer<kConnection>(ShowConnection<kConnection>, *name, connection);
  });
}

Answer Handle(const State& state, const Input<"GetVMAC">& input) {
  const auto name = input.ObjectName("connectionName");
  return OnNamed(state.connections, name,
                 [](const Connection& connection) { return NumberAnswer(VmacOf(connection)); });
}

// A connection is gone as soon as it is unplumbed, so none is ever pending.
Answer Handle(const State&, const Input<"VDRDevCheckConnDeletion">&) {
  return NumberAnswer(uint32_t{0});
}

}  // namespace vdrsim
