#include <vdrzax/instance.h>

#include "channel/getters.h"

namespace {

using namespace vdrzax;

// Connections belong to no instance: the name stands here and the instance name stays empty.
constexpr TextSlot<256> kConnectionName;

constexpr TextSlot<320, 16> kSecond;
constexpr TextSlot<336, 18> kFourth;
constexpr TextSlot<354, 32> kFifth;
constexpr TextSlot<386, 256> kSixth;

}  // namespace

int VDRZAX_PlumbVdrConnection(const char* connectionName, const char* second, uint64_t /*third*/,
                              const char* fourth, const char* fifth, const char* sixth,
                              uint32_t seventh) {
  return Request{}
      .Text(kConnectionName, connectionName)
      .Text(kSecond, second)
      .OptionalText(kFourth, fourth)
      .OptionalText(kFifth, fifth)
      .OptionalText(kSixth, sixth)
      .Put<644>(seventh)
      .Send(CommandCode::PlumbVdrConnection);
}

int VDRZAX_UnPlumbVdrConnection(const char* connectionName) {
  return Request{}.Text(kConnectionName, connectionName).Send(CommandCode::UnPlumbVdrConnection);
}

int VDRZAX_GetConnections(void* buffer) {
  return Request{}.SendInto(CommandCode::GetConnections, buffer, 131072);
}

int VDRZAX_GetConnection(const char* connectionName, void* buffer) {
  return Request{}
      .Text(kConnectionName, connectionName)
      .SendInto(CommandCode::GetConnection, buffer, 152);
}

int VDRZAX_GetVMAC(const char* connectionName, void* buffer) {
  return Request{}.Text(kConnectionName, connectionName).SendInto(CommandCode::GetVMAC, buffer, 6);
}

int VDRZAX_VDRDevCheckConnDeletion(uint32_t* result) {
  return GetScalar(CommandCode::CheckConnDeletion, result);
}
