#include "threads.h"

#include <vdrzax.h>

#include <barrier>
#include <cstdlib>
#include <memory>
#include <thread>

#include "device.h"
#include "floor.h"

namespace {

constexpr int kMostThreads = 8;
constexpr int kCommandsEach = 500;

// Threads that start and finish a piece of work together. They are there before it starts, so that
// making them is not timed.
class Crew {
 public:
  explicit Crew(int size) : start_(size + 1), finish_(size + 1) {
    for (int index = 0; index < size; ++index) {
      threads_.emplace_back([this](const std::stop_token& stop) {
        for (start_.arrive_and_wait(); !stop.stop_requested(); start_.arrive_and_wait()) {
          for (int command = 0; command < kCommandsEach; ++command) work_();
          finish_.arrive_and_wait();
        }
      });
    }
  }

  ~Crew() {
    for (std::jthread& thread : threads_) thread.request_stop();
    start_.arrive_and_wait();
  }

  Crew(const Crew&) = delete;

  void Run(void (*work)()) {
    work_ = work;
    start_.arrive_and_wait();
    finish_.arrive_and_wait();
  }

 private:
  std::barrier<> start_;
  std::barrier<> finish_;
  void (*work_)() = nullptr;
  std::vector<std::jthread> threads_;
};

void SetByLibrary() {
  if (VDRZAX_SetVdrInstance("edge-1", 2, "text", 4, 1) != 0) std::abort();
}

void SetByFloor() {
  if (floor_of::Command(2, nullptr, 0) != 0) std::abort();
}

}  // namespace

std::vector<Case> ThreadCases() {
  std::vector<Case> cases;
  for (int size = 1; size <= kMostThreads; ++size) {
    const auto crew = std::make_shared<std::unique_ptr<Crew>>();
    cases.push_back(
        {.name = "VDRZAX_SetVdrInstance",
         .device = "kernel, " + std::to_string(size) + (size == 1 ? " thread" : " threads"),
         .target = 1.05,
         .prepare =
             [crew, size] {
               device::Answer(device::Calls::Kernel, device::Verdict::Serve, {});
               *crew = std::make_unique<Crew>(size);
             },
         .library = [crew] { (*crew)->Run(SetByLibrary); },
         .floor = [crew] { (*crew)->Run(SetByFloor); }});
  }
  return cases;
}
