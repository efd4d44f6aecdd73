#include "subject.h"

namespace library {

namespace {

constexpr MacValue kMac{{2, 0x12, 0x22, 0x32, 0x42, 0x52}};
constexpr uint32_t kKey = 0xe0000001;

std::string Receiver(int number) { return Numbered("receiver", number); }

void MakeInstance() { VDRZAX_SetVdrInstance("edge-1", 0, nullptr, 0, 0); }
void DropInstance() { VDRZAX_DelVdrInstance("edge-1"); }

Read ListLocal() {
  RecordList* list = nullptr;
  const int result = VDRZAX_GetMRoutingLocalRcvrs("edge-1", kKey, &list);
  return ReadList(result, list, VDRZAX_ReleaseMRoutingLocalRcvrs, 88);
}

Read ListRemote() {
  VTEPTable* table = nullptr;
  if (VDRZAX_GetMRoutingRemoteRcvrs("edge-1", kKey, &table) != 0) {
    return {.error = errno, .bytes = {}};
  }
  wire::Bytes bytes(static_cast<size_t>(table->count) * 68);
  if (!bytes.empty()) std::memcpy(bytes.data(), table->entries, bytes.size());
  VDRZAX_ReleaseVTEPTable(table);
  return {.error = 0, .bytes = std::move(bytes)};
}

Read ListGroups() {
  RecordList* list = nullptr;
  const int result = VDRZAX_GetMRoutingAllMcastGroups("edge-1", &list);
  return ReadList(result, list, VDRZAX_ReleaseMRoutingMcastGroups, 12);
}

wire::Wire Number(int number) { return wire::Wire(4).U32(0, static_cast<uint32_t>(number)); }

Subject LocalReceivers() {
  return {
      .name = "LocalReceiver",
      .cap = 512,
      .makeParents = MakeInstance,
      .dropParents = {DropInstance},
      .set =
          [](int number, uint32_t) {
            return ErrorOf(VDRZAX_AddMRoutingLocalRcvrs("edge-1", kKey, Receiver(number).c_str()));
          },
      .remove =
          [](int number) {
            return ErrorOf(VDRZAX_DelMRoutingLocalRcvrs("edge-1", kKey, Receiver(number).c_str()));
          },
      .get =
          [](int number) {
            return FindIn(ListLocal(), 88, wire::Wire(64).Text(0, Receiver(number)));
          },
      .list = ListLocal,
      .record = [](int number,
                   uint32_t) { return wire::Wire(88).Text(0, Receiver(number)).U32(64, kKey); },
  };
}

Subject RemoteReceivers() {
  return {
      .name = "RemoteReceiver",
      .cap = 2048,
      .makeParents = MakeInstance,
      .dropParents = {DropInstance},
      .set =
          [](int number, uint32_t version) {
            return ErrorOf(
                VDRZAX_AddMRoutingRemoteRcvrs("edge-1", kKey, static_cast<uint32_t>(number), &kMac,
                                              0x04000000 + version, 0x05000000 + version));
          },
      .remove =
          [](int number) {
            return ErrorOf(
                VDRZAX_DelMRoutingRemoteRcvrs("edge-1", kKey, static_cast<uint32_t>(number)));
          },
      .get = [](int number) { return FindIn(ListRemote(), 68, Number(number)); },
      .list = ListRemote,
      .record =
          [](int number, uint32_t version) {
            return wire::Wire(68)
                .U32(0, static_cast<uint32_t>(number))
                .U32(4, kKey)
                .U32(8, 0x04000000 + version)
                .U32(12, 0x05000000 + version)
                .Text(16, "\x02\x12\x22\x32\x42\x52");
          },
  };
}

Subject Groups() {
  return {
      .name = "McastGroup",
      .cap = 4096,
      .makeParents = MakeInstance,
      .dropParents = {DropInstance},
      .set =
          [](int number, uint32_t) {
            return ErrorOf(
                VDRZAX_AddMRoutingLocalRcvrs("edge-1", static_cast<uint32_t>(number), nullptr));
          },
      .remove =
          [](int number) {
            return ErrorOf(
                VDRZAX_DelMRoutingLocalRcvrs("edge-1", static_cast<uint32_t>(number), nullptr));
          },
      .get = [](int number) { return FindIn(ListGroups(), 12, Number(number)); },
      .list = ListGroups,
      .record =
          [](int number, uint32_t) {
            return wire::Wire(12).U32(0, static_cast<uint32_t>(number)).U32(4, 1);
          },
  };
}

}  // namespace

std::vector<Subject> McastSubjects() { return {LocalReceivers(), RemoteReceivers(), Groups()}; }

}  // namespace library
