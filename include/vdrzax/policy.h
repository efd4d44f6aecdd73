/*
 * Policies, policy tables, and what binds both to the LIFs of a router instance.
 *
 * Commands that add or delete take an optional `result`: 88 bytes of the caller's that the kernel
 * fills; NULL asks for none. They are cleared before the command is sent, so that they read as zero
 * where the kernel writes nothing, as when the device cannot be opened. After a failed command they
 * hold what the kernel wrote before it failed. The library does not interpret them.
 */
#ifndef VDRZAX_POLICY_H
#define VDRZAX_POLICY_H

#include <vdrzax/channel.h>
#include <vdrzax/route.h>

#ifdef __cplusplus
extern "C" {
#endif

#pragma pack(push, 1)

/* One policy as the datapath reports it. The library interprets no number. */
typedef struct PolicyRecord {
  uint32_t policyWord0;
  uint32_t policyWord1;
  uint32_t policyWord2;
  uint32_t policyWord3;
  uint32_t policyWord4;
  uint64_t policyQword;
} PolicyRecord;

/* One policy table. The name is always terminated. */
typedef struct PolicyTableRecord {
  uint32_t tableKey;
  char tableName[64];
  uint32_t tableWord; /* its meaning is the kernel's */
} PolicyTableRecord;

/* One entry of a reference to policy tables: 24 bytes that only the kernel interprets. */
typedef struct PolicyTableRefEntry {
  uint64_t qword0;
  uint64_t qword8;
  uint64_t qword16;
} PolicyTableRefEntry;

/* A LIF's reference to policy tables. The name is always terminated. */
typedef struct LifPolicyTableRef {
  char refName[64];
  uint16_t refCount;                  /* number of valid entries */
  PolicyTableRefEntry refEntries[20]; /* those behind the last valid one are zero */
} LifPolicyTableRef;

#pragma pack(pop)

static_assert(sizeof(PolicyRecord) == 28, "PolicyRecord is 28 bytes");
static_assert(offsetof(PolicyRecord, policyWord4) == 16, "PolicyRecord.policyWord4");
static_assert(offsetof(PolicyRecord, policyQword) == 20, "PolicyRecord.policyQword");
static_assert(sizeof(PolicyTableRecord) == 72, "PolicyTableRecord is 72 bytes");
static_assert(offsetof(PolicyTableRecord, tableName) == 4, "PolicyTableRecord.tableName");
static_assert(offsetof(PolicyTableRecord, tableWord) == 68, "PolicyTableRecord.tableWord");
static_assert(sizeof(PolicyTableRefEntry) == 24, "PolicyTableRefEntry is 24 bytes");
static_assert(offsetof(PolicyTableRefEntry, qword16) == 16, "PolicyTableRefEntry.qword16");
static_assert(sizeof(LifPolicyTableRef) == 546, "LifPolicyTableRef is 546 bytes");
static_assert(offsetof(LifPolicyTableRef, refCount) == 64, "LifPolicyTableRef.refCount");
static_assert(offsetof(LifPolicyTableRef, refEntries) == 66, "LifPolicyTableRef.refEntries");

/*
 * Add a policy. Policies belong to no router instance: the key alone addresses them.
 *
 * policyKey               u32 that addresses the policy.
 * policyArg1, policyArg2, policyArg3
 *                         u32 each, whose meaning is the kernel's.
 * result                  88 bytes for the kernel's answer, or NULL for none.
 *
 * Returns 0, or -1 with the errno of the device; `result` is as said at the top.
 */
VDRZAX_API int VDRZAX_SetPolicy(uint32_t policyKey, uint32_t policyArg1, uint32_t policyArg2,
                                uint32_t policyArg3, void* result);

/*
 * Delete a policy.
 *
 * policyKey               u32 that addresses the policy.
 * policyArg1, policyArg2  u32 each, as given to VDRZAX_SetPolicy. The third number is no part of
 *                         what a policy is found by and is not sent: its place stays zero.
 * result                  88 bytes for the kernel's answer, or NULL for none.
 *
 * Returns 0, or -1 with the errno of the device; `result` is as said at the top.
 */
VDRZAX_API int VDRZAX_DelPolicy(uint32_t policyKey, uint32_t policyArg1, uint32_t policyArg2,
                                void* result);

/*
 * List the policies of a key.
 *
 * policyKey  u32 that addresses the policies.
 * out        Where the address of the list is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a list of at most 1000 PolicyRecord, to be given to VDRZAX_ReleaseAllPolicy. An
 * empty reply is a list with count 0. Returns -1 with ENOMEM, EBADMSG (the reply ends inside a
 * record of 28 bytes; no partial list is returned) or the errno of the device; `*out` is then NULL.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetPolicy(uint32_t policyKey, RecordList** out)
    VDRZAX_NONNULL(2);

/*
 * Count the policies of a key.
 *
 * policyKey  u32 that addresses the policies.
 * count      Where the u32 is stored, required; NULL is not tested and faults. Untouched after any
 *            failure.
 *
 * Returns 0, or -1 with ENOMEM, EBADMSG (reply shorter than 4 bytes) or the errno of the device.
 * Unlike the settings, the number passes through a reply buffer of 4 bytes. After EBADMSG that
 * buffer is lost: agents that count allocations expect it to stay, on this path alone.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetPolicyCount(uint32_t policyKey, uint32_t* count)
    VDRZAX_NONNULL(2);

/* Free a list of VDRZAX_GetPolicy, header and entries. NULL is ignored. */
VDRZAX_API void VDRZAX_ReleaseAllPolicy(RecordList* list);

/*
 * Add a policy table. Policy tables belong to no router instance: the key alone addresses them.
 *
 * policyKey  u32 that addresses the table.
 * tableName  Name of the table, text of at most 63 characters (a longer one is cut), required; NULL
 *            is not tested and faults.
 * result     88 bytes for the kernel's answer, or NULL for none.
 *
 * Returns 0, or -1 with the errno of the device; `result` is as said at the top.
 */
VDRZAX_API int VDRZAX_SetPolicyTable(uint32_t policyKey, const char* tableName, void* result)
    VDRZAX_NONNULL(2);

/*
 * Delete a policy table. The key alone is sent.
 *
 * policyKey  u32 that addresses the table.
 * result     88 bytes for the kernel's answer, or NULL for none.
 *
 * Returns 0, or -1 with the errno of the device; `result` is as said at the top.
 */
VDRZAX_API int VDRZAX_DelPolicyTable(uint32_t policyKey, void* result);

/*
 * List all policy tables. Nothing selects among them: the request is 968 zero bytes.
 *
 * out  Where the address of the list is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a list of at most 1000 PolicyTableRecord, to be given to
 * VDRZAX_ReleaseAllPolicyTable. An empty reply is a list with count 0. Returns -1 with ENOMEM,
 * EBADMSG (the reply ends inside a record of 72 bytes; no partial list is returned) or the errno of
 * the device; `*out` is then NULL.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetPolicyTable(RecordList** out) VDRZAX_NONNULL(1);

/* Free a list of VDRZAX_GetPolicyTable, header and entries. NULL is ignored. */
VDRZAX_API void VDRZAX_ReleaseAllPolicyTable(RecordList* list);

/*
 * Add a LIF policy to a router instance.
 *
 * policyType           i32. 4 is the one type that names a LIF; all others are the kernel's.
 * policyLifName        LIF name, text of at most 63 characters (a longer one is cut). Required with
 *                      policyType 4. With any other type it is ignored, also when given, and may be
 *                      NULL.
 * routeArg1, routeArg2, routeArg3
 *                      u32 each, as in VDRZAX_SetRoute.
 * ifName               Interface name, text of at most 63 characters (a longer one is cut), or NULL
 *                      for none.
 * instanceName         Instance name, text of at most 63 characters (a longer one is cut),
 *                      required.
 * routeFlags           u32, as in VDRZAX_SetRoute.
 * result               88 bytes for the kernel's answer, or NULL for none.
 *
 * Returns 0, or -1 with EINVAL (instanceName is NULL, or policyType is 4 and policyLifName is NULL;
 * `result` is then untouched) or the errno of the device (`result` is then as said at the top).
 */
VDRZAX_API int VDRZAX_SetLifPolicy(int32_t policyType, const char* policyLifName,
                                   uint32_t routeArg1, uint32_t routeArg2, uint32_t routeArg3,
                                   const char* ifName, const char* instanceName,
                                   uint32_t routeFlags, void* result);

/*
 * Delete a LIF policy of a router instance, as VDRZAX_SetLifPolicy. The flags are sent here too,
 * unlike those of a route, because the kernel looks a LIF policy up by all its words.
 */
VDRZAX_API int VDRZAX_DelLifPolicy(int32_t policyType, const char* policyLifName,
                                   uint32_t routeArg1, uint32_t routeArg2, uint32_t routeArg3,
                                   const char* ifName, const char* instanceName,
                                   uint32_t routeFlags, void* result);

/*
 * List the LIF policies of a router instance. The datapath reports them as routes.
 *
 * instanceName   Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *                is not tested and faults.
 * policyType     u32. 4 is the one type that names a LIF; all others are the kernel's.
 * policyLifName  LIF name, text of at most 63 characters (a longer one is cut). Required with
 *                policyType 4, else optional. Unlike the commands that change a policy, this one
 *                sends the name with every type, since it narrows what is listed.
 * out            Where the address of the list is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a list of at most 20000 RouteRecord, to be given to VDRZAX_ReleaseRoutes. An empty
 * reply is a list with count 0. Returns -1 with EINVAL (policyType is 4 and policyLifName is NULL;
 * `*out` is then untouched), ENOMEM, EBADMSG (the reply ends inside a record of 668 bytes; no
 * partial list is returned) or the errno of the device; `*out` is then NULL.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetLifPolicies(const char* instanceName, uint32_t policyType,
                                                    const char* policyLifName, RecordList** out)
    VDRZAX_NONNULL(1, 4);

/*
 * Add a LIF's reference to policy tables.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required.
 * lifName       LIF name, text of at most 63 characters (a longer one is cut), required.
 * refCount      Number of entries. The request has room for 20. More are not refused, and writing
 *               them runs past the request: the caller must not pass more.
 * entries       Array of refCount entries, sent as they stand. NULL is not tested and faults, but
 *               for refCount 0, which sends none.
 * result        88 bytes for the kernel's answer, or NULL for none.
 *
 * Returns 0, or -1 with EINVAL (instanceName or lifName is NULL; `result` is then untouched) or the
 * errno of the device (`result` is then as said at the top).
 */
VDRZAX_API int VDRZAX_SetLifPolicyTableRef(const char* instanceName, const char* lifName,
                                           uint16_t refCount, const PolicyTableRefEntry* entries,
                                           void* result);

/*
 * Delete a LIF's reference to policy tables. The two names alone are sent.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required.
 * lifName       LIF name, text of at most 63 characters (a longer one is cut), required.
 * result        88 bytes for the kernel's answer, or NULL for none.
 *
 * Returns 0, or -1 with EINVAL (instanceName or lifName is NULL; `result` is then untouched) or the
 * errno of the device (`result` is then as said at the top).
 */
VDRZAX_API int VDRZAX_DelLifPolicyTableRef(const char* instanceName, const char* lifName,
                                           void* result);

/*
 * Read a LIF's reference to policy tables.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required.
 * lifName       LIF name, text of at most 63 characters (a longer one is cut), required.
 * out           Where the address of the record is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a record of the caller's, to be given to VDRZAX_ReleaseLifPolicyTableRef. The
 * kernel's refCount is trusted to be at most 20: the kernel owns the format, and a silent limit
 * would hide a malformed reply. Returns -1 with EINVAL (instanceName or lifName is NULL), ENOMEM,
 * EBADMSG (reply shorter than 546 bytes) or the errno of the device. `*out` is untouched after
 * EINVAL, after a failed command and when the reply buffer could not be allocated; it is NULL after
 * EBADMSG and when the record could not be allocated.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetLifPolicyTableRef(const char* instanceName,
                                                          const char* lifName,
                                                          LifPolicyTableRef** out)
    VDRZAX_NONNULL(3);

/* Free a record of VDRZAX_GetLifPolicyTableRef. NULL is ignored. */
VDRZAX_API void VDRZAX_ReleaseLifPolicyTableRef(LifPolicyTableRef* record);

#ifdef __cplusplus
}
#endif

#endif
