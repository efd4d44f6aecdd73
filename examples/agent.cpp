// Keeps a router instance and its uplink as they should be, as a management agent would.
#include <cerrno>
#include <exception>
#include <iostream>
#include <string>
#include <vdrzax.hpp>

namespace {

constexpr const char* kInstance = "edge-1";
constexpr const char* kUplink = "uplink";

// Makes what is missing, and leaves alone what is there.
void Ensure(const vdrzax::Client& vdr) {
  if (!vdr.find_instance(kInstance)) {
    vdr.set_instance(kInstance, {.second = 10, .flag = 1});
    std::cout << "made " << kInstance << '\n';
  }
  if (!vdr.find_lif(kInstance, kUplink)) {
    vdr.set_lif(kInstance, kUplink, {.a5 = 100, .extra = vdrzax::Mac{0x02, 0, 0, 0, 0, 0x01}});
    vdr.enable_lif(kInstance, kUplink);
    std::cout << "made " << kUplink << '\n';
  }
}

void Show(const vdrzax::Client& vdr) {
  for (const auto& instance : vdr.instances()) {
    const std::string name(instance.name());
    std::cout << name << ' ' << instance.word64() << '\n';
    for (const auto& lif : vdr.lifs(name)) std::cout << "  lif " << lif.name() << '\n';
    for (const auto& route : vdr.routes(name)) {
      std::cout << "  route " << route.route_word0();
      for (const auto& hop : route.next_hops()) std::cout << ' ' << hop.hop_name();
      std::cout << '\n';
    }
  }
}

// A busy device is no failure of the agent's, so this call does not throw.
bool IsPolled(const vdrzax::Client& vdr) {
  const auto level = vdr.try_log_level();
  if (!level) std::cerr << level.function() << ": " << level.code().message() << '\n';
  return level.has_value();
}

}  // namespace

int main() try {
  const vdrzax::Client vdr;
  if (!IsPolled(vdr)) return 1;
  Ensure(vdr);
  vdr.set_route(kInstance,
                {.route_arg1 = 10, .route_arg2 = 255, .route_arg3 = 1, .if_name = kUplink});
  Show(vdr);
  return 0;
} catch (const vdrzax::error& failure) {
  std::cerr << failure.what() << '\n';
  return failure.code().value() == ENOENT ? 3 : 1;
} catch (const std::exception& failure) {
  std::cerr << failure.what() << '\n';
  return 1;
}
