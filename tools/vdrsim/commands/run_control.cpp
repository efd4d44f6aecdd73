#include "commands/run_control.h"

#include <fmt/format.h>

#include <stdexcept>
#include <string>

#include "state/state_reader.h"
#include "state/state_writer.h"

namespace vdrsim {

namespace {

std::string Show(const Datapath& datapath) {
  std::string document;
  StateWriter writer(datapath.state());
  for (auto piece = writer.Next(); !piece.empty(); piece = writer.Next()) document += piece;
  return document;
}

// The name of the document, a zero, the document. What is wrong in it changes nothing.
std::string Load(Datapath& datapath, std::string_view named) {
  const size_t end = named.find('\0');
  if (end == std::string_view::npos) throw std::runtime_error("a state needs a name");
  datapath.Replace(ReadState(named.substr(end + 1), named.substr(0, end)));
  return "";
}

}  // namespace

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

void ControlJournal(Control& control, Journal& journal) {
  control.On("journal mark", [&journal](std::string_view text) {
    if (journal.Mark(text)) return std::string();
    throw std::runtime_error("this run keeps no journal: start it with --journal FILE or --trace");
  });
}

void ControlState(Control& control, Datapath& datapath) {
  control.On("state show", [&datapath](std::string_view) { return Show(datapath); });
  control.On("state load", [&datapath](std::string_view named) { return Load(datapath, named); });
}

}  // namespace vdrsim
