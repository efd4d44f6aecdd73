#pragma once

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

namespace journal_test {

inline bool CanHoldFilesWithoutName(const std::string& folder) {
  const int file = open(folder.c_str(), O_TMPFILE | O_RDWR, 0600);
  if (file >= 0) close(file);
  return file >= 0;
}

// The descriptor of the file without a name that this process has in a folder.
inline std::optional<int> FileWithoutNameIn(const std::string& folder) {
  for (const auto& descriptor : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code isGone;
    const std::string path = std::filesystem::read_symlink(descriptor, isGone);
    if (path.starts_with(folder + "/#")) return std::stoi(descriptor.path().filename());
  }
  return std::nullopt;
}

// The environment with another TMPDIR, or with none.
class TemporaryFilesIn {
 public:
  explicit TemporaryFilesIn(const char* folder) {
    if (const char* before = getenv("TMPDIR")) before_ = before;
    Set(folder);
  }
  TemporaryFilesIn(const TemporaryFilesIn&) = delete;
  ~TemporaryFilesIn() { Set(before_ ? before_->c_str() : nullptr); }

 private:
  static void Set(const char* folder) {
    (void)(folder ? setenv("TMPDIR", folder, 1) : unsetenv("TMPDIR"));
  }

  std::optional<std::string> before_{};
};

// A folder for them that is gone with this.
class TemporaryFolder {
 public:
  TemporaryFolder() : path_(Make()), inIt_(path_.c_str()) {}
  TemporaryFolder(const TemporaryFolder&) = delete;
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }

  const std::string& path() const { return path_; }
  std::optional<int> file() const { return FileWithoutNameIn(path_); }

 private:
  static std::string Make() {
    std::string name = std::filesystem::temp_directory_path() / "journal-XXXXXX";
    return std::filesystem::canonical(mkdtemp(name.data()));
  }

  std::string path_;
  TemporaryFilesIn inIt_;
};

}  // namespace journal_test
