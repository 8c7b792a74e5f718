#include "platform/win32/com/ErrorInfo.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <exception>
#include <new>

#include "common/Utf.h"
#include "platform/win32/com/Bstr.h"

namespace nv::com {
namespace {

constexpr std::int32_t kOutOfMemory = 7;

void SetThreadErrorInfo(const Text& description, REFIID interfaceId) noexcept {
  Microsoft::WRL::ComPtr<ICreateErrorInfo> created;
  if (FAILED(CreateErrorInfo(&created))) return;
  created->SetGUID(interfaceId);
  created->SetSource(const_cast<LPOLESTR>(ModuleErrorSource()));
  // Not MakeBstr: nothing here may throw.
  const UniqueBstr text(SysAllocStringLen(reinterpret_cast<const OLECHAR*>(description.data()),
                                          static_cast<UINT>(description.size())));
  if (!text.get()) return;
  created->SetDescription(text.get());
  Microsoft::WRL::ComPtr<IErrorInfo> info;
  if (SUCCEEDED(created.As(&info))) SetErrorInfo(0, info.Get());
}

}  // namespace

HRESULT HResultOf(std::int32_t number) noexcept {
  if (number < 0) return static_cast<HRESULT>(number);
  if (number > 0 && number <= 0xFFFF) return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number);
  return E_FAIL;
}

std::int32_t RuntimeNumberOf(HRESULT hr) noexcept {
  return HRESULT_FACILITY(hr) == FACILITY_CONTROL ? HRESULT_CODE(hr) : static_cast<std::int32_t>(hr);
}

HRESULT ReportError(const RuntimeError& error, REFIID interfaceId) noexcept {
  try {
    SetThreadErrorInfo(error.Description(), interfaceId);
  } catch (...) {
    // The HRESULT still tells the caller what failed.
  }
  return HResultOf(error.Number());
}

HRESULT ReportCurrentException(REFIID interfaceId) noexcept {
  try {
    throw;
  } catch (const RuntimeError& error) {
    return ReportError(error, interfaceId);
  } catch (const std::bad_alloc&) {
    SetThreadErrorInfo(u"Out of memory", interfaceId);
    return HResultOf(kOutOfMemory);
  } catch (const std::exception& error) {
    try {
      SetThreadErrorInfo(FromUtf8(error.what()), interfaceId);
    } catch (...) {
    }
    return E_UNEXPECTED;
  } catch (...) {
    return E_UNEXPECTED;
  }
}

}  // namespace nv::com
