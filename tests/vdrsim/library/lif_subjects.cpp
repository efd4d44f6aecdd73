#include "subject.h"

namespace library {

namespace {

constexpr MacValue kMac{{2, 0x12, 0x22, 0x32, 0x42, 0x52}};

std::string LifName(int number) { return Numbered("lif", number); }

void MakeInstance() { VDRZAX_SetVdrInstance("edge-1", 0, nullptr, 0, 0); }
void DropInstance() { VDRZAX_DelVdrInstance("edge-1"); }

Subject Lifs() {
  return {
      .name = "Lif",
      .cap = 10000,
      .makeParents = MakeInstance,
      .dropParents = {DropInstance},
      .set =
          [](int number, uint32_t version) {
            return ErrorOf(VDRZAX_SetLif(LifName(number).c_str(), "second", 0x03000000 + version,
                                         0x04000000 + version, 0x05000000 + version,
                                         0x06000000 + version, 0x07000000 + version, 0x4abcdef0,
                                         "edge-1", version == 1 ? &kMac : nullptr));
          },
      .remove =
          [](int number) {
            return ErrorOf(VDRZAX_DelLif(LifName(number).c_str(), "second", "edge-1"));
          },
      .get =
          [](int number) {
            LifRecord* record = nullptr;
            const int result = VDRZAX_GetLif("edge-1", LifName(number).c_str(), &record);
            return ReadRecord(result, record, VDRZAX_ReleaseLif);
          },
      .list =
          [] {
            RecordList* list = nullptr;
            const int result = VDRZAX_GetLifs("edge-1", &list);
            return ReadList(result, list, VDRZAX_ReleaseLifs, 961);
          },
      .record =
          [](int number, uint32_t version) {
            wire::Wire record(961);
            record.Text(0, LifName(number))
                .Text(64, "second")
                .U32(128, 0x03000000 + version)
                .U32(132, 0x04000000 + version)
                .U32(136, 0x05000000 + version)
                .U32(140, 0x06000000 + version)
                .U32(150, 0x07000000 + version)
                .U8(158, 2)
                .U32(572, 0x0abcdef0);
            if (version == 1) record.Text(144, "\x02\x12\x22\x32\x42\x52");
            return record;
          },
  };
}

Subject BridgeLifs() {
  const auto set = [](int number, uint32_t version, uint8_t sets) {
    return ErrorOf(VDRZAX_SetBridgeLif(LifName(number).c_str(), "second", 0x01000000 + version,
                                       0x02000000 + version, 0x03000000 + version, "edge-1", sets));
  };
  return {
      .name = "BridgeLif",
      .cap = 10000,
      .makeParents = MakeInstance,
      .dropParents = {DropInstance},
      .set = [set](int number, uint32_t version) { return set(number, version, 1); },
      .remove = [set](int number) { return set(number, 0, 0); },
      .get =
          [](int number) {
            LifRecord* record = nullptr;
            const int result = VDRZAX_GetBridgeLif("edge-1", LifName(number).c_str(), &record);
            return ReadRecord(result, record, VDRZAX_ReleaseLif);
          },
      .list =
          [] {
            RecordList* list = nullptr;
            const int result = VDRZAX_GetBridgeLifs("edge-1", &list);
            return ReadList(result, list, VDRZAX_ReleaseLifs, 961);
          },
      .record =
          [](int number, uint32_t version) {
            return wire::Wire(961)
                .Text(0, LifName(number))
                .Text(64, "second")
                .U32(136, 0x01000000 + version)
                .U32(140, 0x02000000 + version)
                .U32(150, 0x03000000 + version)
                .U8(570, 1);
          },
  };
}

}  // namespace

std::vector<Subject> LifSubjects() { return {Lifs(), BridgeLifs()}; }

}  // namespace library
