#include <arpa/inet.h>

#include <cstdlib>

#include "subject.h"

namespace library {

namespace {

constexpr size_t kNeighbourRoom = 7667712;

void MakeInstance() { VDRZAX_SetVdrInstance("edge-1", 0, nullptr, 0, 0); }
void DropInstance() { VDRZAX_DelVdrInstance("edge-1"); }

void MakeLif() {
  MakeInstance();
  VDRZAX_SetLif("uplink", "", 0, 0, 0, 0, 0, 0, "edge-1", nullptr);
}
void DropLif() { VDRZAX_DelLif("uplink", "", "edge-1"); }

// Addresses in the order of their numbers, as their bytes stand.
uint32_t Ip(int number) { return htonl(0x0a000000 + static_cast<uint32_t>(number)); }
uint64_t Ipv6Part2(int number) { return uint64_t{Ip(number)} << 32; }

Read ListRoutes() {
  RecordList* list = nullptr;
  const int result = VDRZAX_GetRoutes("edge-1", &list);
  return ReadList(result, list, VDRZAX_ReleaseRoutes, 668);
}

Subject Routes() {
  return {
      .name = "Route",
      .cap = 20000,
      .makeParents = MakeInstance,
      .dropParents = {DropInstance},
      .set =
          [](int number, uint32_t version) {
            return ErrorOf(VDRZAX_SetRoute(Ip(number), 0x01020304, 0x05060708, "uplink", "edge-1",
                                           0x090a0b00 + version, nullptr));
          },
      .remove =
          [](int number) {
            return ErrorOf(
                VDRZAX_DelRoute(Ip(number), 0x01020304, 0x05060708, "uplink", "edge-1", nullptr));
          },
      .get =
          [](int number) {
            return FindIn(ListRoutes(), 668, wire::Wire(4).U32(0, Ip(number)).bytes());
          },
      .list = ListRoutes,
      .record =
          [](int number, uint32_t version) {
            return wire::Wire(668)
                .U32(0, Ip(number))
                .U32(4, 0x01020304)
                .U32(8, 0x05060708)
                .U32(12, 0x090a0b00 + version)
                .U8(17, 1)
                .Text(36, "uplink");
          },
  };
}

// The library does not say why it can't have the number of routes: ENOMEM, whatever the reason.
Read ListIpv6Routes() {
  void* table = nullptr;
  uint32_t count = 0;
  if (VDRZAX_GetRoutesv6("edge-1", &table, &count) != 0) {
    return {.error = errno == ENOMEM ? ENOENT : errno, .bytes = {}};
  }
  wire::Bytes bytes(size_t{count} * 776);
  if (!bytes.empty()) std::memcpy(bytes.data(), table, bytes.size());
  free(table);
  return {.error = 0, .bytes = std::move(bytes)};
}

Subject Ipv6Routes() {
  return {
      .name = "Ipv6Route",
      .cap = 29999,
      .makeParents = MakeInstance,
      .dropParents = {DropInstance},
      .set =
          [](int number, uint32_t) {
            return ErrorOf(VDRZAX_SetRoutev6(0x0102030405060708, Ipv6Part2(number), 64,
                                             0x1112131415161718, 0x2122232425262728, "uplink",
                                             "edge-1"));
          },
      .remove =
          [](int number) {
            return ErrorOf(VDRZAX_DelRoutev6(0x0102030405060708, Ipv6Part2(number), 64,
                                             0x1112131415161718, 0x2122232425262728, "uplink",
                                             "edge-1"));
          },
      .get =
          [](int number) {
            const wire::Wire key =
                wire::Wire(16).U64(0, 0x0102030405060708).U64(8, Ipv6Part2(number));
            return FindIn(ListIpv6Routes(), 776, key.bytes());
          },
      .list = ListIpv6Routes,
      .record =
          [](int number, uint32_t) {
            return wire::Wire(776)
                .U64(0, 0x0102030405060708)
                .U64(8, Ipv6Part2(number))
                .U8(16, 64)
                .U8(17, 1)
                .U64(44, 0x1112131415161718)
                .U64(52, 0x2122232425262728)
                .Text(60, "uplink");
          },
  };
}

// A list of neighbours ends where the interface has no name.
Read ListNeighbours(int (*list)(const char* instance, const char* lif, void* buffer)) {
  wire::Bytes bytes(kNeighbourRoom);
  if (list("edge-1", "uplink", bytes.data()) != 0) return {.error = errno, .bytes = {}};
  size_t end = 0;
  while (end < bytes.size() && bytes[end + 16] != std::byte{0}) end += 936;
  bytes.resize(end);
  return {.error = 0, .bytes = std::move(bytes)};
}

// The parts of its address, for both families.
struct Address {
  uint64_t part1;
  uint64_t part2;
};
Address AddressOf(int number) { return {Ip(number), 0}; }
Address Ipv6AddressOf(int number) { return {0x0102030405060708, Ipv6Part2(number)}; }

struct NeighbourKind {
  std::string name;
  Address (*address)(int number);
  int (*set)(const Address& address, const char* mac);
  int (*remove)(const Address& address);
  int (*list)(const char* instance, const char* lif, void* buffer);
  bool hasMac;
};

wire::Wire NeighbourRecord(const Address& address, bool hasMac, uint32_t version) {
  wire::Wire record(936);
  record.U64(0, address.part1).U64(8, address.part2).Text(16, "uplink");
  if (!hasMac) return record;
  return version == 1 ? record.Text(80, "\x02\x12\x22\x32\x42\x01").Text(86, "02:12:22:32:42:01")
                      : record.Text(80, "\x02\x12\x22\x32\x42\x02").Text(86, "02:12:22:32:42:02");
}

Subject NeighboursOf(const NeighbourKind& kind) {
  const auto list = [kind] { return ListNeighbours(kind.list); };
  return {
      .name = kind.name,
      .cap = 8192,
      .makeParents = MakeLif,
      .dropParents = {DropInstance, DropLif},
      .set =
          [kind](int number, uint32_t version) {
            const char* mac = version == 1 ? "02:12:22:32:42:01" : "02:12:22:32:42:02";
            return ErrorOf(kind.set(kind.address(number), mac));
          },
      .remove = [kind](int number) { return ErrorOf(kind.remove(kind.address(number))); },
      .get =
          [kind, list](int number) {
            const Address address = kind.address(number);
            const wire::Wire key = wire::Wire(16).U64(0, address.part1).U64(8, address.part2);
            return FindIn(list(), 936, key.bytes());
          },
      .list = list,
      .record =
          [kind](int number, uint32_t version) {
            return NeighbourRecord(kind.address(number), kind.hasMac, version);
          },
  };
}

Subject Arps() {
  return NeighboursOf({
      .name = "Arp",
      .address = AddressOf,
      .set =
          [](const Address& address, const char* mac) {
            return VDRZAX_SetArp(static_cast<uint32_t>(address.part1), mac, "uplink", "edge-1");
          },
      .remove =
          [](const Address& address) {
            return VDRZAX_DelArp(static_cast<uint32_t>(address.part1), "uplink", "edge-1");
          },
      .list = VDRZAX_GetArps,
      .hasMac = true,
  });
}

Subject ProxyArps() {
  return NeighboursOf({
      .name = "ProxyArp",
      .address = AddressOf,
      .set =
          [](const Address& address, const char*) {
            return VDRZAX_SetProxyArp(static_cast<uint32_t>(address.part1), "uplink", "edge-1");
          },
      .remove =
          [](const Address& address) {
            return VDRZAX_DelProxyArp(static_cast<uint32_t>(address.part1), "uplink", "edge-1");
          },
      .list = VDRZAX_GetProxyArps,
      .hasMac = false,
  });
}

Subject Ipv6Neighbours() {
  return NeighboursOf({
      .name = "Ipv6Neighbour",
      .address = Ipv6AddressOf,
      .set =
          [](const Address& address, const char* mac) {
            return VDRZAX_SetArpv6(address.part1, address.part2, mac, "uplink", "edge-1");
          },
      .remove =
          [](const Address& address) {
            return VDRZAX_DelArpv6(address.part1, address.part2, "uplink", "edge-1");
          },
      .list = VDRZAX_GetArpsv6,
      .hasMac = true,
  });
}

Subject Ipv6Proxies() {
  return NeighboursOf({
      .name = "Ipv6Proxy",
      .address = Ipv6AddressOf,
      .set =
          [](const Address& address, const char*) {
            return VDRZAX_SetProxyArpv6(address.part1, address.part2, "uplink", "edge-1");
          },
      .remove =
          [](const Address& address) {
            return VDRZAX_DelProxyArpv6(address.part1, address.part2, "uplink", "edge-1");
          },
      .list = VDRZAX_GetArpsv6,
      .hasMac = false,
  });
}

}  // namespace

std::vector<Subject> RouteSubjects() {
  return {Routes(), Ipv6Routes(), Arps(), ProxyArps(), Ipv6Neighbours(), Ipv6Proxies()};
}

}  // namespace library
