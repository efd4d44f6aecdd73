#include "floor.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <vdrzax/channel.h>

#include <cstdlib>
#include <cstring>

namespace floor_of {

namespace {

constexpr char kNode[] = "/qorv/devices/char/zaxdriver/ryn_vdr";

const IoctlParams preparedBlock{};

int Send(unsigned long code, IoctlEnvelope* envelope) {
  const int descriptor = open64(kNode, O_RDWR);
  const int result = ioctl(descriptor, code, envelope);
  close(descriptor);
  return result;
}

}  // namespace

int Command(unsigned long code, void* output, uint32_t capacity) {
  IoctlEnvelope envelope{sizeof preparedBlock, &preparedBlock, capacity, output};
  return Send(code, &envelope);
}

std::size_t ReadList(const List& list) {
  void* header = std::calloc(1, list.header);
  const std::size_t capacity = list.prefix + list.cap * list.record;
  auto* reply = static_cast<uint8_t*>(std::malloc(capacity));
  IoctlEnvelope envelope{sizeof preparedBlock, &preparedBlock, static_cast<uint32_t>(capacity),
                         reply};
  if (!header || !reply || Send(0, &envelope) != 0) std::abort();

  const std::size_t length = envelope.outLength - list.prefix;
  const std::size_t records = length / list.record;
  void* entries = std::calloc(list.fitsEntries ? records : list.cap, list.record);
  if (!entries) std::abort();
  std::memcpy(entries, reply + list.prefix, length);
  std::free(reply);

  std::free(entries);
  std::free(header);
  return records;
}

}  // namespace floor_of
