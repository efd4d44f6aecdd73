/*
 * libvdrzax: control of the virtual distributed router in the hypervisor's kernel.
 *
 * These rules hold for all functions, but for the exceptions that stand with them; each family's
 * header tells what is particular.
 *
 * Commands. A function is exactly one device command: one open, one ioctl, one close. Release
 * functions and VDRZAXGetUuidOrName send nothing, nor does a function that refuses its arguments.
 * VDRZAX_GetRoutesv6 asks for the size of its table first and is two commands.
 *
 * Results. A function returns 0 on success and -1 on failure, with errno set:
 *   EINVAL   a required argument is NULL; tested first, nothing was allocated or sent. Also any
 *            text of servers given to VDRZAX_ConfigureLifDhcpRelay
 *   ENOMEM   an allocation failed. Also when VDRZAX_GetRoutesv6 cannot learn the size of its table,
 *            for whatever reason, and for a negative count in VDRZAX_GetE2ITable
 *   EBADMSG  the kernel's reply is shorter than its record or ends inside a record of a list, which
 *            VDRZAX_GetMRoutingAllMcastGroups alone takes. VDRZAX_GetE2IEntry and
 *            VDRZAX_GetE2ITable say so of a reply that is too long. Where the length is not
 *            examined, as in settings and raw buffers, the function says so
 *   other    left by open64 or ioctl: ENOENT when the kernel module is not loaded, EINTR when a
 *            signal came in between, and so on. Nothing is retried
 * The library does not touch errno on success, but for VDRZAX_GetLifs: it returns 0 once the kernel
 * has replied, with errno EBADMSG or ENOMEM when the reply could not be made a list. The functions
 * of the VM public IP table return -1 and leave errno as it was when they refuse an argument or a
 * reply. Release functions and VDRZAXGetUuidOrName return nothing.
 *
 * NULL. "Required" with EINVAL named means that NULL is tested. A required argument that is said
 * not to be tested faults, or is given to the kernel: the caller must not pass NULL. Pointers to
 * results are never tested, but for the four settings of <vdrzax/instance.h>.
 *
 * Texts. A name field of 64 bytes takes 63 characters (VDRZAX_NAME_MAX) and a terminator; a longer
 * text is cut. Where a text is sent or kept without a forced terminator, its function says so.
 *
 * Numbers are passed and returned as they stand, in the byte order of the host. The library gives
 * no number a meaning: levels, flags and words that are named by their place are the kernel's.
 *
 * Ownership. Records and lists that a getter stores in the caller's pointer belong to the caller
 * until they are passed to the Release function of the same object. Record pointers are written
 * before decoding; what they hold after a failure stands with each getter. Do not read them then.
 *
 * A `result` buffer, like any buffer that the kernel writes straight into, may hold after a failure
 * what the kernel wrote before it failed.
 *
 * Records are packed and have the kernel's layout; fields may be unaligned, so copy a field out
 * before taking its address. In C++ a reference takes it too, and no compiler warns: `auto&` and
 * what has a reference as parameter, as push_back(record->word399), std::max and std::format, read
 * through an unaligned address, which is undefined. Pass a copy, as in push_back(+record->word399).
 * Bytes that the library does not copy are zero.
 *
 * Lists. A list getter allocates a reply buffer and an entries array for the most records that the
 * kernel may send, whatever the count. The library touches both only as far as the reply goes; an
 * allocator that recycles memory may clear more (docs/memory.md tells when, and how to avoid it).
 *
 * Threads. There is no shared state, no initialisation and no teardown. Any number of threads and
 * processes may call any function at once.
 *
 * Processes. The device node is opened without close-on-exec. A program that another thread forks
 * and executes while a command is under way inherits the descriptor, which then stays open until
 * that program ends or closes it.
 *
 * Environment. When USE_UPGRADE_DEV exists, with any value, commands go to the upgrade node. Each
 * command reads the environment, so setenv(), putenv() and unsetenv() in one thread, of whatever
 * variable, race every call in another: change the environment before threads start.
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
