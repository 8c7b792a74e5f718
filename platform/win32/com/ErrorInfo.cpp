#include "platform/win32/com/ErrorInfo.h"

#include <oleauto.h>
#include <wrl/client.h>

#include "platform/win32/com/Bstr.h"

namespace nv::com {
namespace {

void SetThreadErrorInfo(TextView description, REFIID interfaceId) noexcept {
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

HRESULT ReportError(const ErrorView& error, REFIID interfaceId) noexcept {
  SetThreadErrorInfo(error.description, interfaceId);
  return HResultOf(error.number);
}

HRESULT ReportCurrentException(REFIID interfaceId) noexcept { return ReportError(CurrentError(), interfaceId); }

}  // namespace nv::com
