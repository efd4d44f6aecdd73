#include "caller_memory.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <bit>

#include "proc_path.h"

namespace vdrsim {

namespace {

void* AsPointer(uint64_t address) { return std::bit_cast<void*>(address); }

uint64_t PageSize() {
  static const auto size = static_cast<uint64_t>(sysconf(_SC_PAGESIZE));
  return size;
}

uint64_t NextPage(uint64_t address) { return (address / PageSize() + 1) * PageSize(); }

// A caller that waits can't start a thread, so what is alone now stays alone.
bool HasOtherThreads(pid_t process) {
  constexpr unsigned kLinksWithoutThreads = 2;
  struct statx status {};
  return statx(AT_FDCWD, ProcPath("/proc/{}/task", process).c_str(), AT_STATX_DONT_SYNC,
               STATX_NLINK, &status) != 0 ||
         status.stx_nlink > kLinksWithoutThreads + 1;
}

}  // namespace

bool ReadMemory(pid_t thread, uint64_t address, std::span<std::byte> bytes) {
  if (bytes.empty()) return true;
  const iovec local{bytes.data(), bytes.size()};
  const iovec remote{AsPointer(address), bytes.size()};
  return process_vm_readv(thread, &local, 1, &remote, 1, 0) == static_cast<ssize_t>(bytes.size());
}

bool CallerMemory::Read(uint64_t address, std::span<std::byte> bytes) const {
  return ReadMemory(call_.thread(), address, bytes);
}

// A short text may end just before a page that is not there. Each vector is copied whole or not at
// all, so the part on the next page is a vector of its own.
std::string_view CallerMemory::ReadText(uint64_t address, std::span<char> buffer) const {
  const uint64_t onFirstPage = std::min<uint64_t>(buffer.size(), NextPage(address) - address);
  const iovec local{buffer.data(), buffer.size()};
  const iovec remote[] = {{AsPointer(address), onFirstPage},
                          {AsPointer(address + onFirstPage), buffer.size() - onFirstPage}};
  const ssize_t copied = process_vm_readv(call_.thread(), &local, 1, remote, 2, 0);
  const std::string_view text(buffer.data(), copied < 0 ? 0 : static_cast<size_t>(copied));
  const size_t end = text.find('\0');
  return end == std::string_view::npos ? std::string_view{} : text.substr(0, end);
}

// Only the first thread of a process can be killed by an exec of another and leave its number to
// the new program; the number of any other thread is nobody's then. There the memory is held before
// a last look at whether the caller waits. It takes longer, so others are written to by number.
void CallerMemory::ChooseRoad() {
  roadIsChosen_ = true;
  const pid_t process = call_.Process();
  if (process == call_.thread() && HasOtherThreads(process)) pinned_ = PinnedMemory::Of(process);
}

bool CallerMemory::Write(std::span<const Patch> patches) {
  if (!roadIsChosen_) ChooseRoad();
  if (!call_.IsWaiting()) return false;
  if (pinned_) {
    return std::ranges::all_of(
        patches, [this](const Patch& patch) { return pinned_->Write(patch.address, patch.bytes); });
  }
  std::array<iovec, kMostPatches> local;
  std::array<iovec, kMostPatches> remote;
  size_t total = 0;
  for (size_t i = 0; i < patches.size(); ++i) {
    const auto& [address, bytes] = patches[i];
    local[i] = {const_cast<std::byte*>(bytes.data()), bytes.size()};
    remote[i] = {AsPointer(address), bytes.size()};
    total += bytes.size();
  }
  return process_vm_writev(call_.thread(), local.data(), patches.size(), remote.data(),
                           patches.size(), 0) == static_cast<ssize_t>(total);
}

bool CallerMemory::IsWritable(uint64_t address, uint64_t length) {
  if (!roadIsChosen_) ChooseRoad();
  const uint64_t end = address + length;
  if (end < address || end > INT64_MAX) return false;
  if (pinned_) return call_.IsWaiting() && pinned_->IsWritable(address, length);
  while (address < end) {
    const uint64_t piece = std::min(end, NextPage(address) + (kMostPatches - 1) * PageSize());
    if (!Rewrite(address, piece)) return false;
    address = piece;
  }
  return true;
}

bool CallerMemory::Rewrite(uint64_t address, uint64_t end) {
  std::array<std::byte, kMostPatches> bytes;
  std::array<Patch, kMostPatches> patches;
  std::array<iovec, kMostPatches> remote;
  size_t count = 0;
  for (uint64_t at = address; at < end; at = NextPage(at), ++count) {
    patches[count] = {at, std::span(&bytes[count], 1)};
    remote[count] = {AsPointer(at), 1};
  }
  const iovec local{bytes.data(), count};
  return process_vm_readv(call_.thread(), &local, 1, remote.data(), count, 0) ==
             static_cast<ssize_t>(count) &&
         Write(std::span(patches).first(count));
}

}  // namespace vdrsim
