#pragma once

// What a system test starts must not outlive it, however it ends, and must not wait for ever.
namespace guard {

// Minutes more than a test takes on a slow machine under a sanitizer.
inline constexpr int kSeconds = 600;

// Returns in a child process. The caller itself stays behind, hands on the exit status of the child
// (128 and the signal when one ended it) and never returns. Whatever descends from the child is
// killed when the child ends, when the caller is killed, and after so many seconds, which is status
// 124. Signals that who started the test ignores, as a job in the background does, end the child.
void Contain(int seconds);

// Makes the caller the parent of what its descendants leave behind.
void AdoptOrphans();

// Kills all that descends from the caller, which adopts orphans, and waits until nobody is left.
void EndDescendants();

}  // namespace guard
