#pragma once
// The headless control layer: plain objects that hold what the editors read and write and
// raise the notifications they handle. A renderer binds real controls to the same objects.
#include <cstdint>
#include <functional>

#include "common/Text.h"

namespace nv {

// What every control has: a place on its form (twips) and the enabled and visible flags.
class Control {
 public:
  Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control() = default;

  bool Enabled = true;
  bool Visible = true;
  std::int32_t Left = 0;
  std::int32_t Top = 0;
  std::int32_t Width = 0;
  std::int32_t Height = 0;
};

using Notification = std::function<void()>;

// Raises a notification that may have no handler.
inline void Raise(const Notification& notification) {
  if (notification) notification();
}

}  // namespace nv
