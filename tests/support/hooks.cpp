#include "support/hooks.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <link.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "support/fake_device.h"

// The real allocator: that of the C library, or the sanitizer's where one is linked in.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void __libc_free(void* memory);
void* __interceptor_malloc(std::size_t size) __attribute__((weak));
void* __interceptor_calloc(std::size_t count, std::size_t size) __attribute__((weak));
void __interceptor_free(void* memory) __attribute__((weak));
}

namespace hooks {

namespace {

// Read by every allocation of the program, also before constructors have run.
fake::Device* installed = nullptr;

fake::Device* Installed() { return __atomic_load_n(&installed, __ATOMIC_ACQUIRE); }

// Where the code of the library lies, so that its allocations are told from all others.
struct Range {
  uintptr_t begin = 0;
  uintptr_t end = 0;
};

Range FindLibrary() {
  Range range;
  dl_iterate_phdr(
      [](dl_phdr_info* object, std::size_t, void* found) {
        if (!std::strstr(object->dlpi_name, "libvdrzax.so")) return 0;
        for (int index = 0; index < object->dlpi_phnum; ++index) {
          const auto& segment = object->dlpi_phdr[index];
          if (segment.p_type != PT_LOAD || (segment.p_flags & PF_X) == 0) continue;
          const uintptr_t begin = object->dlpi_addr + segment.p_vaddr;
          *static_cast<Range*>(found) = {begin, begin + segment.p_memsz};
        }
        return 1;
      },
      &range);
  if (range.begin == 0) std::abort();
  return range;
}

fake::Device* DeviceFor(void* caller) {
  fake::Device* device = Installed();
  if (!device) return nullptr;
  static const Range library = FindLibrary();
  const auto address = reinterpret_cast<uintptr_t>(caller);
  return address >= library.begin && address < library.end ? device : nullptr;
}

void* RealMalloc(std::size_t size) {
  return __interceptor_malloc ? __interceptor_malloc(size) : __libc_malloc(size);
}

void* RealCalloc(std::size_t count, std::size_t size) {
  return __interceptor_calloc ? __interceptor_calloc(count, size) : __libc_calloc(count, size);
}

void RealFree(void* memory) {
  if (__interceptor_free) {
    __interceptor_free(memory);
  } else {
    __libc_free(memory);
  }
}

constexpr std::size_t kLargestFilled = 1 << 20;

}  // namespace

void Install(fake::Device* device) { __atomic_store_n(&installed, device, __ATOMIC_RELEASE); }

}  // namespace hooks

// A failing allocation leaves errno alone, as an agent's own allocator may.
extern "C" {

void* malloc(std::size_t size) {
  fake::Device* device = hooks::DeviceFor(__builtin_return_address(0));
  if (!device) return hooks::RealMalloc(size);
  const int saved = errno;
  if (!device->Allocate(fmt::format("malloc({})", size))) return nullptr;
  void* memory = hooks::RealMalloc(size);
  // Garbage, so that nothing can lean on fresh memory being zero. Large buffers are left untouched.
  if (memory && size <= hooks::kLargestFilled) std::memset(memory, 0xA5, size);
  if (memory) device->Remember(memory, size);
  errno = saved;
  return memory;
}

void* calloc(std::size_t count, std::size_t size) {
  fake::Device* device = hooks::DeviceFor(__builtin_return_address(0));
  if (!device) return hooks::RealCalloc(count, size);
  const int saved = errno;
  if (!device->Allocate(fmt::format("calloc({}, {})", count, size))) return nullptr;
  void* memory = hooks::RealCalloc(count, size);
  if (memory) device->Remember(memory, count * size);
  errno = saved;
  return memory;
}

void free(void* memory) {
  if (fake::Device* device = hooks::Installed()) {
    const int saved = errno;
    device->Forget(memory);
    errno = saved;
  }
  hooks::RealFree(memory);
}

int open64(const char* path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
  va_end(arguments);
  fake::Device* device = hooks::DeviceFor(__builtin_return_address(0));
  if (device) return device->Open(path, flags);
  return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

int ioctl(int descriptor, unsigned long request, ...) {
  va_list arguments;
  va_start(arguments, request);
  // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): the analyzer misses the va_start above.
  void* argument = va_arg(arguments, void*);
  va_end(arguments);
  fake::Device* device = hooks::DeviceFor(__builtin_return_address(0));
  if (device) return device->Ioctl(descriptor, request, argument);
  return static_cast<int>(syscall(SYS_ioctl, descriptor, request, argument));
}

int close(int descriptor) {
  fake::Device* device = hooks::DeviceFor(__builtin_return_address(0));
  if (device) return device->Close(descriptor);
  return static_cast<int>(syscall(SYS_close, descriptor));
}
}
