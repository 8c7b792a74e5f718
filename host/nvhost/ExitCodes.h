#pragma once
// nvhost's exit statuses, one per kind of outcome, and the failures that carry them to main.
// Scripts rely on 0 for a run that ended, 3 for a run that failed and 1 for a missing variable.
#include <stdexcept>

namespace nv {

namespace ExitCode {
constexpr int Success = 0;
constexpr int NotFound = 1;       // no such variable, task, key or hive; `check` found something
constexpr int Usage = 2;          // the command line is wrong: nothing was done
constexpr int FailedRun = 3;      // `run` ended with status 3
constexpr int DialogMessage = 4;  // `edit`: the dialog showed a message (the prompt is printed)
constexpr int IoError = 5;        // a file, the hive or the registry failed, or the plug-in raised an error
}  // namespace ExitCode

// Something named on the command line does not exist; nothing was written.
class NotFoundError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace nv
