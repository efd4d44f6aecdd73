/*
 * Bridges: bridge LIFs and endpoints, instances, networks, ports, the forwarding database,
 * administration, clusters, the local transport node, endpoint lists and BFD sessions.
 *
 * Only VDRZAX_GetBridgeInstance tests an argument. Everywhere else the kernel judges what it is
 * given: a required text that is NULL faults, a buffer that is NULL is given to the kernel.
 *
 * Lists. The list getters share this: `out` is where the address of the list is stored, required;
 * NULL is not tested and faults. They return 0 and a list, with count 0 for an empty reply, or -1
 * with ENOMEM, EBADMSG (the reply ends inside a record; no partial list is returned) or the errno
 * of the device; `*out` is then NULL.
 *
 * Each list getter allocates a header and calls the exported fetch of its name without underscore,
 * which agents also call with a header of their own. For every fetch: `list` is a header from
 * malloc() or calloc(), required; NULL is not tested and faults. What it holds before is neither
 * read nor freed. The fetch returns what the getter returns. After success the header and its
 * entries are given to the Release function of the list. After ENOMEM and EBADMSG the header was
 * freed. After a failed command, the comment of the fetch says what became of it.
 */
#ifndef VDRZAX_BRIDGE_H
#define VDRZAX_BRIDGE_H

#include <vdrzax/channel.h>

#ifdef __cplusplus
extern "C" {
#endif

#pragma pack(push, 1)

/*
 * The records as the datapath reports them. The library interprets no number; a field whose meaning
 * is the kernel's alone is named by its place. `char` texts are always terminated. Areas of
 * `uint8_t` are copied byte for byte and need not be terminated, also where they hold a name.
 */

/* One bridge instance. */
typedef struct BridgeInstanceRecord {
  uint64_t qword0;
  uint32_t word8;
  char name[64];
  uint32_t word76;
  uint32_t word80;
  char text84[128];
  char text212[81];
  uint8_t skipped293[12]; /* never copied from the reply: always zero */
  uint32_t word305;
  uint32_t word309;
  uint64_t qwords313[10];
} BridgeInstanceRecord;

/* One network of a bridge. */
typedef struct BridgeNetworkRecord {
  uint64_t qword0;
  uint32_t word8;
  uint16_t half12;
  uint32_t word14;
  uint16_t half18;
  uint32_t word20;
  uint32_t word24;
  uint8_t byte28;
  uint64_t qwords29[12];
  uint8_t skipped125[8]; /* never copied from the reply: always zero */
} BridgeNetworkRecord;

/* One port of a bridge. */
typedef struct BridgePortRecord {
  uint64_t qword0;
  uint32_t word8;
  uint16_t half12;
  uint32_t word14;
  uint64_t qwords18[16];
} BridgePortRecord;

/* One entry of a bridge's forwarding database. */
typedef struct BridgeFdbRecord {
  uint32_t word0;
  uint16_t half4;
  uint16_t half6;
  uint8_t triple8[3]; /* one number of 24 bits, little-endian */
  uint8_t flags;
  uint32_t word12;
  uint32_t word16;
} BridgeFdbRecord;

/* One bridge cluster. */
typedef struct BridgeClusterRecord {
  uint8_t nameArea[64];
  uint8_t skipped64[8]; /* never copied from the reply: always zero */
  uint32_t word72;
  uint8_t bytes76[96];
  uint16_t half172;
  uint16_t half174;
  uint16_t half176;
  uint8_t byte178;
  uint32_t word179;
} BridgeClusterRecord;

/* One node of a bridge cluster. */
typedef struct BridgeClusterNodeRecord {
  uint8_t nameArea[64];
  uint32_t word64;
  uint16_t half68;
  uint8_t byte70;
} BridgeClusterNodeRecord;

/* One bridge endpoint. */
typedef struct BridgeEndpointRecord {
  uint8_t skipped0[64]; /* never copied from the reply: always zero */
  uint8_t nameArea[64];
  uint16_t half128;
  uint8_t flag;
  uint32_t word131;
  uint32_t word135;
  uint8_t bytes139[96];
} BridgeEndpointRecord;

/* One BFD session that watches a bridge endpoint. */
typedef struct BridgeBfdSessionRecord {
  uint16_t half0;
  uint32_t word2;
  uint16_t half6;
  uint32_t word8;
  uint16_t half12;
  uint32_t word14;
  uint8_t byte18;
  uint32_t word19;
  uint64_t qword23;
  uint64_t qword31;
} BridgeBfdSessionRecord;

#pragma pack(pop)

static_assert(sizeof(BridgeInstanceRecord) == 393, "BridgeInstanceRecord is 393 bytes");
static_assert(offsetof(BridgeInstanceRecord, name) == 12, "BridgeInstanceRecord.name");
static_assert(offsetof(BridgeInstanceRecord, text212) == 212, "BridgeInstanceRecord.text212");
static_assert(offsetof(BridgeInstanceRecord, word305) == 305, "BridgeInstanceRecord.word305");
static_assert(offsetof(BridgeInstanceRecord, qwords313) == 313, "BridgeInstanceRecord.qwords313");
static_assert(sizeof(BridgeNetworkRecord) == 133, "BridgeNetworkRecord is 133 bytes");
static_assert(offsetof(BridgeNetworkRecord, qwords29) == 29, "BridgeNetworkRecord.qwords29");
static_assert(offsetof(BridgeNetworkRecord, skipped125) == 125, "BridgeNetworkRecord.skipped125");
static_assert(sizeof(BridgePortRecord) == 146, "BridgePortRecord is 146 bytes");
static_assert(offsetof(BridgePortRecord, qwords18) == 18, "BridgePortRecord.qwords18");
static_assert(sizeof(BridgeFdbRecord) == 20, "BridgeFdbRecord is 20 bytes");
static_assert(offsetof(BridgeFdbRecord, triple8) == 8, "BridgeFdbRecord.triple8");
static_assert(offsetof(BridgeFdbRecord, flags) == 11, "BridgeFdbRecord.flags");
static_assert(sizeof(BridgeClusterRecord) == 183, "BridgeClusterRecord is 183 bytes");
static_assert(offsetof(BridgeClusterRecord, word72) == 72, "BridgeClusterRecord.word72");
static_assert(offsetof(BridgeClusterRecord, half172) == 172, "BridgeClusterRecord.half172");
static_assert(offsetof(BridgeClusterRecord, word179) == 179, "BridgeClusterRecord.word179");
static_assert(sizeof(BridgeClusterNodeRecord) == 71, "BridgeClusterNodeRecord is 71 bytes");
static_assert(offsetof(BridgeClusterNodeRecord, byte70) == 70, "BridgeClusterNodeRecord.byte70");
static_assert(sizeof(BridgeEndpointRecord) == 235, "BridgeEndpointRecord is 235 bytes");
static_assert(offsetof(BridgeEndpointRecord, flag) == 130, "BridgeEndpointRecord.flag");
static_assert(offsetof(BridgeEndpointRecord, bytes139) == 139, "BridgeEndpointRecord.bytes139");
static_assert(sizeof(BridgeBfdSessionRecord) == 39, "BridgeBfdSessionRecord is 39 bytes");
static_assert(offsetof(BridgeBfdSessionRecord, byte18) == 18, "BridgeBfdSessionRecord.byte18");
static_assert(offsetof(BridgeBfdSessionRecord, qword31) == 31, "BridgeBfdSessionRecord.qword31");

/*
 * Mark a LIF as a bridge LIF, or clear that mark.
 *
 * lifName       LIF name, text of at most 63 characters (a longer one is cut), required; NULL is
 *               not tested and faults.
 * secondName    Text of the same kind whose meaning is the kernel's, required; NULL is not tested
 *               and faults.
 * value1, value2, value3
 *               u32 each, whose meaning is the kernel's.
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * set           0 clears the mark, any other value sets it. It chooses between two commands; the
 *               request of both is the same, because the kernel clears exactly what was set.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_SetBridgeLif(const char* lifName, const char* secondName, uint32_t value1,
                                   uint32_t value2, uint32_t value3, const char* instanceName,
                                   int set) VDRZAX_NONNULL(1, 2, 6);

/*
 * Add a bridge endpoint. No router instance is named: the LIF tells where the endpoint belongs.
 *
 * lifName       LIF name, text of at most 63 characters (a longer one is cut), required; NULL is
 *               not tested and faults.
 * secondName    Text of the same kind whose meaning is the kernel's, required; NULL is not tested
 *               and faults.
 * endpointName  Endpoint name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * value1, value2
 *               u32 each, whose meaning is the kernel's.
 * fourthName    Text of the same kind whose meaning is the kernel's, required; NULL is not tested
 *               and faults.
 * tag           u16 whose meaning is the kernel's.
 * flag1, flag2  One byte each, whose meaning is the kernel's.
 * fifthName     Text of the same kind whose meaning is the kernel's, required; NULL is not tested
 *               and faults.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_AddBridgeEndpoint(const char* lifName, const char* secondName,
                                        const char* endpointName, uint32_t value1, uint32_t value2,
                                        const char* fourthName, uint16_t tag, uint8_t flag1,
                                        const char* fifthName, uint8_t flag2)
    VDRZAX_NONNULL(1, 2, 3, 6, 9);

/*
 * Delete a bridge endpoint. No router instance is named: the LIF tells where the endpoint belongs.
 *
 * lifName       LIF name, text of at most 63 characters (a longer one is cut), required; NULL is
 *               not tested and faults.
 * endpointName  Endpoint name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_DelBridgeEndpoint(const char* lifName, const char* endpointName)
    VDRZAX_NONNULL(1, 2);

/*
 * Flush bridge endpoints.
 *
 * all  Any value but 0 flushes all of them; what 0 flushes is the kernel's. Only the command number
 *      tells the two apart: the request is 968 zero bytes, and the flag itself is not sent.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_FlushBridgeEndpoint(uint8_t all);

/*
 * Set the replication mode of a bridge.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * mode          u32 whose meaning is the kernel's.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_SetBridgeRepMode(const char* instanceName, uint32_t mode) VDRZAX_NONNULL(1);

/*
 * Read one bridge instance.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required.
 * out           Where the address of the record is stored, required; NULL is not tested and faults.
 *
 * Returns 0 and a record of the caller's, to be given to VDRZAX_ReleaseBridgeInstance. Returns -1
 * with EINVAL (instanceName is NULL), ENOMEM, EBADMSG (reply shorter than 393 bytes) or the errno
 * of the device. `*out` is untouched after EINVAL, after a failed command and when the reply buffer
 * could not be allocated; it is NULL after EBADMSG and when the record could not be allocated.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetBridgeInstance(const char* instanceName,
                                                       BridgeInstanceRecord** out)
    VDRZAX_NONNULL(2);

/*
 * List the bridge instances of all router instances; no name is sent. At most 4096
 * BridgeInstanceRecord, to be given to VDRZAX_ReleaseBridgeInstances. What the list getters share
 * is said at the top.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetBridgeInstances(RecordList** out) VDRZAX_NONNULL(1);

/*
 * List the networks of a bridge: at most 32768 BridgeNetworkRecord, to be given to
 * VDRZAX_ReleaseBridgeNetworks. What the list getters share is said at the top.
 *
 * name1  Text, required; NULL is not tested and faults. It is read, but the kernel never sees it:
 *        both names belong to the same field, and the second one replaces the first.
 * name2  Name that selects the bridge, text of at most 63 characters (a longer one is cut),
 *        required; NULL is not tested and faults.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetBridgeNetworks(const char* name1, const char* name2,
                                                       RecordList** out) VDRZAX_NONNULL(1, 2, 3);

/*
 * List the ports of a bridge: at most 32768 BridgePortRecord, to be given to
 * VDRZAX_ReleaseBridgePorts. What the list getters share is said at the top.
 *
 * name1, name2  As for VDRZAX_GetBridgeNetworks: both required, only the second is sent.
 * network       u16 that selects the network, sent as u32.
 * value         u32 whose meaning is the kernel's.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetBridgePorts(const char* name1, const char* name2,
                                                    uint16_t network, uint32_t value,
                                                    RecordList** out) VDRZAX_NONNULL(1, 2, 5);

/*
 * Fetch all bridge instances into `list`, a header of the caller's. What the fetches share is said
 * at the top; the rest is as VDRZAX_GetBridgeInstances.
 *
 * After a failed command the header is not freed: it still belongs to the caller, as it was. The
 * getter cannot know this path from the others, so its header of 16 bytes is lost on it; agents
 * that go on using the header they passed to a fetch depend on that.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAXGetBridgeInstances(RecordList* list) VDRZAX_NONNULL(1);

/*
 * Fetch the networks of a bridge into `list`, a header of the caller's, which stays the caller's
 * after a failed command as with VDRZAXGetBridgeInstances. name1 and name2 as
 * VDRZAX_GetBridgeNetworks.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAXGetBridgeNetworks(const char* name1, const char* name2,
                                                      RecordList* list) VDRZAX_NONNULL(1, 2, 3);

/*
 * Fetch the ports of a bridge into `list`, a header of the caller's, which stays the caller's after
 * a failed command as with VDRZAXGetBridgeInstances. The other arguments as VDRZAX_GetBridgePorts.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAXGetBridgePorts(const char* name1, const char* name2,
                                                   uint16_t network, uint32_t value,
                                                   RecordList* list) VDRZAX_NONNULL(1, 2, 5);

/*
 * Read the statistics of the bridge endpoint of a LIF.
 *
 * lifName  LIF name, text of at most 63 characters (a longer one is cut), required; NULL is not
 *          tested and faults.
 * buffer   146 bytes of the caller's, required; NULL is not tested, it is given to the kernel. The
 *          kernel writes straight into it; the library does not look at the bytes.
 *
 * The length of the reply is not handed back. Returns 0, or -1 with the errno of the device; the
 * buffer then holds what the kernel wrote, or is untouched.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetBeStats(const char* lifName, void* buffer)
    VDRZAX_NONNULL(1);

/*
 * Read the status of the bridge endpoint of a LIF: as VDRZAX_GetBeStats, into a buffer of 229
 * bytes.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetBeStatus(const char* lifName, void* buffer)
    VDRZAX_NONNULL(1);

/*
 * Read all bridge endpoints as the kernel's own records of 235 bytes each.
 *
 * buffer    `capacity` bytes of the caller's; NULL is not tested, it is given to the kernel. The
 *           kernel writes straight into it; the library does not look at the bytes.
 * capacity  Size of the buffer in bytes, passed on as it stands.
 * count     Where the number of records is stored: the length of the reply divided by 235, without
 *           the remainder. Required; NULL is not tested and faults after a success.
 *
 * The length is not compared with the capacity. Returns 0, or -1 with the errno of the device;
 * `*count` is then untouched, and the buffer holds what the kernel wrote.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetBeAll(void* buffer, uint32_t capacity, uint32_t* count)
    VDRZAX_NONNULL(3);

/* Free a record of VDRZAX_GetBridgeInstance. NULL is ignored. */
VDRZAX_API void VDRZAX_ReleaseBridgeInstance(BridgeInstanceRecord* record);

/*
 * Free one network record that the caller allocated with malloc() or calloc(). NULL is ignored. No
 * getter returns a single network; the entries of a list are freed with their list.
 */
VDRZAX_API void VDRZAX_ReleaseBridgeNetwork(BridgeNetworkRecord* record);

/*
 * Free a list of VDRZAX_GetBridgeInstances or VDRZAXGetBridgeInstances, entries and header. NULL is
 * ignored.
 */
VDRZAX_API void VDRZAX_ReleaseBridgeInstances(RecordList* list);

/* Free a list of bridge networks, as VDRZAX_ReleaseBridgeInstances. */
VDRZAX_API void VDRZAX_ReleaseBridgeNetworks(RecordList* list);

/* Free a list of bridge ports, as VDRZAX_ReleaseBridgeInstances. */
VDRZAX_API void VDRZAX_ReleaseBridgePorts(RecordList* list);

/*
 * List the forwarding database of a bridge: at most 10240 BridgeFdbRecord, to be given to
 * VDRZAX_ReleaseBridgeFdbEntries. What the list getters share is said at the top.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * segment       u16 that selects the segment, sent as u32. The commands that change the database
 *               take it as u32; only here callers pass the narrow form.
 * selector      u32 whose meaning is the kernel's.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetBridgeFdbEntries(const char* instanceName, uint16_t segment,
                                                         uint32_t selector, RecordList** out)
    VDRZAX_NONNULL(1, 4);

/*
 * Fetch the forwarding database of a bridge into `list`, a header of the caller's, which stays the
 * caller's after a failed command as with VDRZAXGetBridgeInstances, while that of the getter is
 * lost. The other arguments as VDRZAX_GetBridgeFdbEntries; what the fetches share is said at the
 * top.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAXGetBridgeFdbEntries(const char* instanceName, uint16_t segment,
                                                        uint32_t selector, RecordList* list)
    VDRZAX_NONNULL(1, 4);

/*
 * Set one entry of the forwarding database of a bridge.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * macText       Hardware address as text, six two-digit hexadecimal groups with separators. At most
 *               17 characters are sent (a longer text is cut). NULL leaves the field zero.
 * segment       u32 that selects the segment.
 * selector      u32 whose meaning is the kernel's.
 * value         u32 whose meaning is the kernel's.
 * flag          One byte whose meaning is the kernel's.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_BridgeSetFdbEntry(const char* instanceName, const char* macText,
                                        uint32_t segment, uint32_t selector, uint32_t value,
                                        uint8_t flag) VDRZAX_NONNULL(1);

/*
 * Clear the forwarding database of a bridge. Parameters are those of VDRZAX_BridgeSetFdbEntry that
 * bear the same names. Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_BridgeClearFdbTable(const char* instanceName, uint32_t segment,
                                          uint32_t selector) VDRZAX_NONNULL(1);

/*
 * Free a list of VDRZAX_GetBridgeFdbEntries or VDRZAXGetBridgeFdbEntries, entries and header. NULL
 * is ignored.
 */
VDRZAX_API void VDRZAX_ReleaseBridgeFdbEntries(RecordList* list);

/*
 * Send a bridge configuration command of the caller's choice.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * commandCode   u32, the command to send. The library neither checks nor maps it, so that agents
 *               reach configuration commands that are newer than the library. It is passed to
 *               VDRZAXIoctl as an int: 2^31 and more reach the kernel sign-extended.
 * value         u32, sent in one place whatever the command. A command that takes its value
 *               elsewhere finds zero there.
 *
 * Returns 0, or -1 with the errno of the device. No command sent so can return anything.
 */
VDRZAX_API int VDRZAX_BridgeSetConfig(const char* instanceName, uint32_t commandCode,
                                      uint32_t value) VDRZAX_NONNULL(1);

/*
 * Add a bridge to a router instance.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * value         u32 whose meaning is the kernel's.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_BridgeAdd(const char* instanceName, uint32_t value) VDRZAX_NONNULL(1);

/* Delete a bridge of a router instance. instanceName, value and result as VDRZAX_BridgeAdd. */
VDRZAX_API int VDRZAX_BridgeDel(const char* instanceName, uint32_t value) VDRZAX_NONNULL(1);

/*
 * Set the administrative state of the high availability of a router instance's bridges. `state` is
 * a u32 whose meaning is the kernel's; instanceName and result as VDRZAX_BridgeAdd.
 */
VDRZAX_API int VDRZAX_BridgeSetHAAdminState(const char* instanceName, uint32_t state)
    VDRZAX_NONNULL(1);

/*
 * Enable a bridge of a router instance.
 *
 * instanceName  Instance name, text of at most 63 characters (a longer one is cut), required; NULL
 *               is not tested and faults.
 * value         One byte whose meaning is the kernel's. VDRZAX_BridgeAdd sends four bytes in this
 *               place, but here the kernel reads one.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_BridgeEnable(const char* instanceName, uint8_t value) VDRZAX_NONNULL(1);

/* Disable a bridge of a router instance. instanceName, value and result as VDRZAX_BridgeEnable. */
VDRZAX_API int VDRZAX_BridgeDisable(const char* instanceName, uint8_t value) VDRZAX_NONNULL(1);

/*
 * List bridge clusters: at most 10 BridgeClusterRecord, to be given to
 * VDRZAX_ReleaseBridgeClusters. What the list getters share is said at the top.
 *
 * name  Name of the cluster's owner, text of at most 63 characters (a longer one is cut), or NULL
 *       for none: the field is then zero.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetBridgeClusters(const char* name, RecordList** out)
    VDRZAX_NONNULL(2);

/*
 * List the nodes of bridge clusters: at most 100 BridgeClusterNodeRecord, to be given to
 * VDRZAX_ReleaseBridgeClusterNodes. `name` as VDRZAX_GetBridgeClusters.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetBridgeClusterNodes(const char* name, RecordList** out)
    VDRZAX_NONNULL(2);

/*
 * Fetch bridge clusters into `list`, a header of the caller's. What the fetches share is said at
 * the top; `name` as VDRZAX_GetBridgeClusters. After a failed command the header was freed, as
 * after any other failure.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAXGetBridgeClusters(const char* name, RecordList* list)
    VDRZAX_NONNULL(2);

/* Fetch the nodes of bridge clusters into `list`, as VDRZAXGetBridgeClusters. */
VDRZAX_API VDRZAX_CHECKED int VDRZAXGetBridgeClusterNodes(const char* name, RecordList* list)
    VDRZAX_NONNULL(2);

/*
 * Create a bridge cluster, or delete it.
 *
 * name    Name of the cluster's owner, text of at most 63 characters (a longer one is cut),
 *         required; NULL is not tested and faults.
 * create  0 deletes, any other value creates. It chooses between two commands and is not sent.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_BridgeClusterSet(const char* name, uint8_t create) VDRZAX_NONNULL(1);

/*
 * Add a node to a bridge cluster, or remove it.
 *
 * name      Name of the cluster's owner, text of at most 63 characters (a longer one is cut),
 *           required; NULL is not tested and faults.
 * nodeName  Name of the node, text of the same kind, required; NULL is not tested and faults.
 * mac       Hardware address of the node, pointer to 6 bytes. Required when adding: NULL is not
 *           tested and faults. When removing it is not read, because the name tells the node, and
 *           may be NULL.
 * add       0 removes, any other value adds. It chooses between two commands and is not sent.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_BridgeClusterNodeSet(const char* name, const char* nodeName,
                                           const MacValue* mac, uint8_t add) VDRZAX_NONNULL(1, 2);

/*
 * Flush all bridge clusters, or one.
 *
 * name  Name of the cluster's owner, text of at most 63 characters (a longer one is cut), or NULL
 *       for none: the field is then zero. It is sent in both cases.
 * all   Any value but 0 flushes all, 0 the named one. It chooses between two commands and is not
 *       sent.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_FlushBridgeCluster(const char* name, uint8_t all);

/*
 * Set the debug level of a bridge cluster.
 *
 * name   Name of the cluster's owner, text of at most 63 characters (a longer one is cut), or NULL
 *        for none: the field is then zero.
 * level  One byte whose meaning is the kernel's.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_SetBridgeClusterDebug(const char* name, uint8_t level);

/*
 * Set the BFD profile for the high availability of a bridge cluster.
 *
 * name            Name of the cluster's owner, text of at most 63 characters (a longer one is cut),
 *                 required; NULL is not tested and faults.
 * profile         One byte whose meaning is the kernel's.
 * value1, value2  u32 each, whose meaning is the kernel's.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_BridgeClusterBfdHAProfileSet(const char* name, uint8_t profile,
                                                   uint32_t value1, uint32_t value2)
    VDRZAX_NONNULL(1);

/*
 * Free a list of VDRZAX_GetBridgeClusters or VDRZAXGetBridgeClusters, entries and header. NULL is
 * ignored.
 */
VDRZAX_API void VDRZAX_ReleaseBridgeClusters(RecordList* list);

/* Free a list of cluster nodes, as VDRZAX_ReleaseBridgeClusters. */
VDRZAX_API void VDRZAX_ReleaseBridgeClusterNodes(RecordList* list);

/*
 * Set the local transport node, or clear it. There is one a host, so no instance is named.
 *
 * name1, name2  Text of at most 63 characters each (a longer one is cut), required; NULL is not
 *               tested and faults.
 * name3         Text of at most 15 characters (a longer one is cut), required; NULL is not tested
 *               and faults.
 * value         u32 whose meaning is the kernel's.
 * bytes         64 bytes whose meaning is the kernel's, sent as they stand, required; NULL is not
 *               tested and faults. They are no text: a zero byte does not end them.
 * set           0 clears, any other value sets. It chooses between two commands; the request of
 *               both is the same, because the kernel clears exactly what was set.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_BridgeLocalTransportNodeSet(const char* name1, const char* name2,
                                                  const char* name3, uint32_t value,
                                                  const void* bytes, uint8_t set)
    VDRZAX_NONNULL(1, 2, 3, 5);

/*
 * Read the local transport node.
 *
 * buffer    2048 bytes of the caller's, required; NULL is not tested, it is given to the kernel.
 *           The kernel writes straight into it; the library does not look at the bytes.
 * selector  u32 whose meaning is the kernel's.
 *
 * The length of the reply is not handed back. Returns 0, or -1 with the errno of the device; the
 * buffer then holds what the kernel wrote, or is untouched.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_BridgeGetLocalTransportNode(void* buffer, uint32_t selector);

/*
 * List bridge endpoints: at most 28672 BridgeEndpointRecord, to be given to
 * VDRZAX_ReleaseBridgeEndpoints. What the list getters share is said at the top.
 *
 * name  Instance name, text of at most 63 characters (a longer one is cut), or NULL for none: the
 *       field is then zero.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetBridgeEndpoints(const char* name, RecordList** out)
    VDRZAX_NONNULL(2);

/*
 * List the BFD sessions of bridge endpoints: at most 2867200 BridgeBfdSessionRecord, to be given to
 * VDRZAX_ReleaseBridgeBFDSessions. `name` as VDRZAX_GetBridgeEndpoints.
 *
 * There may be 100 BFD sessions an endpoint, so every list of sessions reserves a reply buffer of
 * 111820800 bytes, and as much again for its entries, whatever the kernel returns. ENOMEM is to be
 * expected on a small host.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetBridgeBFDSessions(const char* name, RecordList** out)
    VDRZAX_NONNULL(2);

/*
 * Fetch bridge endpoints into `list`, a header of the caller's. What the fetches share is said at
 * the top; `name` as VDRZAX_GetBridgeEndpoints. After a failed command the header was freed, as
 * after any other failure.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAXGetBridgeEndpoints(const char* name, RecordList* list)
    VDRZAX_NONNULL(2);

/*
 * Fetch the BFD sessions of bridge endpoints into `list`, as VDRZAXGetBridgeEndpoints, with the
 * memory that VDRZAX_GetBridgeBFDSessions tells of.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAXGetBridgeBFDSessions(const char* name, RecordList* list)
    VDRZAX_NONNULL(2);

/*
 * Free a list of VDRZAX_GetBridgeEndpoints or VDRZAXGetBridgeEndpoints, entries and header. NULL is
 * ignored.
 */
VDRZAX_API void VDRZAX_ReleaseBridgeEndpoints(RecordList* list);

/* Free a list of BFD sessions, as VDRZAX_ReleaseBridgeEndpoints. */
VDRZAX_API void VDRZAX_ReleaseBridgeBFDSessions(RecordList* list);

/*
 * Plumb the BFD port connection. No instance is named: the port tells where it belongs.
 *
 * portName  Name of the port, text of at most 63 characters (a longer one is cut), required; NULL
 *           is not tested and faults.
 * name2     Text of at most 15 characters (a longer one is cut), required; NULL is not tested and
 *           faults.
 * mac       Hardware address, pointer to 6 bytes, or NULL for none: the field is then zero.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_PlumbBFDPortConnection(const char* portName, const char* name2,
                                             const MacValue* mac) VDRZAX_NONNULL(1, 2);

/*
 * Unplumb the BFD port connection.
 *
 * portName  Name of the port, text of at most 63 characters (a longer one is cut), required; NULL
 *           is not tested and faults.
 *
 * Returns 0, or -1 with the errno of the device.
 */
VDRZAX_API int VDRZAX_UnPlumbBFDPortConnection(const char* portName) VDRZAX_NONNULL(1);

/*
 * Read the BFD port connections of the host in the kernel's own format.
 *
 * buffer  131072 bytes of the caller's, required; NULL is not tested, it is given to the kernel.
 *         The kernel writes straight into it; the library does not look at the bytes.
 *
 * The length of the reply is not handed back. Returns 0, or -1 with the errno of the device; the
 * buffer then holds what the kernel wrote, or is untouched.
 */
VDRZAX_API VDRZAX_CHECKED int VDRZAX_GetBFDPortConnections(void* buffer);

#ifdef __cplusplus
}
#endif

#endif
