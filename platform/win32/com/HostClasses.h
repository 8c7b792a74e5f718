#pragma once
// The host's four classes as this DLL reaches them: created by class identifier; a class
// that cannot be created raises the HRESULT of the failure.
//
// Their members are not called yet: until the clients that call them by slot exist, each
// member raises E_NOTIMPL with a description saying so.
#include <windows.h>
#include <oaidl.h>
#include <wrl/client.h>

#include <memory>

#include "store/HostServices.h"

namespace nv::com {

inline constexpr CLSID kVariablesServiceClass = {
    0xA4C42093, 0x4821, 0x49A8, {0xA5, 0x5C, 0x78, 0xE5, 0x77, 0x73, 0x40, 0xA3}};
inline constexpr CLSID kReportWriterClass = {
    0x7D9C7317, 0x3346, 0x415E, {0x85, 0x3D, 0x4D, 0xD9, 0x9D, 0xB4, 0xEF, 0xD0}};
inline constexpr CLSID kWrapperCatalogClass = {
    0x08C2AB98, 0x61B3, 0x45E8, {0xB6, 0x47, 0x74, 0x6B, 0x4E, 0x90, 0xD4, 0x01}};
inline constexpr CLSID kActionsEditorClass = {
    0xE164D97B, 0xCCCB, 0x4956, {0x93, 0x28, 0x48, 0x83, 0xA0, 0xB7, 0x9A, 0xF0}};

// A new instance of the host class, or a run-time error with the failure's HRESULT.
Microsoft::WRL::ComPtr<IDispatch> CreateHostObject(REFCLSID classId, const char16_t* className);

std::unique_ptr<VariablesService> MakeVariablesClient(Microsoft::WRL::ComPtr<IDispatch> object);
std::shared_ptr<ReportWriter> MakeReportWriterClient(Microsoft::WRL::ComPtr<IDispatch> object);
std::unique_ptr<WrapperCatalog> MakeWrapperCatalogClient(Microsoft::WRL::ComPtr<IDispatch> object);
std::unique_ptr<ActionsEditor> MakeActionsEditorClient(Microsoft::WRL::ComPtr<IDispatch> object);

}  // namespace nv::com
