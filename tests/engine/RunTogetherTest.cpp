#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "engine/RunTogether.h"

namespace nv {
namespace {

// Every task runs once, and all of them have ended when the call returns, however many
// there are against the processors.
TEST(RunTogether, RunsEveryTaskOnceBeforeReturning) {
  for (const unsigned count : {1u, 2u, 3u, 8u, 40u}) {
    SCOPED_TRACE(count);
    std::vector<std::atomic<int>> runs(count);
    std::atomic<bool> onCaller{false};
    const std::thread::id caller = std::this_thread::get_id();
    RunTogether(count, [&](unsigned i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(i % 3));  // some end after the caller's
      if (i == 0) onCaller = std::this_thread::get_id() == caller;
      ++runs[i];
    });
    for (unsigned i = 0; i < count; ++i) EXPECT_EQ(runs[i].load(), 1) << i;
    EXPECT_TRUE(onCaller.load());
  }
}

}  // namespace
}  // namespace nv
