#include "subject.h"

namespace library {

namespace {

std::string Instance(int number) { return Numbered("edge", number); }

}  // namespace

std::vector<Subject> InstanceSubjects() {
  return {{
      .name = "Instance",
      .cap = 1001,
      .set =
          [](int number, uint32_t version) {
            return ErrorOf(VDRZAX_SetVdrInstance(Instance(number).c_str(), 0x01020300 + version,
                                                 "eighteen character", 0xfffffff0 + version, 0x81));
          },
      .remove = [](int number) { return ErrorOf(VDRZAX_DelVdrInstance(Instance(number).c_str())); },
      .get =
          [](int number) {
            InstanceRecord* record = nullptr;
            const int result = VDRZAX_GetInstance(Instance(number).c_str(), &record);
            return ReadRecord(result, record, VDRZAX_ReleaseInstance);
          },
      .list =
          [] {
            RecordList* list = nullptr;
            const int result = VDRZAX_GetInstances("", 0, &list);
            return ReadList(result, list, VDRZAX_ReleaseInstances, 577);
          },
      .record =
          [](int number, uint32_t version) {
            return wire::Wire(577)
                .Text(0, Instance(number))
                .U32(64, 0x01020300 + version)
                .U32(68, 0xfffffff0 + version)
                .U8(72, 0x81)
                .Text(73, "eighteen character");
          },
  }};
}

}  // namespace library
