#include "subject.h"

namespace library {

namespace {

constexpr uint32_t kKey = 7;

uint32_t Arg(int number) { return static_cast<uint32_t>(number); }

void MakeLif() {
  VDRZAX_SetVdrInstance("edge-1", 0, nullptr, 0, 0);
  VDRZAX_SetLif("uplink", "", 0, 0, 0, 0, 0, 0, "edge-1", nullptr);
}
void DropInstance() { VDRZAX_DelVdrInstance("edge-1"); }
void DropLif() { VDRZAX_DelLif("uplink", "", "edge-1"); }

Read ListPolicies() {
  RecordList* list = nullptr;
  const int result = VDRZAX_GetPolicy(kKey, &list);
  return ReadList(result, list, VDRZAX_ReleaseAllPolicy, 28);
}

Read ListTables() {
  RecordList* list = nullptr;
  const int result = VDRZAX_GetPolicyTable(&list);
  return ReadList(result, list, VDRZAX_ReleaseAllPolicyTable, 72);
}

Subject PoliciesOfAKey() {
  return {
      .name = "Policy",
      .cap = 1000,
      .set =
          [](int number, uint32_t version) {
            return ErrorOf(VDRZAX_SetPolicy(kKey, 5, Arg(number), 0x03000000 + version, nullptr));
          },
      .remove = [](int number) { return ErrorOf(VDRZAX_DelPolicy(kKey, 5, Arg(number), nullptr)); },
      .get =
          [](int number) {
            return FindIn(ListPolicies(), 28,
                          wire::Wire(12).U32(0, kKey).U32(4, 5).U32(8, Arg(number)));
          },
      .list = ListPolicies,
      .record =
          [](int number, uint32_t version) {
            return wire::Wire(28)
                .U32(0, kKey)
                .U32(4, 5)
                .U32(8, Arg(number))
                .U32(12, 0x03000000 + version);
          },
  };
}

Subject PolicyTables() {
  const auto name = [](uint32_t version) { return Numbered("table", static_cast<int>(version)); };
  return {
      .name = "PolicyTable",
      .cap = 1000,
      .set =
          [name](int number, uint32_t version) {
            return ErrorOf(VDRZAX_SetPolicyTable(Arg(number), name(version).c_str(), nullptr));
          },
      .remove = [](int number) { return ErrorOf(VDRZAX_DelPolicyTable(Arg(number), nullptr)); },
      .get = [](int number) { return FindIn(ListTables(), 72, wire::Wire(4).U32(0, Arg(number))); },
      .list = ListTables,
      .record =
          [name](int number, uint32_t version) {
            return wire::Wire(72).U32(0, Arg(number)).Text(4, name(version));
          },
  };
}

// Of a type that names a LIF, or of another.
Subject LifPolicies(int32_t type) {
  const bool isOfLif = type == 4;
  const auto list = [type] {
    RecordList* routes = nullptr;
    const int result = VDRZAX_GetLifPolicies("edge-1", static_cast<uint32_t>(type),
                                             type == 4 ? "uplink" : nullptr, &routes);
    return ReadList(result, routes, VDRZAX_ReleaseRoutes, 668);
  };
  const auto change = [type](auto* function, int number) {
    return ErrorOf(function(type, "uplink", Arg(number), 0x02000000, 0x03000000, "eth0", "edge-1",
                            0x04000000, nullptr));
  };
  auto dropParents = std::vector<std::function<void()>>{DropInstance};
  if (isOfLif) dropParents.emplace_back(DropLif);
  return {
      .name = isOfLif ? "PolicyOfALif" : "PolicyOfAnInstance",
      .cap = 20000,
      .makeParents = MakeLif,
      .dropParents = dropParents,
      .set = [change](int number, uint32_t) { return change(VDRZAX_SetLifPolicy, number); },
      .remove = [change](int number) { return change(VDRZAX_DelLifPolicy, number); },
      .get = [list](int number) { return FindIn(list(), 668, wire::Wire(4).U32(0, Arg(number))); },
      .list = list,
      .record =
          [type, isOfLif](int number, uint32_t) {
            wire::Wire record(668);
            record.U32(0, Arg(number))
                .U32(4, 0x02000000)
                .U32(8, 0x03000000)
                .U32(12, 0x04000000)
                .U8(17, isOfLif ? 2 : 1)
                .U32(20, static_cast<uint32_t>(type))
                .Text(36, "eth0");
            if (isOfLif) record.Text(116, "uplink");
            return record;
          },
  };
}

}  // namespace

std::vector<Subject> PolicySubjects() {
  return {PoliciesOfAKey(), PolicyTables(), LifPolicies(4), LifPolicies(-2)};
}

}  // namespace library
