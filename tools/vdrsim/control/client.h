#pragma once

#include <stdexcept>
#include <string>

#include "control/message.h"

namespace vdrsim::control {

// There is nobody to give orders to.
class NotInARun : public std::runtime_error {
 public:
  NotInARun();
};

// Gives an order to the run that this process is in. Returns what is to be printed. Throws NotInARun,
// and std::runtime_error with the run's own words when it could not be done.
std::string Give(const Order& order);

}  // namespace vdrsim::control
