/*
 * Multicast routing of a router instance: local and remote receivers, domain, groups, replication
 * address and multicast routers.
 *
 * None of these functions tests an argument, so none sets EINVAL: an instance name that is NULL
 * faults. Pass an empty text for none.
 */
#ifndef VDRZAX_MCAST_H
#define VDRZAX_MCAST_H

#include <vdrzax/channel.h>

#ifdef __cplusplus
extern "C" {
#endif

#pragma pack(push, 1)

/* One local receiver. The name is always terminated. */
typedef struct MRoutingLocalRcvr {
  char rcvrName[64];
  uint32_t value64;
  uint32_t value68;
  uint8_t address[16];
} MRoutingLocalRcvr;

/* One remote receiver (tunnel endpoint), byte for byte as the datapath reports it. */
typedef struct VtepEntry {
  uint8_t bytes[68];
} VtepEntry;

/* The multicast routing domain of an instance. Both texts are always terminated. */
typedef struct MRoutingDomain {
  char domainName[64];
  char domainLabel[48];
  uint8_t domainData[32];
  uint32_t domainValue;
} MRoutingDomain;

/* One multicast group: three words whose meaning is the kernel's. */
typedef struct MRoutingMcastGroup {
  uint32_t group0;
  uint32_t group1;
  uint32_t group2;
} MRoutingMcastGroup;

#pragma pack(pop)

/* The remote receivers of an instance: count entries in one array. */
typedef struct VTEPTable {
  int32_t count;
  VtepEntry* entries;
} VTEPTable;

static_assert(sizeof(MRoutingLocalRcvr) == 88, "MRoutingLocalRcvr is 88 bytes");
static_assert(offsetof(MRoutingLocalRcvr, value64) == 64, "MRoutingLocalRcvr.value64");
static_assert(offsetof(MRoutingLocalRcvr, value68) == 68, "MRoutingLocalRcvr.value68");
static_assert(offsetof(MRoutingLocalRcvr, address) == 72, "MRoutingLocalRcvr.address");
static_assert(sizeof(VtepEntry) == 68, "VtepEntry is 68 bytes");
static_assert(sizeof(VTEPTable) == 16, "VTEPTable is 16 bytes");
static_assert(offsetof(VTEPTable, entries) == 8, "VTEPTable.entries");
static_assert(sizeof(MRoutingDomain) == 148, "MRoutingDomain is 148 bytes");
static_assert(offsetof(MRoutingDomain, domainLabel) == 64, "MRoutingDomain.domainLabel");
static_assert(offsetof(MRoutingDomain, domainData) == 112, "MRoutingDomain.domainData");
static_assert(offsetof(MRoutingDomain, domainValue) == 144, "MRoutingDomain.domainValue");
static_assert(sizeof(MRoutingMcastGroup) == 12, "MRoutingMcastGroup is 12 bytes");
static_assert(offsetof(MRoutingMcastGroup, group2) == 8, "MRoutingMcastGroup.group2");

/*
 * List the local receivers of a router instance.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * key           u32 whose meaning is the kernel's.
 * out           Where the address of the list is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a list of at most 512 MRoutingLocalRcvr, to be given to
 * VDRZAX_ReleaseMRoutingLocalRcvrs. An empty reply is a list with count 0; records beyond the 512th
 * are ignored. Returns -1 with ENOMEM, EBADMSG (the reply ends inside a record; no partial list is
 * returned) or the errno of the device; `*out` is then NULL. When the command itself fails, the 16
 * bytes of the list's header are not given back: `*out` named them while the command ran, and
 * another thread of the agent may have kept their address.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetMRoutingLocalRcvrs(const char* instanceName, uint32_t key,
                                                           RecordList** out) VDRZAX_NONNULL(1, 3);

/*
 * Add a local receiver to a router instance.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * key           u32 whose meaning is the kernel's.
 * rcvrName      Receiver name, text of at most 63 characters (a longer one is cut), or NULL for
 *               none: its place stays zero.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_AddMRoutingLocalRcvrs(const char* instanceName, uint32_t key,
                                            const char* rcvrName) VDRZAX_NONNULL(1);

/* Delete a local receiver of a router instance, as VDRZAX_AddMRoutingLocalRcvrs. */
VDRZAX_API int VDRZAX_DelMRoutingLocalRcvrs(const char* instanceName, uint32_t key,
                                            const char* rcvrName) VDRZAX_NONNULL(1);

/* Free a list of VDRZAX_GetMRoutingLocalRcvrs, header and entries. NULL is ignored. */
VDRZAX_API void VDRZAX_ReleaseMRoutingLocalRcvrs(RecordList* list);

/*
 * Read the remote receivers of a router instance.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * key           u32 whose meaning is the kernel's.
 * out           Where the address of the table is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a table of the caller's, to be given to VDRZAX_ReleaseVTEPTable. The reply has room
 * for 2048 entries. Returns -1 with ENOMEM, EBADMSG (the reply is shorter than 4 bytes and 68 for
 * each entry that it claims) or the errno of the device. The size that a reply needs is reckoned in
 * signed 32 bits, so a count that no reply can hold wraps: it gives EBADMSG unless the wrapped size
 * is one that the reply has, and then ENOMEM or a table whose entries are zero beyond the reply. A
 * reply shorter than 4 bytes has a count that is undefined. `*out` is untouched after a failed
 * command and when the reply buffer could not be allocated; it is NULL after any other failure.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetMRoutingRemoteRcvrs(const char* instanceName, uint32_t key,
                                                            VTEPTable** out) VDRZAX_NONNULL(1, 3);

/*
 * Free a table of VDRZAX_GetMRoutingRemoteRcvrs. NULL is ignored. The entries are freed only when
 * the count is not 0, so the count must not be changed before. Of a table without entries the
 * header alone is freed: its pointer is an allocation of no bytes, which is not looked at, so that
 * a header which an agent made itself need not set it.
 */
VDRZAX_API void VDRZAX_ReleaseVTEPTable(VTEPTable* table);

/*
 * Add a remote receiver to a router instance.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * a, b, d, e    u32 each, whose meaning is the kernel's.
 * c             Hardware address of 6 bytes, required; NULL is not tested and faults.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_AddMRoutingRemoteRcvrs(const char* instanceName, uint32_t a, uint32_t b,
                                             const MacValue* c, uint32_t d, uint32_t e)
    VDRZAX_NONNULL(1, 4);

/*
 * Delete a remote receiver of a router instance.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * a, b          u32 each, as given to VDRZAX_AddMRoutingRemoteRcvrs.
 *
 * The kernel looks at these three and nothing else, so the rest of the request is not cleared:
 * unlike in every other command its bytes are unspecified. A journal of the requests will show
 * them.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_DelMRoutingRemoteRcvrs(const char* instanceName, uint32_t a, uint32_t b)
    VDRZAX_NONNULL(1);

/*
 * Read the multicast routing domain of a router instance.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * out           Where the address of the record is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a record of the caller's, to be given to VDRZAX_ReleaseMRoutingDomainData. Returns
 * -1 with ENOMEM, EBADMSG (reply shorter than 148 bytes) or the errno of the device. `*out` is
 * untouched after a failed command and when the reply buffer could not be allocated; it is NULL
 * after EBADMSG and when the record could not be allocated.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetMRoutingDomain(const char* instanceName,
                                                       MRoutingDomain** out) VDRZAX_NONNULL(1, 2);

/* Free a record of VDRZAX_GetMRoutingDomain. NULL is ignored. */
VDRZAX_API void VDRZAX_ReleaseMRoutingDomainData(MRoutingDomain* rec);

/*
 * List the multicast groups of a router instance.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * out           Where the address of the list is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a list of at most 4096 MRoutingMcastGroup, to be given to
 * VDRZAX_ReleaseMRoutingMcastGroups. An empty reply is a list with count 0; records beyond the
 * 4096th are ignored. A reply that ends inside a record is not refused, unlike in other lists: the
 * kernel may cut the last group, which is returned whole, with unspecified bytes where the reply
 * ended. Returns -1 with ENOMEM or the errno of the device; `*out` is then NULL. When the command
 * itself fails, the 16 bytes of the list's header are not given back, as with the local receivers.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetMRoutingAllMcastGroups(const char* instanceName,
                                                               RecordList** out)
    VDRZAX_NONNULL(1, 2);

/* Free a list of VDRZAX_GetMRoutingAllMcastGroups, header and entries. NULL is ignored. */
VDRZAX_API void VDRZAX_ReleaseMRoutingMcastGroups(RecordList* list);

/*
 * Read the replication address of a router instance.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * key           u32 whose meaning is the kernel's.
 * outIp         Where the kernel writes the u32 IPv4 address, directly; it is not converted. NULL
 *               is not tested: the kernel decides.
 *
 * Returns 0, or -1 with the errno of the device. The variable holds what the kernel wrote, if
 * anything, also after a failure: the length of the reply is not examined, so set it before the
 * call where that matters.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetMRoutingReplicationIP(const char* instanceName,
                                                              uint32_t key, uint32_t* outIp)
    VDRZAX_NONNULL(1);

/*
 * Read the address of a multicast router of a router instance, as VDRZAX_GetMRoutingReplicationIP.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetMRoutingMRouterIP(const char* instanceName, uint32_t key,
                                                          uint32_t* outIp) VDRZAX_NONNULL(1);

/*
 * Add a multicast router to a router instance.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * ip            u32 IPv4 address, not converted.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_AddMRoutingMRouter(const char* instanceName, uint32_t ip) VDRZAX_NONNULL(1);

/*
 * Delete the multicast router of a router instance. No address is sent: the instance alone is
 * named.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_DelMRoutingMRouter(const char* instanceName) VDRZAX_NONNULL(1);

#ifdef __cplusplus
}
#endif

#endif
