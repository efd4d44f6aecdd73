#include "node_path.h"

#include <fcntl.h>
#include <limits.h>
#include <unistd.h>

#include <algorithm>
#include <array>

#include "caller_memory.h"
#include "proc_path.h"

namespace vdrsim {

namespace {

constexpr std::string_view kDirectory = "/qorv/devices/char/zaxdriver/";
constexpr std::string_view kNormalNode = "/qorv/devices/char/zaxdriver/ryn_vdr";
constexpr std::string_view kUpgradeNode = "/qorv/devices/char/zaxdriver/ryn_vdr_ugrade";

// A path that grows by one component after another.
class PlainPath {
 public:
  // False when it is too long to be that of a node.
  bool Append(std::string_view path) {
    while (!path.empty()) {
      const size_t end = std::min(path.find('/'), path.size());
      const std::string_view component = path.substr(0, end);
      path.remove_prefix(std::min(end + 1, path.size()));
      if (component == "..") {
        length_ = std::min(text().rfind('/'), length_);
      } else if (!component.empty() && component != "." && !AppendComponent(component)) {
        return false;
      }
    }
    return true;
  }

  std::string_view text() const { return {room_.data(), length_}; }

 private:
  bool AppendComponent(std::string_view component) {
    if (length_ + 1 + component.size() > room_.size()) return false;
    room_[length_] = '/';
    std::ranges::copy(component, room_.begin() + static_cast<ptrdiff_t>(length_) + 1);
    length_ += 1 + component.size();
    return true;
  }

  std::array<char, PATH_MAX> room_;
  size_t length_ = 0;
};

bool AppendDirectory(PlainPath& path, pid_t thread, int directory) {
  const ProcPath link = directory == AT_FDCWD ? ProcPath("/proc/{}/cwd", thread)
                                              : ProcPath("/proc/{}/fd/{}", thread, directory);
  std::array<char, PATH_MAX> target;
  const ssize_t length = readlink(link.c_str(), target.data(), target.size());
  return length > 0 && path.Append({target.data(), static_cast<size_t>(length)});
}

std::optional<Node> NodeAt(std::string_view path) {
  if (path == kNormalNode) return Node::Normal;
  if (path == kUpgradeNode) return Node::Upgrade;
  return std::nullopt;
}

}  // namespace

const char* NodePath(Node node) {
  return (node == Node::Normal ? kNormalNode : kUpgradeNode).data();
}

std::optional<Node> NamedNode(HeldUpCall& call, int directory, uint64_t address) {
  std::array<char, PATH_MAX> buffer;
  const std::string_view path = CallerMemory(call).ReadText(address, buffer);
  // Most files that are opened are no node by their last component; what ends with a slash is a
  // directory.
  const std::string_view name = path.substr(path.rfind('/') + 1);
  if (name != kNormalNode.substr(kDirectory.size()) &&
      name != kUpgradeNode.substr(kDirectory.size())) {
    return std::nullopt;
  }
  PlainPath plain;
  if (path.front() != '/' && !AppendDirectory(plain, call.thread(), directory)) return std::nullopt;
  return plain.Append(path) ? NodeAt(plain.text()) : std::nullopt;
}

}  // namespace vdrsim
