/*
 * The road to the datapath, and the types that every family shares.
 *
 * <vdrzax.h> includes this file and states the rules that hold for all functions.
 */
#ifndef VDRZAX_CHANNEL_H
#define VDRZAX_CHANNEL_H

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

/*
 * The version of this header. VDRZAX_VERSION compares in #if: 10203 is 1.2.3. The first number
 * changes with the soname alone, the second when something is added.
 */
#define VDRZAX_VERSION_MAJOR 1
#define VDRZAX_VERSION_MINOR 0
#define VDRZAX_VERSION_PATCH 0
#define VDRZAX_VERSION \
  (VDRZAX_VERSION_MAJOR * 10000 + VDRZAX_VERSION_MINOR * 100 + VDRZAX_VERSION_PATCH)

/* The longest name that is not cut, in characters; memory for one has a terminator more. */
#define VDRZAX_NAME_MAX 63

/* Marks what the library exports; each declaration stands on the line of its macro. Programs leave it
   alone: the archive is compiled with an empty one, so that plugins which link it export nothing. */
#ifndef VDRZAX_API
#define VDRZAX_API __attribute__((visibility("default")))
#endif

/*
 * What compilers are told, so that they warn. VDRZAX_CHECKED: the result says whether the caller's
 * memory was filled, so who ignores it reads what may not be there. Commands that only change
 * something lack it: an agent may clean up without looking. VDRZAX_NONNULL: the arguments, counted
 * from 1, that fault when they are NULL; those that are tested, optional or the kernel's to judge
 * are not named. Which Release frees what cannot be told, because compilers pair an allocation with
 * its release only where a function returns it, and here it comes by an output pointer.
 *
 * VDRZAX_NO_HINTS leaves all of it out, for code that tries what NULL does, as the library's tests,
 * or that has decltype of a function as a template argument, where gcc complains of attributes.
 */
#if defined(__GNUC__) && !defined(VDRZAX_NO_HINTS)
#define VDRZAX_CHECKED __attribute__((warn_unused_result))
#define VDRZAX_NONNULL(...) __attribute__((nonnull(__VA_ARGS__)))
#else
#define VDRZAX_CHECKED
#define VDRZAX_NONNULL(...)
#endif

#ifdef __cplusplus
extern "C" {
#endif

#pragma pack(push, 1)

/* The argument of every device request: where the input lies and where the reply goes. */
typedef struct IoctlEnvelope {
  uint32_t inLength;    /* bytes at inBuffer, 0 without input */
  const void* inBuffer; /* input, NULL without input */
  uint32_t outLength;   /* capacity of outBuffer; the kernel replaces it with the bytes produced */
  void* outBuffer;      /* reply, NULL without output */
} IoctlEnvelope;

/* The input block of almost every command. Its fields have fixed places, without alignment. */
typedef struct IoctlParams {
  uint8_t bytes[968];
} IoctlParams;

/* A hardware (MAC) address, passed by pointer. */
typedef struct MacValue {
  uint8_t bytes[6];
} MacValue;

#pragma pack(pop)

/*
 * What a list getter returns. `entries` points at one contiguous array of the family's records with
 * room for the family's cap; the first `count` of them were decoded, the rest is zero. Pass the
 * header to the family's list Release, never to free().
 */
typedef struct RecordList {
  int32_t count;
  void* entries;
} RecordList;

static_assert(sizeof(IoctlEnvelope) == 24, "IoctlEnvelope is 24 bytes");
static_assert(offsetof(IoctlEnvelope, inBuffer) == 4, "IoctlEnvelope.inBuffer");
static_assert(offsetof(IoctlEnvelope, outLength) == 12, "IoctlEnvelope.outLength");
static_assert(offsetof(IoctlEnvelope, outBuffer) == 16, "IoctlEnvelope.outBuffer");
static_assert(sizeof(IoctlParams) == 968, "IoctlParams is 968 bytes");
static_assert(sizeof(MacValue) == 6, "MacValue is 6 bytes");
static_assert(sizeof(RecordList) == 16, "RecordList is 16 bytes");
static_assert(offsetof(RecordList, entries) == 8, "RecordList.entries");

/*
 * Send one command to the datapath: open the device node, issue one ioctl, close the node.
 *
 * request  Command code. It is sign-extended to the system's request type and passed on as it is.
 *          No range is checked, so a negative one reaches the kernel as a very large number.
 * env      The envelope, required, passed to the kernel unchanged. After success `outLength` holds
 *          the number of bytes that the kernel produced. NULL is not tested: the kernel decides.
 *
 * The node is the upgrade node when USE_UPGRADE_DEV is in the environment, whatever its value (also
 * an empty one), else the normal node. The environment is read on every call.
 *
 * Returns 0 when the ioctl succeeded, whatever non-negative value it returned. Returns -1 when the
 * node cannot be opened (errno of open64, nothing was sent) or the ioctl failed (errno as it stands
 * after the node was closed). Nothing is retried, and one node never stands in for the other.
 */
VDRZAX_API int VDRZAXIoctl(int request, IoctlEnvelope* env);

/*
 * Copy the name of an object into `out`, also when the name is the text of a UUID.
 *
 * text  Text to copy, required; NULL is not tested and faults. At most 63 characters are taken.
 * out   64 bytes, required; NULL is not tested and faults. All 64 are written: the text, a
 *       terminator, zeros.
 *
 * UUID text is recognised but never turned into bytes, because the datapath knows objects by their
 * text. Returns nothing and touches no device.
 */
VDRZAX_API void VDRZAXGetUuidOrName(const char* text, char* out) VDRZAX_NONNULL(1, 2);

#ifdef __cplusplus
}
#endif

#endif
