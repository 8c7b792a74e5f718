#include "tests/com/ComServer.h"

#include <gtest/gtest.h>

#include <memory>

#include "platform/win32/com/Bstr.h"
#include "platform/win32/com/WindowsSdk.h"

namespace nv::comtest {
namespace {

// COM for the whole run, and the server registered as a host's installer leaves it.
class ServerRegistration : public ::testing::Environment {
 public:
  void SetUp() override {
    ASSERT_HRESULT_SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    ASSERT_EQ(RunRegsvr32(false), 0u) << "regsvr32 could not register " << std::string(ServerPath().begin(), ServerPath().end());
  }
  void TearDown() override {
    EXPECT_EQ(RunRegsvr32(true), 0u);
    CoUninitialize();
  }
};

const auto* const kRegistration = ::testing::AddGlobalTestEnvironment(std::make_unique<ServerRegistration>().release());

}  // namespace

std::wstring GuidText(REFGUID guid) {
  wchar_t text[40] = {};
  StringFromGUID2(guid, text, 40);
  return text;
}

std::wstring BesideTestProgram(const wchar_t* fileName) {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path.substr(0, path.find_last_of(L'\\') + 1) + fileName;
}

std::wstring ServerPath() { return BesideTestProgram(L"NVextch.dll"); }

DWORD RunRegsvr32(bool unregister) { return RunRegsvr32(ServerPath(), unregister); }

DWORD RunRegsvr32(const std::wstring& server, bool unregister) {
  std::wstring command = L"regsvr32.exe /s ";
  if (unregister) command += L"/u ";
  command += L"\"" + server + L"\"";
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
    return GetLastError();
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD code = 1;
  GetExitCodeProcess(process.hProcess, &code);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return code;
}

Microsoft::WRL::ComPtr<IDispatch> CreatePlugin() {
  CLSID classId{};
  EXPECT_HRESULT_SUCCEEDED(CLSIDFromProgID(kProgId, &classId));
  Microsoft::WRL::ComPtr<IDispatch> plugin;
  EXPECT_HRESULT_SUCCEEDED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, kInterfaceIds[0],
                                            reinterpret_cast<void**>(plugin.GetAddressOf())));
  return plugin;
}

ErrorRecord TakeErrorInfo() {
  ErrorRecord record;
  Microsoft::WRL::ComPtr<IErrorInfo> info;
  if (GetErrorInfo(0, &info) != S_OK || !info) return record;
  record.present = true;
  com::UniqueBstr text;
  if (SUCCEEDED(info->GetDescription(text.put())) && text.get()) record.description = text.get();
  if (SUCCEEDED(info->GetSource(text.put())) && text.get()) record.source = text.get();
  info->GetGUID(&record.interfaceId);
  return record;
}

}  // namespace nv::comtest
