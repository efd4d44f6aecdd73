#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

#include "call.h"

namespace vdrsim {

// The link that carries out what `vdrsim ctl` says from within the run. It comes before all others, so
// that none of it is journaled, counted or made to fail; everything else is handed on.
class Control final : public Executor {
 public:
  // Does something with the body of an order, and returns what is to be printed. What it throws is
  // told as the reason why it was not done. One is carried out at a time.
  using Action = std::function<std::string(std::string_view body)>;

  explicit Control(Executor& next) : next_(next) {}

  // To be called before the run begins. Throws std::bad_alloc.
  void On(std::string word, Action action);

  // Fails with ENOMEM, or as the next link does.
  Answer Execute(const Call& call) noexcept override;

 private:
  std::string Carry(std::string_view word, std::string_view body);

  Executor& next_;
  std::mutex mutex_{};
  std::map<std::string, Action, std::less<>> actions_{};
};

}  // namespace vdrsim
