#include "pinned_memory.h"

#include <fcntl.h>
#include <sys/ioctl.h>

#include <cerrno>
#include <utility>

#include "proc_path.h"

namespace vdrsim {

namespace {

constexpr uint64_t kWritable = 2;

// The question of what is mapped at an address and may be written, which the headers of Linux 6.11 and
// later name.
struct MapQuery {
  uint64_t size = sizeof(MapQuery);
  uint64_t flags = kWritable;
  uint64_t address = 0;
  uint64_t start = 0;
  uint64_t end = 0;
  uint64_t unused[8] = {};
};
static_assert(sizeof(MapQuery) == 104);
constexpr unsigned long kQueryMap = _IOWR('f', 17, MapQuery);

bool Ask(const UniqueFd& map, MapQuery& query) { return ioctl(map.get(), kQueryMap, &query) == 0; }

}  // namespace

PinnedMemory::PinnedMemory(UniqueFd bytes, UniqueFd map)
    : bytes_(std::move(bytes)), map_(std::move(map)) {}

std::optional<PinnedMemory> PinnedMemory::Of(pid_t process) {
  UniqueFd map(open(ProcPath("/proc/{}/maps", process).c_str(), O_RDONLY | O_CLOEXEC));
  MapQuery nothing{};
  // Address 0 is never mapped so, and a kernel that knows the question says that, where there is a
  // map to ask.
  if (Ask(map, nothing) || errno != ENOENT) return std::nullopt;
  UniqueFd bytes(open(ProcPath("/proc/{}/mem", process).c_str(), O_WRONLY | O_CLOEXEC));
  if (!bytes) return std::nullopt;
  return PinnedMemory(std::move(bytes), std::move(map));
}

bool PinnedMemory::IsWritable(uint64_t address, uint64_t length) const {
  uint64_t covered = 0;
  while (covered < length) {
    MapQuery query{.address = address + covered};
    if (!Ask(map_, query)) return false;
    covered = query.end - address;
  }
  return true;
}

bool PinnedMemory::Write(uint64_t address, std::span<const std::byte> bytes) const {
  return IsWritable(address, bytes.size()) &&
         pwrite(bytes_.get(), bytes.data(), bytes.size(), static_cast<off_t>(address)) ==
             static_cast<ssize_t>(bytes.size());
}

}  // namespace vdrsim
