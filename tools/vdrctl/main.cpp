#include <fmt/format.h>

#include <cerrno>
#include <cstring>
#include <new>
#include <string>
#include <variant>

#include "command_line.h"
#include "common/standard_streams.h"
#include "device_hint.h"
#include "files.h"

namespace {

using namespace vdrctl;

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

int CarryOut(const Invocation& invocation);
int Print(const std::string& text);
int Fail(const std::string& what, int error, const std::string& hint = "");
void Complain(const std::string& line, const std::string& advice = "");

}  // namespace

int main(int argc, char** argv) {
  try {
    const auto parsed = Parse(argc, argv);
    const auto* notice = std::get_if<Notice>(&parsed);
    return notice ? Print(notice->text) : CarryOut(std::get<Invocation>(parsed));
  } catch (const WrongUsage& wrong) {
    Complain(wrong.what(), fmt::format("Try '{} --help'", wrong.words()));
    return kWrongUsage;
  } catch (const FileFailure& failure) {
    return Fail(failure.what(), failure.error(), failure.hint());
  } catch (const std::bad_alloc&) {
    return Fail("memory", ENOMEM);
  }
}

namespace {

int CarryOut(const Invocation& invocation) {
  Output out(invocation.form);
  errno = 0;
  if (invocation.command->handler.call(out, invocation.values) == 0) return Print(out.text());
  const int error = errno;
  return Fail(Words(invocation), error, DeviceHint(error));
}

int Print(const std::string& text) {
  const int error = tools::Print(text);
  return error == 0 ? 0 : Fail("standard output", error);
}

// A reply that contradicts itself fails without an errno.
int Fail(const std::string& what, int error, const std::string& hint) {
  if (error == 0) {
    Complain(what + ": failed without giving a reason");
    return kFailed;
  }
  const char* name = strerrorname_np(error);
  Complain(fmt::format("{}: {} ({})", what, std::strerror(error),
                       name ? std::string(name) : std::to_string(error)),
           hint.empty() ? "" : "hint: " + hint);
  return kFailed;
}

void Complain(const std::string& line, const std::string& advice) {
  tools::Complain("vdrctl", Escaped(line), advice);
}

}  // namespace
