#include "engine/RunTogether.h"

#include <memory>
#include <vector>

#if defined(_WIN32)
#include <windows.h>
#else
#include <system_error>
#include <thread>
#endif

namespace nv {

#if defined(_WIN32)
namespace {

struct Job {
  const std::function<void(unsigned)>* task;
  unsigned index;
};

VOID CALLBACK RunJob(PTP_CALLBACK_INSTANCE, PVOID context, PTP_WORK) {
  const Job& job = *static_cast<const Job*>(context);
  (*job.task)(job.index);
}

// A submitted piece of work: waited for, then closed.
struct WorkCloser {
  void operator()(PTP_WORK work) const noexcept {
    WaitForThreadpoolWorkCallbacks(work, FALSE);
    CloseThreadpoolWork(work);
  }
};
using SubmittedWork = std::unique_ptr<TP_WORK, WorkCloser>;

}  // namespace

void RunTogether(unsigned count, const std::function<void(unsigned)>& task) {
  std::vector<Job> jobs(count);
  std::vector<SubmittedWork> submitted;  // after the jobs: waited for before they go
  submitted.reserve(count);
  for (unsigned i = 1; i < count; ++i) {
    jobs[i] = {&task, i};
    PTP_WORK work = CreateThreadpoolWork(RunJob, &jobs[i], nullptr);
    if (work == nullptr) {
      task(i);  // no work item to be had: this thread runs it
      continue;
    }
    SubmitThreadpoolWork(work);
    submitted.emplace_back(work);
  }
  task(0);
}
#else
void RunTogether(unsigned count, const std::function<void(unsigned)>& task) {
  std::vector<std::jthread> helpers;  // joined when they go
  helpers.reserve(count);
  for (unsigned i = 1; i < count; ++i) {
    try {
      helpers.emplace_back(task, i);
    } catch (const std::system_error&) {
      task(i);  // no thread to spare: this one runs it
    }
  }
  task(0);
}
#endif

}  // namespace nv
