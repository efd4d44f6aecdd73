/*
 * Routes and neighbours of a router instance, demultiplexing routes, and the flush of tables.
 */
#ifndef VDRZAX_ROUTE_H
#define VDRZAX_ROUTE_H

#include <vdrzax/channel.h>

#ifdef __cplusplus
extern "C" {
#endif

#pragma pack(push, 1)

/* One next hop of a route. The name is always terminated. */
typedef struct RouteNextHop {
  uint8_t skipped0[4]; /* never copied from the reply: always zero */
  uint32_t hopWord;
  char hopName[64];
  uint64_t hopQword;
} RouteNextHop;

/*
 * One IPv4 route as the datapath reports it. The library interprets nothing but the number of next
 * hops; the other fields are named by their place.
 */
typedef struct RouteRecord {
  uint32_t routeWord0;
  uint32_t routeWord1;
  uint32_t routeWord2;
  uint32_t routeWord3;
  uint8_t routeByte;
  uint8_t nextHopCount; /* valid entries of nextHops, 0 to 8; the kernel's number is trusted */
  uint8_t skipped18[2]; /* never copied from the reply: always zero */
  uint64_t routeQword;
  RouteNextHop nextHops[8]; /* those beyond nextHopCount are zero */
} RouteRecord;

/* One demultiplexing route as the datapath reports it. Both names are always terminated. */
typedef struct DemuxRouteRecord {
  uint32_t demuxWord0;
  uint32_t demuxWord1;
  uint32_t demuxWord2;
  uint64_t demuxQword;
  char demuxName1[64];
  char demuxName2[64];
} DemuxRouteRecord;

#pragma pack(pop)

static_assert(sizeof(RouteNextHop) == 80, "RouteNextHop is 80 bytes");
static_assert(offsetof(RouteNextHop, hopWord) == 4, "RouteNextHop.hopWord");
static_assert(offsetof(RouteNextHop, hopName) == 8, "RouteNextHop.hopName");
static_assert(offsetof(RouteNextHop, hopQword) == 72, "RouteNextHop.hopQword");
static_assert(sizeof(RouteRecord) == 668, "RouteRecord is 668 bytes");
static_assert(offsetof(RouteRecord, routeByte) == 16, "RouteRecord.routeByte");
static_assert(offsetof(RouteRecord, nextHopCount) == 17, "RouteRecord.nextHopCount");
static_assert(offsetof(RouteRecord, skipped18) == 18, "RouteRecord.skipped18");
static_assert(offsetof(RouteRecord, routeQword) == 20, "RouteRecord.routeQword");
static_assert(offsetof(RouteRecord, nextHops) == 28, "RouteRecord.nextHops");
static_assert(sizeof(DemuxRouteRecord) == 148, "DemuxRouteRecord is 148 bytes");
static_assert(offsetof(DemuxRouteRecord, demuxQword) == 12, "DemuxRouteRecord.demuxQword");
static_assert(offsetof(DemuxRouteRecord, demuxName1) == 20, "DemuxRouteRecord.demuxName1");
static_assert(offsetof(DemuxRouteRecord, demuxName2) == 84, "DemuxRouteRecord.demuxName2");

/*
 * Add an IPv4 route to a router instance.
 *
 * routeArg1, routeArg2, routeArg3
 *               u32 each, whose meaning is the kernel's.
 * ifName        Interface name, text of at most 63 characters (a longer one is cut), or NULL for
 *               none.
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required.
 * routeFlags    u32 whose meaning is the kernel's.
 * result        88 bytes that the kernel may fill, or NULL to ask for no answer. They are cleared
 *               before the command is sent, so that they read as zero when it never reached the
 *               kernel; after a failed command they hold what the kernel wrote before it failed.
 *               The library does not interpret them.
 *
 * Returns 0, or -1 with EINVAL (instanceName is NULL; `result` is then untouched) or the errno of
 * the device.
 */
VDRZAX_API int VDRZAX_SetRoute(uint32_t routeArg1, uint32_t routeArg2, uint32_t routeArg3,
                               const char* ifName, const char* instanceName, uint32_t routeFlags,
                               void* result);

/*
 * Delete an IPv4 route of a router instance.
 *
 * The parameters, the result and the errors are those of VDRZAX_SetRoute. A deletion takes
 * no flags: their place stays zero.
 */
VDRZAX_API int VDRZAX_DelRoute(uint32_t routeArg1, uint32_t routeArg2, uint32_t routeArg3,
                               const char* ifName, const char* instanceName, void* result);

/*
 * List the IPv4 routes of a router instance.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults, unlike in the commands that change routes.
 * out           Where the address of the list is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a list of at most 20000 RouteRecord, to be given to VDRZAX_ReleaseRoutes. An empty
 * reply is a list with count 0; records beyond the 20000th are ignored. Each call reserves
 * 13360000 bytes for the reply and as many for the entries, whatever the count. Returns -1 with
 * ENOMEM, EBADMSG (the reply ends inside a record; no partial list is returned) or the errno of the
 * device; `*out` is then NULL.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetRoutes(const char* instanceName, RecordList** out)
    VDRZAX_NONNULL(1, 2);

/* List the IPv4 routes for LIF selection of a router instance, as VDRZAX_GetRoutes. */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetLifSelectionRoutes(const char* instanceName,
                                                           RecordList** out) VDRZAX_NONNULL(1, 2);

/*
 * Read the IPv4 route that the datapath resolves a query to.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required.
 * resolveArg1, resolveArg2, resolveArg3
 *               u32 each, whose meaning is the kernel's.
 * out           Where the address of the record is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a record of the caller's, to be given to VDRZAX_ReleaseRoute. Returns -1 with
 * EINVAL (instanceName is NULL), ENOMEM, EBADMSG (reply shorter than 668 bytes) or the errno of the
 * device. `*out` is untouched after EINVAL, after a failed command and when the reply buffer could
 * not be allocated; it is NULL after EBADMSG and when the record could not be allocated.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetResolveRoute(const char* instanceName, uint32_t resolveArg1,
                                                     uint32_t resolveArg2, uint32_t resolveArg3,
                                                     RouteRecord** out) VDRZAX_NONNULL(5);

/* Free a record of VDRZAX_GetResolveRoute. NULL is ignored. */
VDRZAX_API void VDRZAX_ReleaseRoute(RouteRecord* record);

/*
 * Free a list of routes, header and entries. NULL is ignored. The lists of VDRZAX_GetRoutes, of
 * VDRZAX_GetLifSelectionRoutes and of the policies of a LIF are released here.
 */
VDRZAX_API void VDRZAX_ReleaseRoutes(RecordList* list);

/*
 * List the demultiplexing routes. The table is that of the whole datapath: no instance is named.
 *
 * out  Where the address of the list is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a list of at most 30000 DemuxRouteRecord, to be given to VDRZAX_ReleaseDemuxRoutes.
 * An empty reply is a list with count 0; records beyond the 30000th are ignored. Each call reserves
 * 4440000 bytes for the reply and as many for the entries, whatever the count. Returns -1 with
 * ENOMEM, EBADMSG (the reply ends inside a record; no partial list is returned) or the errno of the
 * device; `*out` is then NULL.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetDemuxRoutes(RecordList** out) VDRZAX_NONNULL(1);

/* Free a list of VDRZAX_GetDemuxRoutes, header and entries. NULL is ignored. */
VDRZAX_API void VDRZAX_ReleaseDemuxRoutes(RecordList* list);

/*
 * Add an IPv6 route to a router instance.
 *
 * destPart1, destPart2        The halves of the destination address, u64 each, not converted.
 * prefixLength                Prefix length of the destination, one byte; its range is not checked.
 * gatewayPart1, gatewayPart2  The halves of the next hop's address, u64 each, not converted.
 * ifName                      Interface name, text of at most 64 characters, or NULL for none.
 * instanceName                Instance name, text of at most 64 characters, required.
 *
 * Names are cut at 64 characters here, not at 63, and a name of 64 is sent without a terminator:
 * the kernel takes both forms, and its IPv6 commands are given the whole field.
 *
 * Returns 0, or -1 with EINVAL (instanceName is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_SetRoutev6(uint64_t destPart1, uint64_t destPart2, uint8_t prefixLength,
                                 uint64_t gatewayPart1, uint64_t gatewayPart2, const char* ifName,
                                 const char* instanceName);

/*
 * Delete an IPv6 route of a router instance, as VDRZAX_SetRoutev6. Gateway and interface are sent
 * here too.
 */
VDRZAX_API int VDRZAX_DelRoutev6(uint64_t destPart1, uint64_t destPart2, uint8_t prefixLength,
                                 uint64_t gatewayPart1, uint64_t gatewayPart2, const char* ifName,
                                 const char* instanceName);

/*
 * Read the IPv6 routes of a router instance as the kernel's own records of 776 bytes each.
 *
 * instanceName  Instance name, text of at most 64 characters (sent without a terminator when it has
 *               64), required; NULL is not tested and faults.
 * table         Where the address of the buffer is stored, required; NULL is not tested and faults.
 * count         Where the number of records is stored, required; NULL is not tested and faults.
 *
 * This is the one function that sends two commands: it asks for the number of routes first, then
 * for the table, into a buffer of 15520000 bytes when there are fewer than 20000 routes, else of
 * 23280000 bytes. `*count` is the length of the reply divided by 776; a remainder is ignored. The
 * library does not look into the records.
 *
 * Returns 0 and a buffer of the caller's, to be given to free(): there is no Release function.
 * Returns -1 with
 *   ENOMEM  the number of routes could not be had, for whatever reason (also when the device cannot
 *           be opened), or it is above 29999: `*table` and `*count` are untouched; or the buffer
 *           could not be allocated: `*table` is NULL, `*count` is untouched
 *   other   the errno of the device for the second command: the buffer was freed, but `*table`
 *           still holds its address and must not be used, and `*count` is written from what the
 *           kernel left as length, the buffer's capacity when it left nothing
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetRoutesv6(const char* instanceName, void** table,
                                                 uint32_t* count) VDRZAX_NONNULL(1, 2, 3);

/*
 * Add an ARP entry to a router instance.
 *
 * ip            u32 IPv4 address, not converted.
 * macText       Hardware address as text, six two-digit hexadecimal groups with separators. At most
 *               17 characters are sent (a longer text is cut). Required; NULL is not tested and
 *               faults.
 * ifName        Interface name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required.
 *
 * Returns 0, or -1 with EINVAL (instanceName is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_SetArp(uint32_t ip, const char* macText, const char* ifName,
                             const char* instanceName) VDRZAX_NONNULL(2, 3);

/*
 * Delete an ARP entry of a router instance. Parameters, result and errors as VDRZAX_SetArp, without
 * a hardware address.
 */
VDRZAX_API int VDRZAX_DelArp(uint32_t ip, const char* ifName, const char* instanceName)
    VDRZAX_NONNULL(2);

/* Add a proxy ARP entry to a router instance. Parameters, result and errors as VDRZAX_DelArp. */
VDRZAX_API int VDRZAX_SetProxyArp(uint32_t ip, const char* ifName, const char* instanceName)
    VDRZAX_NONNULL(2);

/* Delete a proxy ARP entry of a router instance, as VDRZAX_DelArp. */
VDRZAX_API int VDRZAX_DelProxyArp(uint32_t ip, const char* ifName, const char* instanceName)
    VDRZAX_NONNULL(2);

/*
 * Read the ARP entries of a router instance.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * ifName        Name of the one interface wanted, text of at most 63 characters (a longer one is
 *               cut), or NULL for all.
 * buffer        7667712 bytes of the caller's, required; NULL is not tested, it is given to the
 *               kernel. The kernel writes its own table straight into it.
 *
 * The length of the table is not handed back: it follows from the kernel's own format. Returns 0,
 * or -1 with the errno of the device; the buffer then holds what the kernel wrote, or is untouched.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetArps(const char* instanceName, const char* ifName,
                                             void* buffer) VDRZAX_NONNULL(1);

/* Read the proxy ARP entries of a router instance, as VDRZAX_GetArps. */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetProxyArps(const char* instanceName, const char* ifName,
                                                  void* buffer) VDRZAX_NONNULL(1);

/*
 * Clear the ARP entries of a router instance.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * ifName        Name of the one interface to clear, text of at most 63 characters (a longer one is
 *               cut), or NULL for all.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_ClearArp(const char* instanceName, const char* ifName) VDRZAX_NONNULL(1);

/*
 * Add an IPv6 neighbour to a router instance.
 *
 * ipPart1, ipPart2  The halves of the IPv6 address, u64 each, not converted, the first one first.
 * macText       Hardware address as text, six two-digit hexadecimal groups with separators. At most
 *               18 characters are sent. Required; NULL is not tested and faults.
 * ifName        Interface name, text of at most 64 characters, required; NULL is not tested and
 *               faults.
 * instanceName  Instance name, text of at most 64 characters, required.
 *
 * A text that fills its field is sent without a terminator: the kernel takes both forms, and its
 * IPv6 commands are given the whole field.
 *
 * Returns 0, or -1 with EINVAL (instanceName is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_SetArpv6(uint64_t ipPart1, uint64_t ipPart2, const char* macText,
                               const char* ifName, const char* instanceName) VDRZAX_NONNULL(3, 4);

/*
 * Delete an IPv6 neighbour of a router instance. Parameters, result and errors as VDRZAX_SetArpv6,
 * without a hardware address.
 */
VDRZAX_API int VDRZAX_DelArpv6(uint64_t ipPart1, uint64_t ipPart2, const char* ifName,
                               const char* instanceName) VDRZAX_NONNULL(3);

/*
 * Add an IPv6 proxy neighbour to a router instance. Parameters, result and errors as
 * VDRZAX_DelArpv6.
 */
VDRZAX_API int VDRZAX_SetProxyArpv6(uint64_t ipPart1, uint64_t ipPart2, const char* ifName,
                                    const char* instanceName) VDRZAX_NONNULL(3);

/* Delete an IPv6 proxy neighbour of a router instance, as VDRZAX_DelArpv6. */
VDRZAX_API int VDRZAX_DelProxyArpv6(uint64_t ipPart1, uint64_t ipPart2, const char* ifName,
                                    const char* instanceName) VDRZAX_NONNULL(3);

/*
 * Read the IPv6 neighbours of a router instance. Parameters, result and errors as VDRZAX_GetArps,
 * but both names take 64 characters and are then sent without a terminator. Proxy neighbours have
 * no getter of their own.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetArpsv6(const char* instanceName, const char* ifName,
                                               void* buffer) VDRZAX_NONNULL(1);

/*
 * Clear the IPv6 neighbours of a router instance. Parameters, result and errors as VDRZAX_ClearArp,
 * but both names take 64 characters and are then sent without a terminator.
 */
VDRZAX_API int VDRZAX_ClearArpv6(const char* instanceName, const char* ifName) VDRZAX_NONNULL(1);

/*
 * Clear the IPv6 path MTU table of the whole datapath; no instance is named. The name is
 * misspelt; callers are linked against it, so it stays.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_PMTUTableCearv6(void);

/*
 * Flush a table of the datapath; the kernel alone selects it from the arguments.
 *
 * flushTarget     u32 whose meaning is the kernel's.
 * flushSelector1, flushSelector2, flushSelector3
 *                 One byte each, whose meaning is the kernel's.
 * flushName       Text of at most 63 characters (a longer one is cut), or NULL for none. No
 *                 instance name is sent beside it.
 * flushValue      u32 whose meaning is the kernel's.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_GenericFlush(uint32_t flushTarget, uint8_t flushSelector1,
                                   uint8_t flushSelector2, uint8_t flushSelector3,
                                   const char* flushName, uint32_t flushValue);

#ifdef __cplusplus
}
#endif

#endif
