#include "platform/win32/com/Bstr.h"

#include <new>

namespace nv::com {

UniqueBstr MakeBstr(TextView text) {
  BSTR value = SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size()));
  if (value == nullptr) throw std::bad_alloc();
  return UniqueBstr(value);
}

Text TextOf(BSTR value) {
  if (value == nullptr) return {};
  return Text(reinterpret_cast<const char16_t*>(value), SysStringLen(value));
}

}  // namespace nv::com
