/*
 * Tables of the host's datapath that belong to no router instance: the edge-to-infrastructure (E2I)
 * mapping, the physical MAC, the locale identifier and the FL table.
 *
 * None of these functions tests an argument, so none sets EINVAL.
 */
#ifndef VDRZAX_E2I_H
#define VDRZAX_E2I_H

#include <vdrzax/channel.h>

#ifdef __cplusplus
extern "C" {
#endif

#pragma pack(push, 1)

/* One entry of the E2I table, byte for byte as the datapath reports it, in the kernel's layout. */
typedef struct E2IEntry {
  uint8_t bytes[26];
} E2IEntry;

/* The E2I table. The header is packed: the pointer stands unaligned behind the count. */
typedef struct E2ITable {
  int32_t count;
  E2IEntry* entries; /* count entries in one array */
} E2ITable;

#pragma pack(pop)

static_assert(sizeof(E2IEntry) == 26, "E2IEntry is 26 bytes");
static_assert(sizeof(E2ITable) == 12, "E2ITable is 12 bytes");
static_assert(offsetof(E2ITable, entries) == 4, "E2ITable.entries");

/*
 * Add an entry to the E2I table.
 *
 * key     u32 that the entry is known by.
 * value2, value4, value5
 *         u32 each, whose meaning is the kernel's.
 * mac     Hardware address of 6 bytes, required; NULL is not tested and faults, because the kernel
 *         knows no entry without an address.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_AddE2I(uint32_t key, uint32_t value2, const MacValue* mac, uint32_t value4,
                             uint32_t value5) VDRZAX_NONNULL(3);

/*
 * Delete one entry of the E2I table.
 *
 * key  u32 that the entry is known by.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_DelE2I(uint32_t key);

/* Delete all entries of the E2I table. Returns 0, or -1 with the errno of the device. */
VDRZAX_API int VDRZAX_DelAllE2I(void);

/*
 * Read one entry of the E2I table.
 *
 * key  u32 that the entry is known by.
 * out  Where the address of the entry is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and an entry of the caller's, to be given to free(): it is one plain block, so it has
 * no Release function. Returns -1 with ENOMEM, EBADMSG (the reply is not of exactly 26 bytes; a
 * longer one is refused too, because bytes that the library cannot place would be lost) or the
 * errno of the device. `*out` is NULL when the entry could not be allocated and untouched after any
 * other failure.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetE2IEntry(uint32_t key, E2IEntry** out) VDRZAX_NONNULL(2);

/*
 * Read the whole E2I table.
 *
 * out  Where the address of the table is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a table of the caller's, to be given to VDRZAX_ReleaseE2ITable. The reply has room
 * for 8192 entries. Its count is trusted as it stands: it is compared neither with 8192 nor with
 * the length of the reply, because the kernel owns the format. A reply shorter than 4 bytes thus
 * has a count that is undefined. Returns -1 with ENOMEM (also when the count is negative), EBADMSG
 * (the reply claims more than 212996 bytes) or the errno of the device. `*out` is untouched after a
 * failed command, after EBADMSG and when the reply buffer could not be allocated; it is NULL when
 * the table could not be allocated.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetE2ITable(E2ITable** out) VDRZAX_NONNULL(1);

/*
 * Free a table of VDRZAX_GetE2ITable. NULL is ignored. The entries are freed only when the count is
 * above 0, so the count must not be changed before. Of a table without entries the header alone is
 * freed: its pointer is an allocation of no bytes, which is not looked at, so that a header which
 * an agent made itself need not set it.
 */
VDRZAX_API void VDRZAX_ReleaseE2ITable(E2ITable* table);

/*
 * Add a physical MAC.
 *
 * value  u32 whose meaning is the kernel's.
 * mac    Hardware address of 6 bytes, or NULL for none: its place stays zero.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_AddPmac(uint32_t value, const MacValue* mac);

/*
 * Delete a physical MAC. It is named by the address alone: the value it was added with is not sent.
 *
 * mac  Hardware address of 6 bytes, or NULL for none: its place stays zero.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_DelPmac(const MacValue* mac);

/*
 * Read the physical MACs, in the kernel's own layout.
 *
 * buffer  At least 131072 bytes that the kernel fills directly. NULL is not tested: the kernel
 *         decides.
 *
 * Returns 0, or -1 with the errno of the device; the buffer is then as the kernel left it. The
 * length of the reply is not told, so clear the buffer first where that matters.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetPmac(void* buffer);

/*
 * Read the locale identifier.
 *
 * buffer  At least 16 bytes that the kernel fills directly. NULL is not tested: the kernel decides.
 *
 * Returns 0, or -1 with the errno of the device; the buffer is then as the kernel left it. The
 * length of the reply is not told.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetLocaleId(void* buffer);

/*
 * Read one FL table, in the kernel's own layout.
 *
 * selector  u16 that chooses the table.
 * buffer    At least 426080 bytes that the kernel fills directly. NULL is not tested: the kernel
 *           decides.
 *
 * Returns 0, or -1 with the errno of the device; the buffer is then as the kernel left it. The
 * length of the reply is not told, so clear the buffer first where that matters.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_DumpFLTable(uint16_t selector, void* buffer);

#ifdef __cplusplus
}
#endif

#endif
