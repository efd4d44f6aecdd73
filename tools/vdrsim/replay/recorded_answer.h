#pragma once

#include "call.h"
#include "replay/recording.h"

namespace vdrsim {

// What a caller gets who asks for a command that is recorded: errno, reply and claimed length as they
// were. The error is ENODATA where the recording has no reply although there was one, and EINVAL when
// the caller has not the room for it. The recording must outlive the answer. Throws std::bad_alloc.
Answer AnswerAsRecorded(const Recording& recording, const Recorded& command, const Call& call);

}  // namespace vdrsim
