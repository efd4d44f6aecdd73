#include "getters.h"
#include "lif/lif_record.h"

const std::vector<Subject>& Subjects() {
  // 10 entries fit their array. Up to 26 lie over the fields behind it, more leave the record.
  static const auto subjects =
      SubjectsOf(getters::Lif(), {{"VDRZAX_GetLif", Expected<vdrzax::kLifRecord>, 26},
                                  {"VDRZAX_GetBridgeLif", Expected<vdrzax::kLifRecord>, 26},
                                  {"VDRZAX_GetLifs", Expected<vdrzax::kLifRecord>, 26},
                                  {"VDRZAX_GetBridgeLifs", Expected<vdrzax::kLifRecord>, 26},
                                  {"VDRZAX_GetExtVlanLifs", Expected<vdrzax::kLifRecord>, 26}});
  return subjects;
}
