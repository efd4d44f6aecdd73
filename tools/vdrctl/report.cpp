#include "report.h"

#include <fmt/format.h>

#include <cstring>

#include "common/errno_name.h"
#include "common/standard_streams.h"
#include "device_hint.h"
#include "output/text.h"

namespace vdrctl {

namespace {

std::string ErrorName(int error) {
  const std::string_view name = tools::ErrnoName(error);
  return name.empty() ? std::to_string(error) : std::string(name);
}

void PutMember(Writer& out, std::string_view name, std::string_view value) {
  if (value.empty()) return;
  if (out.text().back() != '{') out.Put(',');
  PutJsonText(out, name);
  out.Put(':');
  PutJsonText(out, value);
}

}  // namespace

int Report::Failure(std::string_view what, int error, std::string_view hint) const {
  if (error == 0) return Tell({kFailed, what, "failed without giving a reason", "", ""});
  return Tell({kFailed, what, std::strerror(error), ErrorName(error), hint});
}

int Report::CommandFailure(std::string_view what, int error) const {
  const std::string hint = DeviceHint(error);
  if (hint.empty()) return Failure(what, error);
  return Tell({kNoDevice, what, std::strerror(error), ErrorName(error), hint});
}

int Report::WrongUsage(std::string_view complaint, std::string_view understood) const {
  const std::string hint = understood.empty() ? "" : fmt::format("Try '{} --help'", understood);
  return Tell({vdrctl::kWrongUsage, "", complaint, "", hint});
}

void Report::Release() {
  tools::Tell(*held_);
  held_.reset();
}

int Report::Tell(const Line& line) const {
  const std::string place = line_ == 0 ? file_ : fmt::format("{}:{}", file_, line_);
  Writer out;
  if (json_) {
    out.Put(fmt::format("{{\"status\":{},\"error\":{{", static_cast<int>(line.status)));
    PutMember(out, "place", place);
    PutMember(out, "command", line.what);
    PutMember(out, "message", line.message);
    PutMember(out, "errno", line.errorName);
    PutMember(out, "hint", line.hint);
    out.Put("}}\n");
  } else {
    out.Put("vdrctl: ");
    if (!place.empty()) out.Put(fmt::format("{}: ", place));
    if (!line.what.empty()) PutEscaped(out, fmt::format("{}: ", line.what));
    out.Put(line.message);
    if (!line.errorName.empty()) out.Put(fmt::format(" ({})", line.errorName));
    out.Put('\n');
    if (!line.hint.empty()) {
      out.Put(line.status == vdrctl::kWrongUsage ? "" : "hint: ");
      out.Put(line.hint);
      out.Put('\n');
    }
  }
  if (held_) {
    *held_ += out.text();
  } else {
    tools::Tell(out.text());
  }
  return line.status;
}

}  // namespace vdrctl
