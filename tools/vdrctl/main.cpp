#include <malloc.h>

#include <cerrno>
#include <new>
#include <string>
#include <variant>
#include <vector>

#include "command_line.h"
#include "device_hint.h"
#include "files.h"
#include "names/names_file.h"
#include "output/output.h"
#include "report.h"
#include "run.h"

namespace {

using namespace vdrctl;

int Print(const std::string& text) {
  Writer out(stdout);
  out.Put(text);
  out.Finish();
  return 0;
}

bool WantsJson(Words words) {
  for (const std::string& word : words) {
    if (word == "--json" || word == "-j") return true;
    if (word == "--") return false;
  }
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  // A getter reserves room for a full table. With a threshold that slides upwards the room of the
  // next one would be cleared byte by byte.
  mallopt(M_MMAP_THRESHOLD, 131072);
  Report report;
  try {
    const std::vector<std::string> words(argv + 1, argv + argc);
    report.SetJson(WantsJson(words));
    const auto parsed = Parse(words);
    if (const auto* notice = std::get_if<Notice>(&parsed)) return Print(notice->text);
    return CarryOut(std::get<Invocation>(parsed), report);
  } catch (const WrongUsage& wrong) {
    return report.WrongUsage(wrong.what(), wrong.words());
  } catch (const NamesFailure& wrong) {
    return report.WrongUsage(wrong.what(), "");
  } catch (const FileFailure& failure) {
    return report.Failure(failure.what(), failure.error(), failure.hint());
  } catch (const OutputFailure& failure) {
    return report.Failure(failure.what(), failure.error());
  } catch (const std::bad_alloc&) {
    return report.Failure("memory", ENOMEM);
  }
}
