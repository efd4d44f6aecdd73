#include "commands/run_control.h"

#include <fmt/format.h>

#include <string>

namespace vdrsim {

void ControlFaults(Control& control, RunFaults& faults) {
  control.On("fault add", [&faults](std::string_view rule) { return faults.Add(rule); });
  control.On("fault list", [&faults](std::string_view) {
    std::string list;
    for (const auto& [rule, times] : faults.faults().List()) {
      list += fmt::format("{}\t{}\n", times, rule);
    }
    return list;
  });
  control.On("fault clear", [&faults](std::string_view) {
    faults.faults().Clear();
    return std::string();
  });
}

}  // namespace vdrsim
