#pragma once

#include <memory>
#include <string_view>

#include "command_line.h"
#include "names/field_names.h"
#include "output/presentation.h"
#include "output/writer.h"
#include "report.h"

namespace vdrctl {

// How the operator wants to see what commands print, and the names of fields that it takes.
class View {
 public:
  // Reads the file of names that holds for these options, if there is one and `printsRecords`.
  // Throws NamesFailure and FileFailure.
  View(const GlobalValues& globals, bool printsRecords);

  Presentation& presentation() { return presentation_; }

 private:
  std::unique_ptr<const FieldNames> names_;
  Presentation presentation_;
};

// Carries out one command of the device and puts what it says into `writer`. Returns the exit
// status; what went wrong is reported.
int Execute(const Invocation& invocation, const Presentation& presentation, Writer& writer,
            const Report& report);

// Carries out whatever the operator asked for, and returns the exit status.
int CarryOut(const Invocation& invocation, const Report& report);

}  // namespace vdrctl
