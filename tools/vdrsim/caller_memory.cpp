#include "caller_memory.h"

#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <bit>

namespace vdrsim {

namespace {

void* AsPointer(uint64_t address) { return std::bit_cast<void*>(address); }

}  // namespace

bool CallerMemory::Read(uint64_t address, std::span<std::byte> bytes) const {
  if (bytes.empty()) return true;
  const iovec local{bytes.data(), bytes.size()};
  const iovec remote{AsPointer(address), bytes.size()};
  return process_vm_readv(thread_, &local, 1, &remote, 1, 0) == static_cast<ssize_t>(bytes.size());
}

bool CallerMemory::Write(uint64_t address, std::span<const std::byte> bytes) const {
  if (bytes.empty()) return true;
  const iovec local{const_cast<std::byte*>(bytes.data()), bytes.size()};
  const iovec remote{AsPointer(address), bytes.size()};
  return process_vm_writev(thread_, &local, 1, &remote, 1, 0) == static_cast<ssize_t>(bytes.size());
}

// A short text may end just before a page that is not there. Each vector is copied whole or not at
// all, so the part on the next page is a vector of its own.
std::string_view CallerMemory::ReadText(uint64_t address, std::span<char> buffer) const {
  const auto pageSize = static_cast<uint64_t>(sysconf(_SC_PAGESIZE));
  const uint64_t onFirstPage = std::min<uint64_t>(buffer.size(), pageSize - address % pageSize);
  const iovec local{buffer.data(), buffer.size()};
  const iovec remote[] = {{AsPointer(address), onFirstPage},
                          {AsPointer(address + onFirstPage), buffer.size() - onFirstPage}};
  const ssize_t copied = process_vm_readv(thread_, &local, 1, remote, 2, 0);
  const std::string_view text(buffer.data(), copied < 0 ? 0 : static_cast<size_t>(copied));
  const size_t end = text.find('\0');
  return end == std::string_view::npos ? std::string_view{} : text.substr(0, end);
}

}  // namespace vdrsim
