#include "subject.h"

#include <algorithm>
#include <span>

// What the library loses on purpose, which docs/guarantees.md lists: a header when the command fails, a
// buffer that the kernel may still write to, and the entries of an empty table.
extern "C" const char*
__lsan_default_suppressions();  // NOLINT(bugprone-reserved-identifier,cert-*)
const char* __lsan_default_suppressions() {
  return "leak:VDRZAX_GetBridgeLifs\n"
         "leak:VDRZAX_GetBridgeInstances\n"
         "leak:VDRZAX_GetBridgeNetworks\n"
         "leak:VDRZAX_GetBridgePorts\n"
         "leak:VDRZAX_GetBridgeFdbEntries\n"
         "leak:VDRZAX_GetMRoutingLocalRcvrs\n"
         "leak:VDRZAX_GetMRoutingRemoteRcvrs\n"
         "leak:VDRZAX_GetMRoutingAllMcastGroups\n"
         "leak:VDRZAX_GetVMPublicIPEntry\n"
         "leak:VDRZAX_GetVMPublicIPTable\n"
         "leak:VDRZAX_GetE2ITable\n";
}

namespace library {

std::string Difference(const Read& read, const wire::Wire& expected) {
  if (read.error != 0) return "errno " + std::to_string(read.error);
  return wire::Difference(read.bytes, expected.bytes());
}

Read ReadList(int result, RecordList* list, void (*release)(RecordList*), size_t size) {
  if (result != 0) return {.error = errno, .bytes = {}};
  wire::Bytes bytes(static_cast<size_t>(list->count) * size);
  if (!bytes.empty()) std::memcpy(bytes.data(), list->entries, bytes.size());
  release(list);
  return {.error = 0, .bytes = std::move(bytes)};
}

Read BridgeNetworks(const char* instance) {
  RecordList* list = nullptr;
  const int result = VDRZAX_GetBridgeNetworks("", instance, &list);
  return ReadList(result, list, VDRZAX_ReleaseBridgeNetworks, 133);
}

Read BridgePorts(const char* instance, uint16_t network, uint32_t bridge) {
  RecordList* list = nullptr;
  const int result = VDRZAX_GetBridgePorts("", instance, network, bridge, &list);
  return ReadList(result, list, VDRZAX_ReleaseBridgePorts, 146);
}

Read ReadEntries(int result, const wire::Bytes& buffer, size_t size) {
  if (result != 0) return {.error = errno, .bytes = {}};
  const std::span<const std::byte> all(buffer);
  const auto isClear = [](std::byte byte) { return byte == std::byte{0}; };
  size_t end = 0;
  while (end + size <= all.size() && !std::ranges::all_of(all.subspan(end, size), isClear)) {
    end += size;
  }
  return {.error = 0, .bytes = {all.begin(), all.begin() + static_cast<std::ptrdiff_t>(end)}};
}

Read FindIn(const Read& list, size_t size, const wire::Bytes& key, size_t offset) {
  if (list.error != 0) return list;
  for (auto rest = std::span(list.bytes); !rest.empty(); rest = rest.subspan(size)) {
    if (!std::ranges::equal(rest.subspan(offset, key.size()), key)) continue;
    return {.error = 0, .bytes = {rest.begin(), rest.begin() + static_cast<ptrdiff_t>(size)}};
  }
  return {.error = ENOENT, .bytes = {}};
}

std::ostream& operator<<(std::ostream& stream, const Subject& subject) {
  return stream << subject.name;
}

std::string Numbered(const std::string& kind, int number) {
  const std::string digits = std::to_string(number);
  return kind + "-" + std::string(5 - digits.size(), '0') + digits;
}

}  // namespace library
