/*
 * Logical interfaces (LIFs) of router instances: the interfaces themselves, their addresses and
 * their settings.
 */
#ifndef VDRZAX_LIF_H
#define VDRZAX_LIF_H

#include <vdrzax/channel.h>

#ifdef __cplusplus
extern "C" {
#endif

#pragma pack(push, 1)

/* One sub-entry of a LIF. What its numbers mean is the kernel's. */
typedef struct LifSubEntry {
  uint32_t words0[5];
  uint8_t byte20;
  uint8_t skipped21[3]; /* never copied from the reply: always zero */
} LifSubEntry;

/*
 * One LIF as the datapath reports it. The library interprets no number; a field whose meaning is
 * the kernel's alone is named by its place. Texts are always terminated.
 *
 * `subEntryCount` is trusted as it stands, because the kernel never sends more than 10: of a larger
 * count the entries behind the tenth are copied over the fields that follow, without limit.
 */
typedef struct LifRecord {
  char name[64];
  char auxName[64];
  uint32_t word128;
  uint32_t word132;
  uint32_t word136;
  uint32_t word140;
  uint16_t half144;
  uint32_t word146;
  uint32_t word150;
  uint32_t word154;
  uint8_t byte158;
  uint8_t byte159;
  uint8_t byte160;
  uint8_t byte161;
  uint8_t blob162[164];
  LifSubEntry subEntries[10]; /* the first subEntryCount are copied, the rest is zero */
  uint32_t subEntryCount;
  uint8_t byte570;
  uint8_t byte571;
  uint32_t word572;
  uint8_t byte576;
  char description[128];
  uint8_t skipped705[256]; /* never copied from the reply: always zero */
} LifRecord;

#pragma pack(pop)

static_assert(sizeof(LifSubEntry) == 24, "LifSubEntry is 24 bytes");
static_assert(offsetof(LifSubEntry, byte20) == 20, "LifSubEntry.byte20");
static_assert(sizeof(LifRecord) == 961, "LifRecord is 961 bytes");
static_assert(offsetof(LifRecord, word146) == 146, "LifRecord.word146");
static_assert(offsetof(LifRecord, blob162) == 162, "LifRecord.blob162");
static_assert(offsetof(LifRecord, subEntries) == 326, "LifRecord.subEntries");
static_assert(offsetof(LifRecord, subEntryCount) == 566, "LifRecord.subEntryCount");
static_assert(offsetof(LifRecord, description) == 577, "LifRecord.description");
static_assert(offsetof(LifRecord, skipped705) == 705, "LifRecord.skipped705");

/*
 * Create a LIF, or update it when it exists.
 *
 * lifName       LIF name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * auxName       Second name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * a3, a4, a5, a6, a7
 *               u32 each, whose meaning is the kernel's.
 * flagsWord     The low 29 bits are sent as flags, the high three choose the mode byte: 1 when
 *               bit 29 is set, else 2 for bit 30, else 3 for bit 31, else 0. Of several bits the
 *               lowest wins, because the kernel takes one mode.
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required.
 * extra         Hardware address, pointer to 6 bytes, or NULL for none (six zero bytes are sent).
 *
 * Returns 0, or -1 with EINVAL (instanceName is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_SetLif(const char* lifName, const char* auxName, uint32_t a3, uint32_t a4,
                             uint32_t a5, uint32_t a6, uint32_t a7, int32_t flagsWord,
                             const char* instanceName, const MacValue* extra) VDRZAX_NONNULL(1, 2);

/*
 * Delete a LIF.
 *
 * lifName       LIF name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * auxName       Second name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required.
 *
 * Returns 0, or -1 with EINVAL (instanceName is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_DelLif(const char* lifName, const char* auxName, const char* instanceName)
    VDRZAX_NONNULL(1, 2);

/*
 * Read one LIF.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required.
 * lifName       LIF name, text of at most 63 characters (a longer one is cut), required.
 * out           Where the address of the record is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a record of the caller's, to be given to VDRZAX_ReleaseLif. Returns -1 with EINVAL
 * (a name is NULL), ENOMEM, EBADMSG (reply shorter than 961 bytes) or the errno of the device.
 * `*out` is untouched after EINVAL, after a failed command and when the reply buffer could not be
 * allocated; it is NULL after EBADMSG and when the record could not be allocated.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetLif(const char* instanceName, const char* lifName,
                                            LifRecord** out) VDRZAX_NONNULL(3);

/* Read one bridge LIF, as VDRZAX_GetLif. */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetBridgeLif(const char* instanceName, const char* lifName,
                                                  LifRecord** out) VDRZAX_NONNULL(3);

/*
 * List the LIFs of a router instance.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * out           Where the address of the list is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a list of at most 10000 LifRecord, to be given to VDRZAX_ReleaseLifs. An empty
 * reply is a list with count 0. Returns -1 with ENOMEM or the errno of the device; `*out` is then
 * NULL.
 *
 * The result is that of the command alone, for agents rely on 0 once the kernel has replied. So it
 * is also 0 when the reply ends inside a record (errno is EBADMSG) or the entries could not be
 * allocated (errno is ENOMEM), and `*out` then holds the address of a header that was released.
 * Set errno to 0 before the call, and when it has one of the two values afterwards, neither read
 * nor release the list.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetLifs(const char* instanceName, RecordList** out)
    VDRZAX_NONNULL(1, 2);

/*
 * List the LIFs of an external VLAN. No instance is named.
 *
 * vlanId  VLAN identifier, u16; its range is not checked.
 * out     Where the address of the list is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a list of at most 10000 LifRecord, to be given to VDRZAX_ReleaseLifs. An empty
 * reply is a list with count 0. Returns -1 with ENOMEM, EBADMSG (the reply ends inside a record; no
 * partial list is returned) or the errno of the device; `*out` is then NULL.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetExtVlanLifs(uint16_t vlanId, RecordList** out)
    VDRZAX_NONNULL(2);

/*
 * List the bridge LIFs of a router instance.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * out           Where the address of the list is stored, required; NULL is not tested and faults.
 *
 * Returns, and leaves `*out`, as VDRZAX_GetExtVlanLifs does. When the command fails, the 16 bytes
 * of the header are lost: agents may have kept their address, so they are not given back.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetBridgeLifs(const char* instanceName, RecordList** out)
    VDRZAX_NONNULL(1, 2);

/* Free a record of VDRZAX_GetLif or VDRZAX_GetBridgeLif. NULL is ignored. */
VDRZAX_API void VDRZAX_ReleaseLif(LifRecord* record);

/* Free a list of LIFs, header and entries. NULL is ignored. */
VDRZAX_API void VDRZAX_ReleaseLifs(RecordList* list);

/*
 * Set the IPv4 address of the designated instance of a LIF.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required.
 * lifName       LIF name, text of at most 63 characters (a longer one is cut), required.
 * ip            u32 IPv4 address, not converted.
 *
 * Returns 0, or -1 with EINVAL (a name is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_SetLifDIIp(const char* instanceName, const char* lifName, uint32_t ip);

/* Set the IPv4 multicast address of a LIF's VXLAN, as VDRZAX_SetLifDIIp. */
VDRZAX_API int VDRZAX_SetLifVxlanMulticastIp(const char* instanceName, const char* lifName,
                                             uint32_t ip);

/*
 * Set an IPv4 address of a LIF.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required.
 * lifName       LIF name, text of at most 63 characters (a longer one is cut), required.
 * ip            u32 IPv4 address, not converted.
 * mask          u32 netmask or prefix, as the kernel takes it.
 *
 * Returns 0, or -1 with EINVAL (a name is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_SetLifIp(const char* instanceName, const char* lifName, uint32_t ip,
                               uint32_t mask);

/* Delete an IPv4 address of a LIF, as VDRZAX_SetLifIp. */
VDRZAX_API int VDRZAX_DelLifIp(const char* instanceName, const char* lifName, uint32_t ip,
                               uint32_t mask);

/*
 * Set an IPv6 address of a LIF.
 *
 * instanceName  Instance name, text of at most 64 characters (a longer one is cut), required.
 * lifName       LIF name, text of at most 64 characters (a longer one is cut), required. It is sent
 *               in two places.
 * addrHigh      First 8 bytes of the address, stored as the u64 is given.
 * addrLow       Last 8 bytes of the address, stored as the u64 is given.
 * prefixLength  Prefix length in bits. Only its low byte is sent, because the field is one byte:
 *               300 becomes 44.
 *
 * Unlike everywhere else the names are sent without a forced terminator, because the kernel takes
 * all 64 bytes. Returns 0, or -1 with EINVAL (a name is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_SetLifIpv6(const char* instanceName, const char* lifName, uint64_t addrHigh,
                                 uint64_t addrLow, uint32_t prefixLength);

/* Delete an IPv6 address of a LIF, as VDRZAX_SetLifIpv6. */
VDRZAX_API int VDRZAX_DelLifIpv6(const char* instanceName, const char* lifName, uint64_t addrHigh,
                                 uint64_t addrLow, uint32_t prefixLength);

/*
 * Put a LIF under the VXLAN control plane.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required.
 * lifName       LIF name, text of at most 63 characters (a longer one is cut), required.
 *
 * Returns 0, or -1 with EINVAL (a name is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_SetLifVxlanCP(const char* instanceName, const char* lifName);

/* Take a LIF from the VXLAN control plane, as VDRZAX_SetLifVxlanCP. */
VDRZAX_API int VDRZAX_DelLifVxlanCP(const char* instanceName, const char* lifName);

/* Bring a LIF up. instanceName, lifName and result as VDRZAX_SetLifVxlanCP. */
VDRZAX_API int VDRZAX_EnableLif(const char* instanceName, const char* lifName);

/* Bring a LIF down, as VDRZAX_EnableLif. */
VDRZAX_API int VDRZAX_DisableLif(const char* instanceName, const char* lifName);

/*
 * Clear the DHCP relay servers of a LIF.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required.
 * lifName       LIF name, text of at most 63 characters (a longer one is cut), required.
 * servers       NULL to clear the servers. Any text is refused with EINVAL, an empty one too; its
 *               first comma, if it has one, is then overwritten with a terminator and stays so.
 *
 * A text is a list of addresses, separated by commas, of which each must be valid both as IPv4 and
 * as IPv6. No address is, and agents count on the refusal, so servers cannot be set.
 *
 * Returns 0, or -1 with EINVAL (a name is NULL, or servers is not; nothing is sent) or the errno of
 * the device.
 */
VDRZAX_API int VDRZAX_ConfigureLifDhcpRelay(const char* instanceName, const char* lifName,
                                            char* servers);

/*
 * Set the IPv6 MTU of a LIF.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults, unlike in the other functions that name a LIF.
 * lifName       LIF name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * mtu           u32, passed on unchanged.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_RAMTUSetv6(const char* instanceName, const char* lifName, uint32_t mtu)
    VDRZAX_NONNULL(1, 2);

/*
 * Enable or disable multicast routing on a LIF.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required.
 * lifName       LIF name, text of at most 63 characters (a longer one is cut), required.
 * enable        0 disables, any other value enables. The two are commands of their own, so the
 *               value itself is not sent.
 *
 * Returns 0, or -1 with EINVAL (a name is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_SetLifMcastRouting(const char* instanceName, const char* lifName,
                                         uint8_t enable);

/*
 * Configure multicast routing of a router instance.
 *
 * instanceName            Instance name, text of at most 63 characters (a longer one is cut),
 *                         required.
 * name2                   Second name, text of at most 63 characters (a longer one is cut),
 *                         required; NULL is not tested and faults.
 * value1, value2, value3  Two u32 and a u16 whose meaning is the kernel's.
 * flag                    One byte whose meaning is the kernel's.
 *
 * Returns 0, or -1 with EINVAL (instanceName is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_SetMcastRouting(const char* instanceName, const char* name2, uint32_t value1,
                                      uint32_t value2, uint16_t value3, uint8_t flag)
    VDRZAX_NONNULL(2);

#ifdef __cplusplus
}
#endif

#endif
