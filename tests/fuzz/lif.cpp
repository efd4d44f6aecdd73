#include <vdrzax/lif.h>

#include "getters.h"
#include "lif/lif_record.h"

namespace {

using namespace vdrzax;

// 10 entries fit their array. Up to 26 lie over the fields behind it, more leave the record.
constexpr Trust kTrust = TrustCounts<961, 566, uint32_t, 26>;

Subject Lif(uint32_t code, int (*get)(LifRecord** out)) {
  return RecordGetter<LifRecord>(
      {.code = code, .size = 961, .expected = Expected<kLifRecord>, .trust = kTrust}, get,
      VDRZAX_ReleaseLif);
}

ListShape Lifs(uint32_t code) {
  return {
      .code = code, .size = 961, .cap = 10000, .expected = Expected<kLifRecord>, .trust = kTrust};
}

Subject HidingLifs() {
  ListShape shape = Lifs(21);
  shape.hidesDecodeFailure = true;
  return ListGetter(
      shape, [](RecordList** out) { return VDRZAX_GetLifs("edge-1", out); }, VDRZAX_ReleaseLifs);
}

Subject DroppingLifs() {
  ListShape shape = Lifs(59);
  shape.dropsHeader = true;
  return ListGetter(
      shape, [](RecordList** out) { return VDRZAX_GetBridgeLifs("edge-1", out); },
      VDRZAX_ReleaseLifs);
}

}  // namespace

std::span<const Subject> Subjects() {
  static const Subject subjects[] = {
      Lif(22, [](LifRecord** out) { return VDRZAX_GetLif("edge-1", "lif-1", out); }),
      Lif(60, [](LifRecord** out) { return VDRZAX_GetBridgeLif("edge-1", "lif-1", out); }),
      HidingLifs(),
      DroppingLifs(),
      ListGetter(
          Lifs(172), [](RecordList** out) { return VDRZAX_GetExtVlanLifs(7, out); },
          VDRZAX_ReleaseLifs),
  };
  return subjects;
}
