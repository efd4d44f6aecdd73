#include <cstdio>
#include <span>

#include "subject.h"

namespace library {

namespace {

constexpr int kBridgeInstances = 820;

// Five of a kind a holder, so that all of them stand in the order of their numbers.
std::string Instance(int number) { return Numbered("edge", number / 5); }
uint32_t Value(int number) { return 1 + static_cast<uint32_t>(number % 5); }

Read FindName(const Read& list, size_t size, size_t offset, const std::string& name) {
  return FindIn(list, size, wire::Wire(name.size() + 1).Text(0, name).bytes(), offset);
}

Read ListBridges() {
  RecordList* list = nullptr;
  const int result = VDRZAX_GetBridgeInstances(&list);
  return ReadList(result, list, VDRZAX_ReleaseBridgeInstances, 393);
}

Subject Bridges() {
  return {
      .name = "Bridge",
      .cap = 4096,
      .makeParents =
          [] {
            for (int number = 0; number < kBridgeInstances; ++number) {
              VDRZAX_SetVdrInstance(Numbered("edge", number).c_str(), 0, nullptr, 0, 0);
            }
          },
      .dropParents = {[] {
        for (int number = 0; number < kBridgeInstances; ++number) {
          VDRZAX_DelVdrInstance(Numbered("edge", number).c_str());
        }
      }},
      .set =
          [](int number, uint32_t version) {
            const std::string instance = Instance(number);
            const auto value = static_cast<uint8_t>(Value(number));
            if (VDRZAX_BridgeAdd(instance.c_str(), value) != 0) return errno;
            return ErrorOf(version == 2 ? VDRZAX_BridgeEnable(instance.c_str(), value)
                                        : VDRZAX_BridgeDisable(instance.c_str(), value));
          },
      .remove =
          [](int number) {
            return ErrorOf(VDRZAX_BridgeDel(Instance(number).c_str(), Value(number)));
          },
      .get =
          [](int number) {
            const wire::Wire key = wire::Wire(68).U32(0, Value(number)).Text(4, Instance(number));
            return FindIn(ListBridges(), 393, key.bytes(), 8);
          },
      .list = ListBridges,
      .record =
          [](int number, uint32_t version) {
            return wire::Wire(393)
                .U32(8, Value(number))
                .Text(12, Instance(number))
                .U32(76, version == 2 ? 1 : 0)
                .U64(313, uint64_t{2} * version);
          },
      .listWithoutParents = 0,
  };
}

void MakeInstance() { VDRZAX_SetVdrInstance("edge-1", 0, nullptr, 0, 0); }
void DropInstance() { VDRZAX_DelVdrInstance("edge-1"); }

// An instance holds 10000 LIFs, fewer than there can be endpoints.
std::string BridgeLif(int number) { return Numbered("bridged", number / 10000); }
std::string Endpoint(int number) { return Numbered("endpoint", number); }

Read ListEndpoints() {
  RecordList* list = nullptr;
  const int result = VDRZAX_GetBridgeEndpoints("edge-1", &list);
  return ReadList(result, list, VDRZAX_ReleaseBridgeEndpoints, 235);
}

Subject BridgeEndpoints() {
  return {
      .name = "BridgeEndpoint",
      .cap = 28672,
      .makeParents =
          [] {
            MakeInstance();
            for (const int number : {0, 10000, 20000}) {
              VDRZAX_SetBridgeLif(BridgeLif(number).c_str(), "", 0, 0, 0, "edge-1", 1);
            }
          },
      .dropParents = {DropInstance},
      .set =
          [](int number, uint32_t version) {
            return ErrorOf(VDRZAX_AddBridgeEndpoint(
                BridgeLif(number).c_str(), "second", Endpoint(number).c_str(), 0x01000000 + version,
                0x02000000 + version, "fourth", static_cast<uint16_t>(0x0300 + version),
                static_cast<uint8_t>(0x40 + version), "fifth",
                static_cast<uint8_t>(0x50 + version)));
          },
      .remove =
          [](int number) {
            return ErrorOf(
                VDRZAX_DelBridgeEndpoint(BridgeLif(number).c_str(), Endpoint(number).c_str()));
          },
      .get = [](int number) { return FindName(ListEndpoints(), 235, 64, Endpoint(number)); },
      .list = ListEndpoints,
      .record =
          [](int number, uint32_t version) {
            return wire::Wire(235)
                .Text(64, Endpoint(number))
                .U16(128, static_cast<uint16_t>(0x0300 + version))
                .U8(130, static_cast<uint8_t>(0x40 + version))
                .U32(131, 0x01000000 + version)
                .U32(135, 0x02000000 + version)
                .Text(139, "second")
                .U8(203, static_cast<uint8_t>(0x50 + version));
          },
  };
}

std::string Owner(int number) { return Numbered("owner", number); }

Read ListClusters(const char* name) {
  RecordList* list = nullptr;
  const int result = VDRZAX_GetBridgeClusters(name, &list);
  return ReadList(result, list, VDRZAX_ReleaseBridgeClusters, 183);
}

Subject BridgeClusters() {
  return {
      .name = "BridgeCluster",
      .cap = 10,
      .set =
          [](int number, uint32_t version) {
            const std::string owner = Owner(number);
            const auto level = static_cast<uint8_t>(0x40 + version);
            if (VDRZAX_BridgeClusterSet(owner.c_str(), 2) != 0) return errno;
            if (VDRZAX_SetBridgeClusterDebug(owner.c_str(), level) != 0) return errno;
            return ErrorOf(VDRZAX_BridgeClusterBfdHAProfileSet(
                owner.c_str(), static_cast<uint8_t>(0x80 + version), 0x01020300 + version,
                0x05060700 + version));
          },
      .remove =
          [](int number) { return ErrorOf(VDRZAX_BridgeClusterSet(Owner(number).c_str(), 0)); },
      .get = [](int number) { return ListClusters(Owner(number).c_str()); },
      .list = [] { return ListClusters(nullptr); },
      .record =
          [](int number, uint32_t version) {
            return wire::Wire(183)
                .Text(0, Owner(number))
                .U32(72, 0x01020300 + version)
                .U8(76, static_cast<uint8_t>(0x40 + version))
                .U8(178, static_cast<uint8_t>(0x80 + version))
                .U32(179, 0x05060700 + version);
          },
  };
}

std::string Node(int number) { return Numbered("node", number); }

Read ListNodes() {
  RecordList* list = nullptr;
  const int result = VDRZAX_GetBridgeClusterNodes("owner", &list);
  return ReadList(result, list, VDRZAX_ReleaseBridgeClusterNodes, 71);
}

Subject BridgeClusterNodes() {
  return {
      .name = "BridgeClusterNode",
      .cap = 100,
      .makeParents = [] { VDRZAX_BridgeClusterSet("owner", 1); },
      .dropParents = {[] { VDRZAX_BridgeClusterSet("owner", 0); },
                      [] { VDRZAX_FlushBridgeCluster("owner", 0); },
                      [] { VDRZAX_FlushBridgeCluster(nullptr, 1); }},
      .set =
          [](int number, uint32_t version) {
            const MacValue mac{{2, 0x12, 0x22, 0x32, 0x42, static_cast<uint8_t>(version)}};
            return ErrorOf(VDRZAX_BridgeClusterNodeSet("owner", Node(number).c_str(), &mac, 2));
          },
      .remove =
          [](int number) {
            return ErrorOf(VDRZAX_BridgeClusterNodeSet("owner", Node(number).c_str(), nullptr, 0));
          },
      .get = [](int number) { return FindName(ListNodes(), 71, 0, Node(number)); },
      .list = ListNodes,
      .record =
          [](int number, uint32_t version) {
            return wire::Wire(71)
                .Text(0, Node(number))
                .Text(64, "\x02\x12\x22\x32\x42")
                .U8(69, static_cast<uint8_t>(version));
          },
  };
}

// The last two bytes of the address are the number.
std::string MacText(int number) {
  char text[18];
  (void)std::snprintf(text, sizeof text, "02:12:22:32:%02X:%02x", number / 256, number % 256);
  return text;
}

wire::Wire MacBytes(int number) {
  return wire::Wire(6)
      .Text(0, "\x02\x12\x22\x32")
      .U8(4, static_cast<uint8_t>(number / 256))
      .U8(5, static_cast<uint8_t>(number % 256));
}

Read ListFdbEntries() {
  RecordList* list = nullptr;
  const int result = VDRZAX_GetBridgeFdbEntries("edge-1", 0x0102, 0x03040506, &list);
  return ReadList(result, list, VDRZAX_ReleaseBridgeFdbEntries, 20);
}

// Single entries can't be deleted: the table is cleared, and what else it held is set again.
int RemoveFdbEntry(int number) {
  const Read all = ListFdbEntries();
  const Read meant = FindIn(all, 20, MacBytes(number).bytes());
  if (meant.error != 0) return meant.error;
  if (VDRZAX_BridgeClearFdbTable("edge-1", 0x0102, 0x03040506) != 0) return errno;
  for (auto rest = std::span(all.bytes); !rest.empty(); rest = rest.subspan(20)) {
    const int other = std::to_integer<int>(rest[4]) * 256 + std::to_integer<int>(rest[5]);
    if (other == number) continue;
    uint32_t value = 0;
    std::memcpy(&value, &rest[12], 4);
    VDRZAX_BridgeSetFdbEntry("edge-1", MacText(other).c_str(), 0x0102, 0x03040506, value,
                             std::to_integer<uint8_t>(rest[11]));
  }
  return 0;
}

Subject FdbEntries() {
  return {
      .name = "BridgeFdbEntry",
      .cap = 10240,
      .makeParents =
          [] {
            MakeInstance();
            VDRZAX_BridgeAdd("edge-1", 7);
          },
      .dropParents = {DropInstance, [] { VDRZAX_BridgeDel("edge-1", 7); }},
      .set =
          [](int number, uint32_t version) {
            return ErrorOf(VDRZAX_BridgeSetFdbEntry("edge-1", MacText(number).c_str(), 0x0102,
                                                    0x03040506, 0x0708090a + version,
                                                    static_cast<uint8_t>(0x80 + version)));
          },
      .remove = RemoveFdbEntry,
      .get = [](int number) { return FindIn(ListFdbEntries(), 20, MacBytes(number).bytes()); },
      .list = ListFdbEntries,
      .record =
          [](int number, uint32_t version) {
            return wire::Wire(20)
                .Text(0, "\x02\x12\x22\x32")
                .U8(4, static_cast<uint8_t>(number / 256))
                .U8(5, static_cast<uint8_t>(number % 256))
                .U32(6, 0x0102)
                .U8(11, static_cast<uint8_t>(0x80 + version))
                .U32(12, 0x0708090a + version)
                .U32(16, 0x03040506);
          },
  };
}

std::string Port(int number) { return Numbered("port", number); }

// The caller is not told the length: the list ends where a port has no name.
Read ListPortConnections() {
  wire::Bytes bytes(131072);
  if (VDRZAX_GetBFDPortConnections(bytes.data()) != 0) return {.error = errno, .bytes = {}};
  size_t length = 0;
  while (length + 86 <= bytes.size() && bytes[length] != std::byte{0}) length += 86;
  bytes.resize(length);
  return {.error = 0, .bytes = std::move(bytes)};
}

Subject PortConnections() {
  return {
      .name = "BfdPortConnection",
      .cap = 1524,
      .set =
          [](int number, uint32_t version) {
            const MacValue mac{{2, 0x12, 0x22, 0x32, 0x42, 0x52}};
            return ErrorOf(VDRZAX_PlumbBFDPortConnection(Port(number).c_str(),
                                                         version == 1 ? "first" : "fifteen letters",
                                                         version == 1 ? nullptr : &mac));
          },
      .remove =
          [](int number) { return ErrorOf(VDRZAX_UnPlumbBFDPortConnection(Port(number).c_str())); },
      .get = [](int number) { return FindName(ListPortConnections(), 86, 0, Port(number)); },
      .list = ListPortConnections,
      .record =
          [](int number, uint32_t version) {
            wire::Wire record = wire::Wire(86).Text(0, Port(number));
            if (version == 1) return record.Text(64, "first");
            return record.Text(64, "fifteen letters").Text(80, "\x02\x12\x22\x32\x42\x52");
          },
  };
}

}  // namespace

std::vector<Subject> BridgeSubjects() {
  return {Bridges(),    BridgeEndpoints(), BridgeClusters(), BridgeClusterNodes(),
          FdbEntries(), PortConnections()};
}

}  // namespace library
