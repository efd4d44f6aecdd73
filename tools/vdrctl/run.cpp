#include "run.h"

#include <cerrno>
#include <cstdio>
#include <string>

#include "batch/batch.h"
#include "command_words.h"
#include "device_hint.h"
#include "files.h"
#include "names/names_file.h"
#include "output/output.h"
#include "values.h"
#include "watch.h"

namespace vdrctl {

namespace {

// A file that is named is read in any case, so that a mistake in it does not wait to be found.
std::unique_ptr<const FieldNames> NamesFor(const GlobalValues& globals, bool printsRecords) {
  const auto file = globals.names ? globals.names : printsRecords ? UsualNamesFile() : std::nullopt;
  if (!file) return nullptr;
  return std::make_unique<const FieldNames>(ReadNames(*file));
}

bool IsForgiven(const Command& command, Values values, int error) {
  return command.Deletes() && values.back() && error == ENOENT && DeviceHint(error).empty();
}

}  // namespace

View::View(const GlobalValues& globals, bool printsRecords)
    : names_(NamesFor(globals, printsRecords)) {
  presentation_.form = globals.json ? Presentation::Form::Json : Presentation::Form::Tables;
  presentation_.header = !globals.noHeader;
  if (globals.columns) {
    const auto names = SplitAt(*globals.columns, ',');
    presentation_.columns.assign(names.begin(), names.end());
  }
  if (globals.sort) presentation_.sort = *globals.sort;
  presentation_.names = names_.get();
}

int Execute(const Invocation& invocation, const Presentation& presentation, Writer& writer,
            const Report& report) {
  const Command& command = *invocation.command;
  Given::Room room;
  const Values values = invocation.given.In(room);
  try {
    Output out(presentation, command.reply, writer);
    errno = 0;
    if (command.handler.call(out, command.Parameters(), values) == 0) return kDone;
  } catch (const NoSuchColumn& none) {
    return report.WrongUsage(none.what(), "vdrctl " + FullName(command));
  } catch (const WrongUsage& wrong) {
    return report.WrongUsage(wrong.what(), wrong.words());
  } catch (const FileFailure& failure) {
    return report.Failure(failure.what(), failure.error(), failure.hint());
  }
  const int error = errno;
  if (IsForgiven(command, values, error)) return kDone;
  return report.CommandFailure(InWords(invocation), error);
}

int CarryOut(const Invocation& invocation, const Report& report) {
  if (!invocation.command->handler.call) return RunBatch(invocation, report);
  View view(invocation.globals, !invocation.command->reply.layouts.empty());
  if (invocation.globals.watch) return Watch(invocation, view.presentation(), report);
  Writer writer(stdout);
  const int status = Execute(invocation, view.presentation(), writer, report);
  if (status == kDone) writer.Finish();
  return status;
}

}  // namespace vdrctl
