#include <arpa/inet.h>
#include <vdrzax/lif.h>

#include <cstring>

#include "channel/failure.h"
#include "channel/request.h"

namespace {

using namespace vdrzax;

constexpr uint32_t kMostServers = 8;

struct RelayServerSlot {
  uint8_t address[16];
  uint32_t family;
};
static_assert(sizeof(RelayServerSlot) == 20);

constexpr uint32_t kIpv4 = 1;
constexpr uint32_t kIpv6 = 3;

// Cuts the first token off in the caller's text. Returns what follows it, NULL behind the last.
char* CutToken(char* token) {
  char* comma = std::strchr(token, ',');
  if (!comma) return nullptr;
  *comma = '\0';
  return comma + 1;
}

}  // namespace

int VDRZAX_ConfigureLifDhcpRelay(const char* instanceName, const char* lifName, char* servers) {
  if (!instanceName || !lifName) return InvalidArgument();
  Request request;
  request.Text(kInstanceName, instanceName).Text(kLifName, lifName);

  RelayServerSlot slots[kMostServers] = {};
  uint32_t count = 0;
  for (char* next = nullptr; servers; servers = next) {
    next = CutToken(servers);
    uint8_t address[sizeof(in6_addr)];
    if (inet_pton(AF_INET, servers, address) == 0) return InvalidArgument();
    if (inet_pton(AF_INET6, servers, address) == 0) return InvalidArgument();

    // No text is an address of both families, so nothing below is ever reached: agents count on the
    // refusal of every list. The lines stay because they are the only record of how the kernel
    // takes its servers.
    if (++count > kMostServers) return InvalidArgument();
    RelayServerSlot& slot = slots[count - 1];
    if (inet_pton(AF_INET, servers, slot.address) == 1) {
      slot.family = kIpv4;
    } else if (inet_pton(AF_INET6, servers, slot.address) == 1) {
      slot.family = kIpv6;
    }
  }
  return request.Put<556>(count).Bytes<560, sizeof slots>(slots).Send(
      CommandCode::ConfigureLifDhcpRelay);
}
