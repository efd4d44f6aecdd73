#include "state/state_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <utility>

#include "common/escapes.h"
#include "state/state_writer.h"
#include "transport/unique_fd.h"

namespace vdrsim {

namespace {

struct Close {
  void operator()(std::FILE* stream) const { (void)std::fclose(stream); }
};

[[noreturn]] void Fail(std::string_view file, int error) {
  throw StateFailure(fmt::format("{}: {}", tools::Printable(file), std::strerror(error)));
}

std::string DirectoryOf(const std::string& file) {
  const auto directory = std::filesystem::path(file).parent_path();
  return directory.empty() ? "." : directory.string();
}

// A new file beside another one, which is removed again unless it takes its place.
class FileBeside {
 public:
  // Throws StateFailure, in the name of the other one.
  FileBeside(const std::string& file, std::string_view name)
      : file_(file),
        name_(name),
        path_(file + ".XXXXXX"),
        opened_(mkostemp(path_.data(), O_CLOEXEC)) {
    if (!opened_) Fail(name_, errno);
  }
  FileBeside(const FileBeside&) = delete;
  ~FileBeside() {
    if (opened_) unlink(path_.c_str());
  }

  void Write(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = write(opened_.get(), bytes.data(), bytes.size());
      if (written < 0) Fail(name_, errno);
      bytes.remove_prefix(static_cast<size_t>(written));
    }
  }

  // Nothing of it may be on its way to the disk when the name is changed, nor the change when this
  // returns.
  void TakePlace(mode_t mode) {
    Check(fchmod(opened_.get(), mode));
    Check(fsync(opened_.get()));
    Check(rename(path_.c_str(), file_.c_str()));
    opened_.Close();
    const UniqueFd directory(open(DirectoryOf(file_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // A directory that may be written but not read can't be synced.
    if (directory) Check(fsync(directory.get()));
  }

 private:
  void Check(int result) const {
    if (result != 0) Fail(name_, errno);
  }

  const std::string& file_;
  std::string_view name_;
  std::string path_;
  UniqueFd opened_;
};

mode_t ModeOfNewFiles() {
  const mode_t withheld = umask(0);
  umask(withheld);
  return 0666 & ~withheld;
}

std::string Followed(const std::string& file) {
  const std::unique_ptr<char, decltype(&std::free)> path(realpath(file.c_str(), nullptr),
                                                         std::free);
  return path ? path.get() : file;
}

}  // namespace

State LoadState(const std::string& file) {
  if (file == "-") return ReadState(stdin, "standard input");
  const std::unique_ptr<std::FILE, Close> stream(std::fopen(file.c_str(), "re"));
  if (!stream) Fail(file, errno);
  return ReadState(stream.get(), file);
}

SavedState::SavedState(const std::string& file)
    : name_(file), file_(Followed(file)), mode_(ModeOfNewFiles()) {
  struct stat known {};
  if (stat(file_.c_str(), &known) == 0) {
    if (S_ISDIR(known.st_mode)) Fail(name_, EISDIR);
    if (!S_ISREG(known.st_mode)) {
      throw StateFailure(
          fmt::format("{}: a state is saved to a plain file alone", tools::Printable(name_)));
    }
    mode_ = known.st_mode & 07777;
  } else if (errno != ENOENT) {
    Fail(name_, errno);
  }
  const FileBeside attempt(file_, name_);
}

void SavedState::Save(const State& state) const {
  FileBeside saved(file_, name_);
  StateWriter writer(state);
  for (auto piece = writer.Next(); !piece.empty(); piece = writer.Next()) saved.Write(piece);
  saved.TakePlace(mode_);
}

}  // namespace vdrsim
