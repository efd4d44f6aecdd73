/*
 * Router instances, their statistics and control-plane state, the settings of the datapath as a
 * whole, and connections.
 */
#ifndef VDRZAX_INSTANCE_H
#define VDRZAX_INSTANCE_H

#include <vdrzax/channel.h>

#ifdef __cplusplus
extern "C" {
#endif

#pragma pack(push, 1)

/*
 * One router instance as the datapath reports it. The library interprets no number; a field whose
 * meaning is the kernel's alone is named by its place. Texts are always terminated.
 */
typedef struct InstanceRecord {
  char name[64];
  uint32_t word64;
  uint32_t word68;
  uint8_t byte72;
  char text73[256];
  char text329[64];
  uint8_t address393[6]; /* cleared by VDRZAX_ReleaseInstances before the memory is given back */
  uint32_t word399;
  uint32_t word403;
  uint32_t word407;
  uint8_t byte411;
  uint16_t half412;
  uint8_t skipped414[2]; /* never copied from the reply: always zero */
  uint8_t byte416;
  uint8_t byte417;
  uint8_t bytes418[13];
  uint32_t words431[4];
  uint8_t address447[6];
  uint8_t byte453;
  uint16_t half454;
  uint8_t byte456;
  char text457[64];
  uint16_t half521;
  uint8_t bytes523[40];
  uint32_t word563;
  uint8_t byte567;
  uint32_t word568;
  uint32_t word572;
  uint8_t byte576;
} InstanceRecord;

/*
 * Counters of one kind. `type` tells which set the record carries; the set decides which slots are
 * copied from the reply, all others are zero:
 *   type 0  slots 0 to 7 and 9 to 27
 *   type 1  slots 0 to 76, 78 to 82 and 84 to 105; slot 90 repeats slot 89
 *   type 3  slots 1 to 19
 *   other   none
 * What a slot counts is the kernel's.
 */
typedef struct StatsRecord {
  uint32_t type;
  uint64_t slots[106];
} StatsRecord;

/* One of the five parts of a control-plane sync state. What its numbers mean is the kernel's. */
typedef struct CPSyncStateEntry {
  uint64_t qword0;
  uint32_t words8[5];
  uint64_t qwords28[8];
  uint8_t skipped92[8]; /* never copied from the reply: always zero */
  uint64_t qwords100[23];
} CPSyncStateEntry;

typedef struct CPSyncStateRecord {
  CPSyncStateEntry entries[5];
} CPSyncStateRecord;

#pragma pack(pop)

static_assert(sizeof(InstanceRecord) == 577, "InstanceRecord is 577 bytes");
static_assert(offsetof(InstanceRecord, text73) == 73, "InstanceRecord.text73");
static_assert(offsetof(InstanceRecord, address393) == 393, "InstanceRecord.address393");
static_assert(offsetof(InstanceRecord, skipped414) == 414, "InstanceRecord.skipped414");
static_assert(offsetof(InstanceRecord, words431) == 431, "InstanceRecord.words431");
static_assert(offsetof(InstanceRecord, text457) == 457, "InstanceRecord.text457");
static_assert(offsetof(InstanceRecord, byte576) == 576, "InstanceRecord.byte576");
static_assert(sizeof(StatsRecord) == 852, "StatsRecord is 852 bytes");
static_assert(offsetof(StatsRecord, slots) == 4, "StatsRecord.slots");
static_assert(sizeof(CPSyncStateEntry) == 284, "CPSyncStateEntry is 284 bytes");
static_assert(offsetof(CPSyncStateEntry, words8) == 8, "CPSyncStateEntry.words8");
static_assert(offsetof(CPSyncStateEntry, qwords28) == 28, "CPSyncStateEntry.qwords28");
static_assert(offsetof(CPSyncStateEntry, skipped92) == 92, "CPSyncStateEntry.skipped92");
static_assert(offsetof(CPSyncStateEntry, qwords100) == 100, "CPSyncStateEntry.qwords100");
static_assert(sizeof(CPSyncStateRecord) == 1420, "CPSyncStateRecord is 1420 bytes");

/*
 * Read one router instance.
 *
 * name  Instance name, text of at most 63 characters (a longer one is cut), required.
 * out   Where the address of the record is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a record of the caller's, to be given to VDRZAX_ReleaseInstance. Returns -1 with
 * EINVAL (name is NULL), ENOMEM, EBADMSG (reply shorter than 577 bytes) or the errno of the device.
 * `*out` is untouched after EINVAL, after a failed command and when the reply buffer could not be
 * allocated; it is NULL after EBADMSG and when the record could not be allocated.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetInstance(const char* name, InstanceRecord** out)
    VDRZAX_NONNULL(2);

/*
 * List router instances.
 *
 * name    Instance name, text of at most 63 characters. Read only when filter is not 0, and then
 *         required: NULL is not tested and faults. With filter 0 it may be NULL.
 * filter  0 lists all instances, any other value asks the kernel for the named one. The byte itself
 *         is sent too.
 * out     Where the address of the list is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a list of at most 1001 InstanceRecord, to be given to VDRZAX_ReleaseInstances. An
 * empty reply is a list with count 0. Returns -1 with ENOMEM, EBADMSG (the reply ends inside a
 * record; no partial list is returned) or the errno of the device; `*out` is then NULL.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetInstances(const char* name, uint8_t filter,
                                                  RecordList** out) VDRZAX_NONNULL(3);

/*
 * Create a router instance, or update it when it exists.
 *
 * name    Instance name, text of at most 63 characters (a longer one is cut), required.
 * second  u32 whose meaning is the kernel's.
 * text    Text of at most 18 characters, or NULL for none. Unlike every other text it is sent
 *         without a forced terminator, because the kernel takes all 18 bytes.
 * fourth  u32 whose meaning is the kernel's.
 * flag    One byte whose meaning is the kernel's.
 *
 * Returns 0, or -1 with EINVAL (name is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_SetVdrInstance(const char* name, uint32_t second, const char* text,
                                     uint32_t fourth, uint8_t flag);

/*
 * Delete a router instance.
 *
 * name  Instance name, text of at most 63 characters (a longer one is cut), required.
 *
 * Returns 0, or -1 with EINVAL (name is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_DelVdrInstance(const char* name);

/*
 * Set the tunables of a router instance.
 *
 * name      Instance name, text of at most 63 characters (a longer one is cut), required.
 * tunables  Text of at most 63 characters (a longer one is cut), required; NULL is not tested and
 *           faults.
 * value     u32 whose meaning is the kernel's.
 *
 * Returns 0, or -1 with EINVAL (name is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_SetVdrInstanceTunables(const char* name, const char* tunables, uint32_t value)
    VDRZAX_NONNULL(2);

/* Free a record of VDRZAX_GetInstance. NULL is ignored. */
VDRZAX_API void VDRZAX_ReleaseInstance(InstanceRecord* record);

/*
 * Free a list of VDRZAX_GetInstances, header and entries. NULL is ignored. The six bytes
 * `address393` of each record are cleared first, so that no address stays behind in freed memory.
 */
VDRZAX_API void VDRZAX_ReleaseInstances(RecordList* list);

/*
 * Read the control-plane counters of a router instance.
 *
 * name  Instance name, text of at most 63 characters (a longer one is cut), required.
 * out   Where the address of the record is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a record of the caller's, to be given to VDRZAX_ReleaseStats; a type that the
 * library does not know is no failure. Returns -1 with EINVAL (name is NULL), ENOMEM, EBADMSG
 * (reply shorter than 852 bytes) or the errno of the device. `*out` is untouched after EINVAL,
 * after a failed command and when the reply buffer could not be allocated; it is NULL after EBADMSG
 * and when the record could not be allocated.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetVdrInstanceCPStats(const char* name, StatsRecord** out)
    VDRZAX_NONNULL(2);

/*
 * Reset the control-plane counters of a router instance.
 *
 * name  Instance name, text of at most 63 characters (a longer one is cut), required.
 *
 * Returns 0, or -1 with EINVAL (name is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_ResetVdrInstanceCPStats(const char* name);

/*
 * Read the counters of a logical interface. The kernel gathers them afresh.
 *
 * instanceName   Instance name, text of at most 63 characters (a longer one is cut), required.
 * interfaceName  LIF name, text of at most 63 characters (a longer one is cut), required; NULL is
 *                not tested and faults, before anything is allocated.
 * out            Where the address of the record is stored, required; NULL is not tested and
 *                faults.
 *
 * Returns, and leaves `*out`, as VDRZAX_GetVdrInstanceCPStats does; EINVAL means that instanceName
 * is NULL.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetLifStats(const char* instanceName,
                                                 const char* interfaceName, StatsRecord** out)
    VDRZAX_NONNULL(2, 3);

/*
 * Read the counters of a logical interface that the kernel has cached. All else as
 * VDRZAX_GetLifStats.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetLifStatsCached(const char* instanceName,
                                                       const char* interfaceName, StatsRecord** out)
    VDRZAX_NONNULL(2, 3);

/*
 * Reset the counters of a logical interface.
 *
 * instanceName   Instance name, text of at most 63 characters (a longer one is cut), required.
 * interfaceName  LIF name, text of at most 63 characters (a longer one is cut), required; NULL is
 *                not tested and faults.
 *
 * Returns 0, or -1 with EINVAL (instanceName is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_ResetLifStats(const char* instanceName, const char* interfaceName)
    VDRZAX_NONNULL(2);

/*
 * Read the counters of the datapath as a whole.
 *
 * out  Where the address of the record is stored, required; NULL is not tested and faults.
 *
 * Returns, and leaves `*out`, as VDRZAX_GetVdrInstanceCPStats does, but never with EINVAL.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetVdrDiStats(StatsRecord** out) VDRZAX_NONNULL(1);

/* Reset the counters of the datapath as a whole. Returns 0, or -1 with the errno of the device. */
VDRZAX_API int VDRZAX_ResetVdrDiStats(void);

/* Free a record of any getter of counters. NULL is ignored. */
VDRZAX_API void VDRZAX_ReleaseStats(StatsRecord* record);

/*
 * Read the control-plane sync state of a router instance.
 *
 * name  Instance name, text of at most 63 characters (a longer one is cut), required.
 * out   Where the address of the record is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a record of the caller's, to be given to free(): it has no Release function,
 * because agents keep it like memory of their own. Returns -1 with EINVAL (name is NULL), ENOMEM,
 * EBADMSG (reply shorter than 1420 bytes) or the errno of the device. `*out` is untouched after
 * EINVAL, after a failed command and when the reply buffer could not be allocated; it is NULL after
 * EBADMSG and when the record could not be allocated.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetVdrInstanceCPSyncState(const char* name,
                                                               CPSyncStateRecord** out)
    VDRZAX_NONNULL(2);

/*
 * Set the control-plane sync state of a router instance.
 *
 * name   Instance name, text of at most 63 characters (a longer one is cut), required.
 * state  u32 whose meaning is the kernel's.
 *
 * Returns 0, or -1 with EINVAL (name is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_SetVdrInstanceCPSyncState(const char* name, uint32_t state);

/*
 * Activate the control plane. No instance is named.
 *
 * value  u32, passed on unchanged; what it means is the kernel's.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_CPActivate(uint32_t value);

/*
 * Set the control-plane address of a router instance.
 *
 * name     Instance name, text of at most 63 characters (a longer one is cut), required.
 * address  u32 IPv4 address, not converted.
 *
 * Returns 0, or -1 with EINVAL (name is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_SetCPIp(const char* name, uint32_t address);

/*
 * Read the log level of the datapath.
 *
 * level  Where the u32 is stored; NULL gives EINVAL and sends nothing.
 *
 * What a value means is the kernel's. Returns 0, or -1 with EINVAL or the errno of the device; the
 * caller's variable is then untouched. The length of the reply is not examined: a kernel that
 * succeeds with fewer than 4 bytes leaves the value undefined.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetLogLevel(uint32_t* level);

/* Read the extended log level of the datapath, as VDRZAX_GetLogLevel. */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetExtendedLogLevel(uint32_t* level);

/* Read the statistics level of the datapath, as VDRZAX_GetLogLevel. */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetStatsLevel(uint32_t* level);

/* Read the size of the transmit dispatch queue of the datapath, as VDRZAX_GetLogLevel. */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetTxDispQueueSize(uint32_t* size);

/*
 * Set the log level of the datapath.
 *
 * level  u32, passed on unchanged; the kernel decides what it means and may refuse it.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_SetLogLevel(uint32_t level);

/* Set the extended log level of the datapath, as VDRZAX_SetLogLevel. */
VDRZAX_API int VDRZAX_SetExtendedLogLevel(uint32_t level);

/* Set the statistics level of the datapath, as VDRZAX_SetLogLevel. */
VDRZAX_API int VDRZAX_SetStatsLevel(uint32_t level);

/* Set the size of the transmit dispatch queue of the datapath, as VDRZAX_SetLogLevel. */
VDRZAX_API int VDRZAX_SetTxDispQueueSize(uint32_t size);

/*
 * Tell the datapath that its kernel module is about to be unloaded. The library itself has nothing
 * to tear down. Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_PreUnload(void);

/*
 * Plumb a connection: create it in the datapath.
 *
 * connectionName  Text of at most 63 characters (a longer one is cut), required; NULL is not tested
 *                 and faults.
 * second          Text of at most 15 characters (a longer one is cut), required; NULL is not tested
 *                 and faults.
 * third           Ignored; it stays so that the order of the arguments stays.
 * fourth          Text of at most 17 characters (a longer one is cut), or NULL for none.
 * fifth           Text of at most 31 characters (a longer one is cut), or NULL for none.
 * sixth           Text of at most 255 characters (a longer one is cut), or NULL for none.
 * seventh         u32, passed on unchanged.
 *
 * What the second and the fourth to the seventh mean is the kernel's. Returns 0, or -1 with the
 * errno of the device.
 */
VDRZAX_API int VDRZAX_PlumbVdrConnection(const char* connectionName, const char* second,
                                         uint64_t third, const char* fourth, const char* fifth,
                                         const char* sixth, uint32_t seventh) VDRZAX_NONNULL(1, 2);

/*
 * Unplumb a connection: remove it from the datapath.
 *
 * connectionName  Text of at most 63 characters (a longer one is cut), required; NULL is not tested
 *                 and faults.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_UnPlumbVdrConnection(const char* connectionName) VDRZAX_NONNULL(1);

/*
 * Read all connections.
 *
 * buffer  At least 131072 bytes of the caller's, required. NULL is not tested: the kernel decides.
 *
 * The kernel writes straight into the buffer, in a layout of its own. How many bytes it wrote is
 * not reported: clear the buffer first to tell. Returns 0, or -1 with the errno of the device; the
 * buffer then holds what the kernel left there.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetConnections(void* buffer);

/*
 * Read one connection, into at least 152 bytes. `buffer` and result as VDRZAX_GetConnections.
 *
 * connectionName  Text of at most 63 characters (a longer one is cut), required; NULL is not tested
 *                 and faults.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetConnection(const char* connectionName, void* buffer)
    VDRZAX_NONNULL(1);

/* Read the virtual MAC address of a connection, 6 bytes, as VDRZAX_GetConnection. */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetVMAC(const char* connectionName, void* buffer)
    VDRZAX_NONNULL(1);

/*
 * Ask whether the deletion of connections is pending.
 *
 * result  Where the u32 is stored, required; NULL is not tested and faults once the command has
 *         succeeded.
 *
 * What the value means is the kernel's. Returns 0, or -1 with the errno of the device; `*result` is
 * then untouched. The length of the reply is not examined: a kernel that succeeds with fewer than 4
 * bytes leaves the value undefined.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_VDRDevCheckConnDeletion(uint32_t* result) VDRZAX_NONNULL(1);

#ifdef __cplusplus
}
#endif

#endif
