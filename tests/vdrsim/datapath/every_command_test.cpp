#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>

#include "datapath/datapath.h"
#include "in_process.h"
#include "requests/requests.h"

namespace {

using vdrsim::requests::kRequests;
using vdrsim::requests::Request;

// Whatever a command answers to an input of zeros, it is known.
TEST(SimulatedDatapath, EveryCommandHasAHandler) {
  for (const Request* request : kRequests) {
    vdrsim::Datapath datapath;
    wire::Wire input(InputLength(request->form));
    if (request->variant != 0) input.U8(request->variant, 1);
    EXPECT_NE(in_process::Execute(datapath, request->code, input, UINT32_MAX).error, ENOTTY)
        << request->name.text << ' ' << request->code;
  }
}

}  // namespace
