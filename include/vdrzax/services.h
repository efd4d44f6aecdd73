/*
 * Services of the host's datapath that belong to no router instance: full-sync save, software
 * receive-side scaling (RSS) and the VM public IP table.
 */
#ifndef VDRZAX_SERVICES_H
#define VDRZAX_SERVICES_H

#include <vdrzax/channel.h>

#ifdef __cplusplus
extern "C" {
#endif

#pragma pack(push, 1)

/*
 * The statistics of one software RSS object. Unlike all other records it is not zero where nothing
 * was copied: the bytes named skipped, and the counters of queues that do not exist, are
 * unspecified and must not be read.
 */
typedef struct SoftRssStats {
  uint8_t skipped0[4];
  uint32_t queueCount; /* valid counters in each of the four arrays */
  uint32_t words8[16]; /* one counter a queue, as in the other three arrays */
  uint8_t skipped72[4];
  uint64_t qwords76[16];
  uint64_t qwords204[16];
  uint64_t qwords332[16];
  uint8_t skipped460[392];
} SoftRssStats;

/* The tunables of one software RSS object. */
typedef struct SoftRssTunables {
  uint64_t qword0;
  uint32_t word8; /* read from the kernel, never sent to it */
} SoftRssTunables;

/* An indirection table to set: for each entry the index of the queue. */
typedef struct SoftRssIndTable {
  uint8_t entries[128];
  int32_t entryCount; /* valid entries */
} SoftRssIndTable;

/* One entry of the VM public IP table, as the kernel wrote it. */
typedef struct VMPublicIPEntry {
  uint8_t entryHeader[14];
  uint32_t itemCount;
  uint32_t items[256]; /* the first itemCount are valid */
} VMPublicIPEntry;

/*
 * The VM public IP table, as the kernel wrote it: entries packed one after another, each of
 * 18 + 4 x its itemCount bytes. The next entry begins where the one before ends.
 */
typedef struct VMPublicIPTable {
  uint32_t entryCount;
  uint8_t entries[8536064];
} VMPublicIPTable;

#pragma pack(pop)

static_assert(sizeof(SoftRssStats) == 852, "SoftRssStats is 852 bytes");
static_assert(offsetof(SoftRssStats, queueCount) == 4, "SoftRssStats.queueCount");
static_assert(offsetof(SoftRssStats, words8) == 8, "SoftRssStats.words8");
static_assert(offsetof(SoftRssStats, qwords76) == 76, "SoftRssStats.qwords76");
static_assert(offsetof(SoftRssStats, qwords204) == 204, "SoftRssStats.qwords204");
static_assert(offsetof(SoftRssStats, qwords332) == 332, "SoftRssStats.qwords332");
static_assert(offsetof(SoftRssStats, skipped460) == 460, "SoftRssStats.skipped460");
static_assert(sizeof(SoftRssTunables) == 12, "SoftRssTunables is 12 bytes");
static_assert(offsetof(SoftRssTunables, word8) == 8, "SoftRssTunables.word8");
static_assert(sizeof(SoftRssIndTable) == 132, "SoftRssIndTable is 132 bytes");
static_assert(offsetof(SoftRssIndTable, entryCount) == 128, "SoftRssIndTable.entryCount");
static_assert(sizeof(VMPublicIPEntry) == 1042, "VMPublicIPEntry is 1042 bytes");
static_assert(offsetof(VMPublicIPEntry, itemCount) == 14, "VMPublicIPEntry.itemCount");
static_assert(offsetof(VMPublicIPEntry, items) == 18, "VMPublicIPEntry.items");
static_assert(sizeof(VMPublicIPTable) == 8536068, "VMPublicIPTable is 8536068 bytes");
static_assert(offsetof(VMPublicIPTable, entries) == 4, "VMPublicIPTable.entries");

/*
 * Save the complete state of the datapath for a later full synchronisation.
 *
 * flag    One byte whose meaning is the kernel's.
 * status  Where the kernel writes the u32 status, directly. NULL is not tested: it is passed on and
 *         the kernel decides.
 *
 * Returns 0, or -1 with the errno of the device. The variable holds what the kernel wrote, if
 * anything, also after a failure: the length of the reply is not examined, so set it before the
 * call where that matters.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_PerformFullSyncSave(uint8_t flag, uint32_t* status);

/* Read how the last save stands. `status` and result as VDRZAX_PerformFullSyncSave. */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetFullSyncSaveStatus(uint32_t* status);

/*
 * Read the statistics of a software RSS object.
 *
 * name  Name of the object, text of at most 63 characters (a longer one is cut), required. These
 *       objects belong to no instance.
 * out   Where the address of the record is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a record of the caller's, to be given to free(): there is no Release function. Only
 * queueCount and the counters of that many queues are copied; the length of the reply is not
 * examined. The count is trusted as it stands, because the kernel never sends more than 16: up to
 * 65 the counters run over into the fields behind them, and beyond that out of the record. Returns
 * -1 with EINVAL (name is NULL), ENOMEM or the errno of the device. `*out` is NULL when the record
 * could not be allocated and untouched after any other failure.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_SoftRSSGetStats(const char* name, SoftRssStats** out)
    VDRZAX_NONNULL(2);

/*
 * Reset the statistics of a software RSS object.
 *
 * name  Name of the object, text of at most 63 characters (a longer one is cut), required.
 *
 * Returns 0, or -1 with EINVAL (name is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_SoftRSSStatsReset(const char* name);

/*
 * Read the tunables of a software RSS object.
 *
 * name  Name of the object, text of at most 63 characters (a longer one is cut), required.
 * out   Structure of 12 bytes to be filled, required; NULL is not tested and faults.
 *
 * Returns 0, or -1 with EINVAL (name is NULL), ENOMEM or the errno of the device. The structure is
 * untouched after EINVAL and ENOMEM. It is overwritten also when the command fails, with
 * unspecified bytes, so that tunables of an earlier call are never taken for current ones. The
 * length of the reply is not examined.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_SoftRSSGetTunables(const char* name, SoftRssTunables* out)
    VDRZAX_NONNULL(2);

/*
 * Set the tunables of a software RSS object.
 *
 * name  Name of the object, text of at most 63 characters (a longer one is cut), required.
 * in    The tunables, required; NULL is not tested and faults. Only `qword0` is read and sent: the
 *       kernel sets `word8` itself.
 *
 * Returns 0, or -1 with EINVAL (name is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_SoftRSSSetTunables(const char* name, const SoftRssTunables* in)
    VDRZAX_NONNULL(2);

/*
 * Read the indirection table of a software RSS object.
 *
 * name   Name of the object, text of at most 63 characters (a longer one is cut), required.
 * table  128 bytes to be filled with queue indexes, required; NULL is not tested and faults.
 *
 * Returns 0, or -1 with EINVAL (name is NULL), ENOMEM or the errno of the device; the table is then
 * untouched. After success all 128 bytes are written whatever the length of the reply: those that
 * the kernel did not fill are unspecified.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_SoftRSSGetIndTable(const char* name, uint8_t* table)
    VDRZAX_NONNULL(2);

/*
 * Set the indirection table of a software RSS object.
 *
 * name  Name of the object, text of at most 63 characters (a longer one is cut), required.
 * in    The table, required; NULL is not tested and faults. Only the first `entryCount` entries are
 *       sent, none when it is 0 or less. The count is not bounded, because the caller knows the
 *       size of its table: above 132 the copy sends the bytes behind the structure too, and above
 *       648 it leaves the request. Do not pass more than 128.
 *
 * Returns 0, or -1 with EINVAL (name is NULL) or the errno of the device.
 */
VDRZAX_API int VDRZAX_SoftRSSTableSet(const char* name, const SoftRssIndTable* in)
    VDRZAX_NONNULL(2);

/*
 * Add a mapping to the VM public IP table.
 *
 * a, b  u32 addresses, not converted.
 * c     6 bytes, required.
 * d     u32 whose meaning is the kernel's.
 *
 * Returns 0, or -1 with the errno of the device. Returns -1 and leaves errno as it was when c is
 * NULL; nothing is sent then. errno is the device's alone in the functions of this table, but for
 * ENOMEM.
 */
VDRZAX_API int VDRZAX_AddVMPublicIP(uint32_t a, uint32_t b, const MacValue* c, uint32_t d);

/*
 * Delete a mapping of the VM public IP table.
 *
 * a, b  u32 addresses, not converted.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_DelVMPublicIP(uint32_t a, uint32_t b);

/*
 * Delete one entry of the VM public IP table.
 *
 * key  u32 that the entry is known by.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_DelVMPublicIPEntry(uint32_t key);

/* Delete all entries of the VM public IP table. Returns 0, or -1 with the errno of the device. */
VDRZAX_API int VDRZAX_DelAllVMPublicIPEntries(void);

/*
 * Read one entry of the VM public IP table.
 *
 * key  u32 that the entry is known by.
 * out  Where the address of the entry is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and an entry of the caller's, as the kernel wrote it, to be given to
 * VDRZAX_ReleaseVMPublicIPEntry. Its memory is always 1042 bytes, zero behind the reply. Returns -1
 * with ENOMEM or the errno of the device, and -1 with errno as it was when the reply is shorter
 * than 18 + 4 x its itemCount bytes. `*out` is untouched after any failure. When the command itself
 * fails the 1042 bytes are not given back, because the kernel may still be writing to them.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetVMPublicIPEntry(uint32_t key, VMPublicIPEntry** out)
    VDRZAX_NONNULL(2);

/* Free an entry of VDRZAX_GetVMPublicIPEntry. NULL is ignored. */
VDRZAX_API void VDRZAX_ReleaseVMPublicIPEntry(VMPublicIPEntry* e);

/*
 * Read the whole VM public IP table.
 *
 * out  Where the address of the table is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a table of the caller's, as the kernel wrote it, to be given to
 * VDRZAX_ReleaseVMPublicIPTable. Its memory is always 8536068 bytes, which the library touches only
 * as far as the reply goes. Returns -1 with ENOMEM or the errno of the device, and -1 with errno as
 * it was when the reply is shorter than 4 bytes or ends before the last of its entryCount entries
 * does. `*out` is untouched after any failure. When the command itself fails the 8536068 bytes are
 * not given back, because the kernel may still be writing to them.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetVMPublicIPTable(VMPublicIPTable** out) VDRZAX_NONNULL(1);

/* Free a table of VDRZAX_GetVMPublicIPTable. NULL is ignored. */
VDRZAX_API void VDRZAX_ReleaseVMPublicIPTable(VMPublicIPTable* t);

#ifdef __cplusplus
}
#endif

#endif
