#pragma once
// An object of the host that the plug-in only hands on (`Bouton`).
#include <memory>

namespace nv {

class HostObject {
 public:
  virtual ~HostObject() = default;
};
using HostObjectRef = std::shared_ptr<HostObject>;

}  // namespace nv
