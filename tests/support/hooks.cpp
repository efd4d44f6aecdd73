#include "support/hooks.h"

#include <arpa/inet.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <link.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "support/fake_device.h"

#if __has_include(<valgrind/memcheck.h>)
#include <valgrind/memcheck.h>
#else
#define RUNNING_ON_VALGRIND 0
#define VALGRIND_MAKE_MEM_UNDEFINED(address, size) ((void)(address), (void)(size))
#define VALGRIND_MAKE_MEM_DEFINED(address, size) ((void)(address), (void)(size))
#define VALGRIND_CHECK_MEM_IS_DEFINED(address, size) ((void)(address), (void)(size))
#endif

// The real allocator: that of the C library, or the sanitizer's where one is linked in.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void __libc_free(void* memory);
void* __interceptor_malloc(std::size_t size) __attribute__((weak));
void* __interceptor_calloc(std::size_t count, std::size_t size) __attribute__((weak));
void __interceptor_free(void* memory) __attribute__((weak));

// The code of the archive, in a program that is linked with it.
extern const char __start_vdrzax_text[] __attribute__((weak));
extern const char __stop_vdrzax_text[] __attribute__((weak));

// The program's own code, as the linker says.
extern const char __executable_start[];
extern const char etext[];
}

namespace hooks {

namespace {

// Read by every allocation of the program, also before constructors have run.
fake::Device* installed = nullptr;

fake::Device* Installed() { return __atomic_load_n(&installed, __ATOMIC_ACQUIRE); }

// Where some code lies, so that its calls are told from all others.
struct Range {
  uintptr_t begin = 0;
  uintptr_t end = 0;

  bool Contains(const void* caller) const {
    const auto address = reinterpret_cast<uintptr_t>(caller);
    return address >= begin && address < end;
  }
};

Range MakeRange(const char* begin, const char* end) {
  return {reinterpret_cast<uintptr_t>(begin), reinterpret_cast<uintptr_t>(end)};
}

Range FindLibrary() {
  if (__start_vdrzax_text) return MakeRange(__start_vdrzax_text, __stop_vdrzax_text);
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

const Range& Library() {
  static const Range range = FindLibrary();
  return range;
}

fake::Device* DeviceFor(const void* caller) {
  fake::Device* device = Installed();
  return device && Library().Contains(caller) ? device : nullptr;
}

// What the library allocates is freed by itself or by the tests. The C library frees memory of its
// own in threads that are just coming or going, where a thread sanitizer bears no instrumented code.
fake::Device* DeviceForFree(const void* caller) {
  fake::Device* device = Installed();
  if (!device) return nullptr;
  const Range program = MakeRange(__executable_start, etext);
  return Library().Contains(caller) || program.Contains(caller) ? device : nullptr;
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

// Garbage, so that nothing can lean on fresh memory being zero. Large buffers are left untouched.
void FillWithGarbage(void* memory, std::size_t size) {
  if (size > kLargestFilled) return;
  std::memset(memory, 0xA5, size);
  VALGRIND_MAKE_MEM_UNDEFINED(memory, size);
}

// The kernel reads the input of a command. Memcheck does not know these commands, so it is told here,
// once for each block: what it had to say is not repeated where the tests compare the bytes.
void CheckInput(const uint8_t* envelope) {
  uint32_t length;
  const void* input;
  std::memcpy(&length, envelope, 4);
  std::memcpy(&input, envelope + 4, 8);
  VALGRIND_CHECK_MEM_IS_DEFINED(input, length);
  VALGRIND_MAKE_MEM_DEFINED(input, length);
}

// Calls of the kernel touch errno only when they fail, whatever the device did meanwhile.
template <typename Call>
int KeepingErrno(Call call) {
  const int saved = errno;
  const int result = call();
  if (result >= 0) errno = saved;
  return result;
}

int Scan(const void* caller, const char* text, const char* format, va_list arguments) {
  fake::Device* device = DeviceFor(caller);
  if (!device || !device->scan) return std::vsscanf(text, format, arguments);
  unsigned* numbers[16];
  for (unsigned*& number : numbers) number = va_arg(arguments, unsigned*);
  return device->scan(text, format, numbers);
}

}  // namespace

void Install(fake::Device* device) {
  Library();  // Found before any other thread asks.
  __atomic_store_n(&installed, device, __ATOMIC_RELEASE);
}

bool MemoryIsWatched() { return __interceptor_malloc || RUNNING_ON_VALGRIND != 0; }

}  // namespace hooks

// A failing allocation leaves errno alone, as an agent's own allocator may.
extern "C" {

void* malloc(std::size_t size) {
  fake::Device* device = hooks::DeviceFor(__builtin_return_address(0));
  if (!device) return hooks::RealMalloc(size);
  const int saved = errno;
  if (!device->Allocate(fmt::format("malloc({})", size))) return nullptr;
  void* memory = hooks::RealMalloc(size);
  if (memory) hooks::FillWithGarbage(memory, size);
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
  if (fake::Device* device = hooks::DeviceForFree(__builtin_return_address(0))) {
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
  if (device) return hooks::KeepingErrno([&] { return device->Open(path, flags); });
  return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

int ioctl(int descriptor, unsigned long request, ...) {
  va_list arguments;
  va_start(arguments, request);
  // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): the analyzer misses the va_start above.
  void* argument = va_arg(arguments, void*);
  va_end(arguments);
  fake::Device* device = hooks::DeviceFor(__builtin_return_address(0));
  if (device) {
    hooks::CheckInput(static_cast<const uint8_t*>(argument));
    return hooks::KeepingErrno([&] { return device->Ioctl(descriptor, request, argument); });
  }
  return static_cast<int>(syscall(SYS_ioctl, descriptor, request, argument));
}

int close(int descriptor) {
  fake::Device* device = hooks::DeviceFor(__builtin_return_address(0));
  if (device) return hooks::KeepingErrno([&] { return device->Close(descriptor); });
  return static_cast<int>(syscall(SYS_close, descriptor));
}

int inet_pton(int family, const char* text, void* address) noexcept {
  fake::Device* device = hooks::DeviceFor(__builtin_return_address(0));
  if (device && device->convertAddress) return device->convertAddress(family, text, address);
  static const auto real = reinterpret_cast<decltype(&inet_pton)>(dlsym(RTLD_NEXT, "inet_pton"));
  return real(family, text, address);
}

// The names under which the headers of glibc have sscanf called: since 2.7, and since 2.38.
int __isoc99_sscanf(const char* text, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int converted = hooks::Scan(__builtin_return_address(0), text, format, arguments);
  va_end(arguments);
  return converted;
}

int __isoc23_sscanf(const char* text, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int converted = hooks::Scan(__builtin_return_address(0), text, format, arguments);
  va_end(arguments);
  return converted;
}
}
