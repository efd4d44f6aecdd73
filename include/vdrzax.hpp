// libvdrzax for C++20: the functions of <vdrzax.h> as calls of a Client.
//
//   vdrzax::Client vdr;
//   vdr.set_instance("edge-1", {.second = 10, .flag = 1});
//   for (const auto& i : vdr.instances()) std::cout << i.name() << ' ' << i.word64() << '\n';
//   if (auto i = vdr.find_instance("edge-9"); !i) { /* not there; a missing device throws */ }
//
// It needs the library, the C library and the standard library, and has nothing to link of its own.
// What a call does to the datapath, what its numbers mean, in which unit and byte order they are, and
// what its errors are, is said in <vdrzax.h> of the function that the call names; these rules come on
// top of it.
//
// Names. A call has the words of its function in small letters, the verb first: without Get and Vdr, with
// `delete` for Del. Objects are named from the outside in, the instance first. What a command sets comes in
// a structure when it is more than two or three numbers; its members, like the parameters, have the names
// of the C parameters, and what is not given is 0 or empty.
//
// Numbers are passed on as they stand, in the byte order of the host: an IPv4 address is whatever the C
// function takes. A Mac is six bytes in the order in which they are written.
//
// Texts are taken as `const char*`, std::string and std::string_view. A name has at most 63 characters
// (VDRZAX_NAME_MAX), also in the commands of IPv6, whose fields hold 64: no object can have a name of
// 64, because those that create it cut it. Where another text has less or more room, its call or structure
// says so. Nothing is cut: a text that is too long, one with a NUL inside, or none where one is required,
// is refused before anything is sent. A `const char*` ends at its first NUL, and NULL is no text.
//
// Failures. A call throws
//   vdrzax::error          what the library or the device refused: a std::system_error of the system
//                          category, with function(), the function of <vdrzax.h>, and code()
//   std::length_error      a text or an array that is longer than its field
//   std::invalid_argument  a text with a NUL inside, or a required argument that is missing
// and each also exists as try_..., which throws nothing and gives a `result`: a value, or function() and
// code(). The three kinds of refusal have ENAMETOOLONG and EINVAL there, and failure().refusal. A reply
// that the library refuses without an errno of its own gives EBADMSG. A call that succeeds leaves errno
// alone. Compiled with -fno-exceptions the try_... calls are all there are.
//
// find_... gives nothing instead of failing when what it asks for is not there (ENOENT). The device gives
// ENOENT too when it is missing itself, which is a failure: before find_... says that something is not
// there it reads the log level, which is one command more.
//
// Ownership. What a call gives back owns what the library allocated and gives it back by the Release
// function of its object, or by free() where there is none. It moves and cannot be copied; moved from, it
// is empty. What the C functions lose on purpose when a command fails is lost here too (docs/guarantees.md).
//
// Records. Elements of lists are views: they read fields by value, so that none needs an aligned address,
// and live, like the texts that they give, as long as the list. Counts of entries within a record are
// held to the room that there is.
//
// Threads. A Client has no state and costs nothing; any number of threads may use one or many.
#ifndef VDRZAX_HPP
#define VDRZAX_HPP

#include <stdlib.h>
#include <vdrzax.h>

#include <vdrzax/cxx/bridge.hpp>
#include <vdrzax/cxx/channel.hpp>
#include <vdrzax/cxx/e2i.hpp>
#include <vdrzax/cxx/instance.hpp>
#include <vdrzax/cxx/lif.hpp>
#include <vdrzax/cxx/mcast.hpp>
#include <vdrzax/cxx/policy.hpp>
#include <vdrzax/cxx/route.hpp>
#include <vdrzax/cxx/services.hpp>

namespace vdrzax {
inline namespace v1 {

// Where commands go.
enum class Node { Normal, Upgrade };

// Sends all commands of this process to `node` from now on, those of other Clients and of C callers too:
// the library knows the node by USE_UPGRADE_DEV in the environment, which is set or unset here, and which
// programs that this one starts inherit. No other thread may call the library or touch the environment
// meanwhile.
inline result<void> try_use_node(Node node) noexcept {
  const bool isUpgrade = node == Node::Upgrade;
  const int status = isUpgrade ? ::setenv("USE_UPGRADE_DEV", "", 1) : ::unsetenv("USE_UPGRADE_DEV");
  if (status != 0) return Failure{isUpgrade ? "setenv" : "unsetenv", errno};
  return {};
}

// All calls. The rules stand at the top.
class Client : public InstanceCalls,
               public LifCalls,
               public RouteCalls,
               public PolicyCalls,
               public BridgeCalls,
               public E2iCalls,
               public McastCalls,
               public ServicesCalls,
               public ChannelCalls {
 public:
  // Leaves the node as the environment has it.
  Client() noexcept = default;
#ifdef __cpp_exceptions
  // Chooses the node for the whole process, as try_use_node; it stays chosen when the Client ends.
  explicit Client(Node node) { try_use_node(node).value(); }
#endif
};

}  // namespace v1
}  // namespace vdrzax

#endif
