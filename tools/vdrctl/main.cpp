#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>
#include <string>
#include <variant>

#include "command_line.h"
#include "device_hint.h"
#include "files.h"

namespace {

using namespace vdrctl;

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

int CarryOut(const Invocation& invocation);
int Print(const std::string& text);
int Fail(const std::string& what, int error);
void Complain(const std::string& line);

}  // namespace

int main(int argc, char** argv) {
  try {
    const auto parsed = Parse(argc, argv);
    const auto* notice = std::get_if<Notice>(&parsed);
    return notice ? Print(notice->text) : CarryOut(std::get<Invocation>(parsed));
  } catch (const WrongUsage& wrong) {
    Complain(wrong.what());
    fmt::print(stderr, "Try '{} --help'\n", wrong.words());
    return kWrongUsage;
  } catch (const FileFailure& failure) {
    return Fail(failure.what(), failure.error());
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
  Fail(Words(invocation), error);
  const std::string hint = DeviceHint(error);
  if (!hint.empty()) fmt::print(stderr, "hint: {}\n", hint);
  return kFailed;
}

// A reader at the other end must not take a cut text for the whole one, so a failed write is told.
int Print(const std::string& text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0) {
    return Fail("standard output", errno);
  }
  return 0;
}

// A reply that contradicts itself fails without an errno.
int Fail(const std::string& what, int error) {
  if (error == 0) {
    Complain(what + ": failed without giving a reason");
    return kFailed;
  }
  const char* name = strerrorname_np(error);
  Complain(fmt::format("{}: {} ({})", what, std::strerror(error),
                       name ? std::string(name) : std::to_string(error)));
  return kFailed;
}

void Complain(const std::string& line) { fmt::print(stderr, "vdrctl: {}\n", Escaped(line)); }

}  // namespace
