/*
 * libvdrzax: control of the virtual distributed router in the hypervisor's kernel.
 *
 * Every function is exactly one device command, but for VDRZAX_GetRoutesv6, which asks for the size
 * of its table first. These rules hold for all of them; each family's header tells what is
 * particular.
 *
 * Results. A function returns 0 on success and -1 on failure, with errno set:
 *   EINVAL   a required argument is NULL; tested first, nothing was allocated or sent
 *   ENOMEM   an allocation failed
 *   EBADMSG  the kernel's reply is shorter than the record it should hold
 *   other    left by open64 or ioctl, for example ENOENT when the kernel module is not loaded
 * errno is not touched on success. Release functions return nothing.
 *
 * NULL. "Required" with EINVAL named means that NULL is tested. A required argument that is said
 * not to be tested faults, or is given to the kernel: the caller must not pass NULL. Pointers to
 * results are never tested, but for the four settings of <vdrzax/instance.h>.
 *
 * Texts. A name field of 64 bytes takes 63 characters and a terminator; a longer text is cut. Where
 * a text is sent or kept without a forced terminator, its function says so.
 *
 * Numbers are passed and returned as they stand, in the byte order of the host. The library gives
 * no number a meaning: levels, flags and words that are named by their place are the kernel's.
 *
 * Ownership. Records and lists that a getter stores in the caller's pointer belong to the caller
 * until they are passed to the Release function of the same object. Record pointers are written
 * before decoding; what they hold after a failure stands with each getter. Do not read them then.
 *
 * Records are packed and have the kernel's layout; fields may be unaligned, so copy a field out
 * before taking its address. Bytes that the library does not copy are zero.
 *
 * Lists. A list getter allocates a reply buffer and an entries array for the most records that the
 * kernel may send, whatever the count. The library touches both only as far as the reply goes; an
 * allocator that recycles memory may clear more (docs/memory.md tells when, and how to avoid it).
 *
 * Threads. There is no shared state, no initialisation and no teardown. Any number of threads and
 * processes may call any function at once.
 *
 * Environment. When USE_UPGRADE_DEV exists, with any value, commands go to the upgrade node.
 */
#ifndef VDRZAX_H
#define VDRZAX_H

#include <vdrzax/bridge.h>
#include <vdrzax/channel.h>
#include <vdrzax/e2i.h>
#include <vdrzax/instance.h>
#include <vdrzax/lif.h>
#include <vdrzax/mcast.h>
#include <vdrzax/policy.h>
#include <vdrzax/route.h>
#include <vdrzax/services.h>

#endif
