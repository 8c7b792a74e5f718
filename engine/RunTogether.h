#pragma once
// Work shared between threads: a large text scanned in stretches.
#include <functional>

namespace nv {

// Runs task(0) to task(count - 1) at the same time and returns once all have run: task(0) on
// the calling thread, each other one on a thread of its own where the system gives one, else
// on the calling thread too. The tasks must not throw.
//
// On Windows the threads come from the system's pool, which keeps them between calls: a
// thread started and ended for each call would cost more than the scan it shares.
void RunTogether(unsigned count, const std::function<void(unsigned)>& task);

}  // namespace nv
