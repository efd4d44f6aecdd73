// A trusted count may take a copy past the array that it begins in; a fortified one would abort.
#undef _FORTIFY_SOURCE

#include <vdrzax/lif.h>

#include "channel/getters.h"
#include "lif/lif_record.h"

namespace {

using namespace vdrzax;

constexpr ListKind<LifRecord, kLifRecord> kLifs{.cap = 10000, .release = VDRZAX_ReleaseLifs};

constexpr ListKind<LifRecord, kLifRecord> kBridgeLifs{
    .cap = 10000, .release = VDRZAX_ReleaseLifs, .onFailedCommand = HeaderOnFailure::Drop};

constexpr TextSlot<256> kAuxName;

uint8_t ModeOf(uint32_t flags);
int GetLifRecord(CommandCode code, const char* instanceName, const char* lifName, LifRecord** out);
int FetchLifs(const char* instanceName, RecordList* list);

}  // namespace

int VDRZAX_SetLif(const char* lifName, const char* auxName, uint32_t a3, uint32_t a4, uint32_t a5,
                  uint32_t a6, uint32_t a7, int32_t flagsWord, const char* instanceName,
                  const MacValue* extra) {
  if (!instanceName) return InvalidArgument();
  const auto flags = static_cast<uint32_t>(flagsWord);
  return Request{}
      .Text(kInstanceName, instanceName)
      .Text(kAuxName, auxName)
      .Text(kLifName, lifName)
      .Put<512>(a3)
      .Put<516>(a4)
      .Put<520>(a7)
      .OptionalMac<524>(extra)
      .Put<544>(a5)
      .Put<548>(a6)
      .Put<552>(flags & 0x1FFFFFFFU)
      .Put<788>(ModeOf(flags))
      .Send(CommandCode::SetLif);
}

int VDRZAX_DelLif(const char* lifName, const char* auxName, const char* instanceName) {
  if (!instanceName) return InvalidArgument();
  return Request{}
      .Text(kAuxName, auxName)
      .Text(kLifName, lifName)
      .Text(kInstanceName, instanceName)
      .Send(CommandCode::DelLif);
}

int VDRZAX_GetLif(const char* instanceName, const char* lifName, LifRecord** out) {
  return GetLifRecord(CommandCode::GetLif, instanceName, lifName, out);
}

int VDRZAX_GetBridgeLif(const char* instanceName, const char* lifName, LifRecord** out) {
  return GetLifRecord(CommandCode::GetBridgeLif, instanceName, lifName, out);
}

int VDRZAX_GetLifs(const char* instanceName, RecordList** out) {
  return GetList(out, [&](RecordList* list) { return FetchLifs(instanceName, list); });
}

int VDRZAX_GetExtVlanLifs(uint16_t vlanId, RecordList** out) {
  return GetList<kLifs>(CommandCode::GetExtVlanLifs, out,
                        [&](Request& request) { request.Put<260>(static_cast<uint32_t>(vlanId)); });
}

int VDRZAX_GetBridgeLifs(const char* instanceName, RecordList** out) {
  return GetList<kBridgeLifs>(CommandCode::GetBridgeLifs, out, NamedInstance(instanceName));
}

void VDRZAX_ReleaseLif(LifRecord* record) { std::free(record); }

void VDRZAX_ReleaseLifs(RecordList* list) { ReleaseList(list); }

namespace {

// The three high bits are one choice to the kernel; the lowest that is set decides.
uint8_t ModeOf(uint32_t flags) {
  if ((flags & 0x20000000U) != 0) return 1;
  if ((flags & 0x40000000U) != 0) return 2;
  if ((flags & 0x80000000U) != 0) return 3;
  return 0;
}

int GetLifRecord(CommandCode code, const char* instanceName, const char* lifName, LifRecord** out) {
  if (!instanceName || !lifName) return InvalidArgument();
  return GetRecord<DecodeRecord<kLifRecord>, VDRZAX_ReleaseLif>(code, out, [&](Request& request) {
    request.Text(kInstanceName, instanceName).Text(kLifName, lifName);
  });
}

// Counts as success here. The channel answers only 0 or -1, so it cannot come through; the test
// stays for a channel that passes the kernel's status on.
constexpr int kStatusWithReply = 0xBAD0006;

// Answers for the command alone: agents rely on 0 once the kernel has replied, also when the reply
// cannot be decoded and the caller is left with the address of a released header.
int FetchLifs(const char* instanceName, RecordList* list) {
  uint32_t length = static_cast<uint32_t>(kLifs.cap) * sizeof(LifRecord);
  auto* reply = static_cast<uint8_t*>(std::malloc(length));
  if (!reply) {
    std::free(list);
    return OutOfMemory();
  }
  Request request;
  request.Text(kInstanceName, instanceName);
  const int result = request.Receive(CommandCode::GetLifs, reply, length);
  if (result != 0 && result != kStatusWithReply) {
    std::free(list);
    std::free(reply);
    return result;
  }
  if (DecodeList<kLifs>(reply, static_cast<int32_t>(length), list) != 0) VDRZAX_ReleaseLifs(list);
  std::free(reply);
  return 0;
}

}  // namespace
