// The plug-in and the host's classes meeting through COM: execution stores through the
// variables service and reports through the report writer, a sink hears Complete once per
// run, and a failing host class ends the run as a failed run, not as a failed call.
#include <gtest/gtest.h>
#include <wrl/client.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <utility>

#include "tests/com/PluginFixture.h"
#include "tests/com/TestDispatch.h"
#include "tests/hostcom/StandInServer.h"

namespace nv::hostcomtest {
namespace {

using comtest::Bstr;
using comtest::kTaskKey;
using Microsoft::WRL::ComPtr;

constexpr wchar_t kVariablesKey[] = L"SOFTWARE\\NOVRA\\Scenarios\\S\\Variables";
constexpr int kSetReportFilePath = 35;
constexpr int kExecuteTache = 38;
constexpr int kGetStatus = 24;

void PutText(const wchar_t* key, const wchar_t* name, const std::wstring& value) {
  const auto size = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
  ASSERT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, key, name, REG_SZ, value.c_str(), size), ERROR_SUCCESS);
}

void PutNumber(const wchar_t* key, const wchar_t* name, DWORD value) {
  ASSERT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, key, name, REG_DWORD, &value, sizeof value), ERROR_SUCCESS);
}

std::optional<std::wstring> Variable(const wchar_t* name) {
  wchar_t value[256] = {};
  DWORD size = sizeof value;
  if (RegGetValueW(HKEY_LOCAL_MACHINE, kVariablesKey, name, RRF_RT_REG_SZ, nullptr, value, &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  return std::wstring(value);
}

// A split task over `chaine` by ";" into the given field references.
void WriteSplitTask(const std::wstring& chaine, std::initializer_list<const wchar_t*> fields) {
  PutNumber(kTaskKey, L"Fonction", 0);
  PutText(kTaskKey, L"Chaine", chaine);
  PutText(kTaskKey, L"Separateur", L";");
  PutNumber(kTaskKey, L"Fields.Count", static_cast<DWORD>(fields.size()));
  int position = 1;
  for (const wchar_t* field : fields) {
    PutText(kTaskKey, (L"Fields(" + std::to_wstring(position++) + L").Var").c_str(), field);
  }
}

class HostRun : public comtest::PluginTest {
 protected:
  void SetUp() override {
    PluginTest::SetUp();
    wchar_t folder[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    reportPath_ = std::wstring(folder) + L"nvextch-hostcom.log";
    DeleteFileW(reportPath_.c_str());
    ComPtr<IConnectionPointContainer> container;
    ASSERT_HRESULT_SUCCEEDED(plugin_.As(&container));
    ASSERT_HRESULT_SUCCEEDED(container->FindConnectionPoint(comtest::kEventIds[0], &point_));
    ASSERT_HRESULT_SUCCEEDED(point_->Advise(&sink_, &cookie_));
    Initialize(10000);
    const com::UniqueBstr path = Bstr(reportPath_);
    BSTR pathArgument = path.get();
    ASSERT_HRESULT_SUCCEEDED(CallAt(kSetReportFilePath, &pathArgument));
  }
  void TearDown() override {
    if (point_) point_->Unadvise(cookie_);
    point_.Reset();
    DeleteFileW(reportPath_.c_str());
    PluginTest::TearDown();
  }

  // ExecuteTache as a host calls it; it never fails, whatever the run did.
  void Execute() {
    EXPECT_EQ(CallAt(kExecuteTache), S_OK);
    EXPECT_EQ(sink_.Calls(2), ++runs_) << "one Complete per execution";
  }
  LONG Status() { return GetAt<LONG>(kGetStatus); }
  std::string Report() const {
    std::ifstream file(std::filesystem::path(reportPath_), std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
  }

  comtest::TestDispatch sink_{comtest::kEventIds[0]};
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
  int runs_ = 0;
  std::wstring reportPath_;
};

TEST_F(HostRun, SplitStoresEachPieceThroughTheVariablesService) {
  WriteSplitTask(L"a;b;c", {L"@X", L"", L"@Z"});
  Execute();
  EXPECT_EQ(Status(), 2);
  EXPECT_EQ(Variable(L"X"), L"a");
  EXPECT_EQ(Variable(L"Z"), L"c");
  EXPECT_NE(Report().find("--> Run processT1\n"), std::string::npos) << Report();
}

// Each failure ends the run with status 3 and its line; the call itself succeeds, and the
// pieces stored before the failure stay.
TEST_F(HostRun, FailuresEndTheRunWithStatusThreeAndTheirLine) {
  struct Failure {
    const wchar_t* chaine;
    const char* line;
  };
  const Failure failures[] = {
      {L"a;b;c;d", "Execution error #9 ,Subscript out of range\n"},
      // The host's own error: its message alone, in the host's language (French here).
      {L"@Missing", "La variable Missing n'existe pas dans le sc\xc3\xa9nario S\n"},
  };
  for (const Failure& failure : failures) {
    SCOPED_TRACE(failure.line);
    WriteSplitTask(failure.chaine, {L"@P1", L"@P2", L"@P3"});
    Execute();
    EXPECT_EQ(Status(), 3);
    const std::string report = Report();
    EXPECT_NE(report.find(failure.line), std::string::npos) << report;
  }
  EXPECT_EQ(Variable(L"P3"), L"c");
}

// Without its variables service the host cannot store: the run fails with the HRESULT of
// the creation, and the call still returns S_OK.
TEST_F(HostRun, AnUnregisteredVariablesServiceFailsTheRunNotTheCall) {
  WriteSplitTask(L"a;b", {L"@X", L"@Y"});
  {
    const MissingHostClass missing(kVariablesServiceClass);
    Execute();
  }
  EXPECT_EQ(Status(), 3);
  const std::string report = Report();
  EXPECT_NE(report.find("Execution error #-2147221164 ,The host class VariablesService cannot be created"),
            std::string::npos)
      << report;
  EXPECT_EQ(Variable(L"X"), std::nullopt);
}

// Without its report writer the host cannot take a new object: creating it fails with the
// class's error, and the writer that the objects already made report through stays theirs.
TEST_F(HostRun, AnUnregisteredReportWriterFailsTheCreationAndKeepsTheEarlierWriter) {
  WriteSplitTask(L"a;b", {L"@X", L"@Y"});
  {
    const MissingHostClass missing(kReportWriterClass);
    CLSID classId{};
    ASSERT_HRESULT_SUCCEEDED(CLSIDFromProgID(comtest::kProgId, &classId));
    ComPtr<IDispatch> refused;
    EXPECT_EQ(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, comtest::kInterfaceIds[0],
                               reinterpret_cast<void**>(refused.GetAddressOf())),
              REGDB_E_CLASSNOTREG);
    EXPECT_EQ(refused, nullptr);
    EXPECT_NE(comtest::TakeErrorInfo().description.find(L"ReportWriter"), std::wstring::npos);
    Execute();
  }
  EXPECT_EQ(Status(), 2);
  EXPECT_EQ(Variable(L"Y"), L"b");
  // The refused creation had read the language setting (none here: French) before failing.
  EXPECT_NE(Report().find("--> Ex\xc3\xa9" "cution du traitementT1\n"), std::string::npos) << Report();
}

// What the test window saw: how many Completes the sink had when its message ran.
struct SeenMessage {
  const comtest::TestDispatch* sink = nullptr;
  int completesWhenHandled = -1;
};
SeenMessage seen;
constexpr UINT kWaitingMessage = WM_APP + 7;

LRESULT CALLBACK RecordingWindowProc(HWND window, UINT message, WPARAM w, LPARAM l) {
  if (message == kWaitingMessage) seen.completesWhenHandled = seen.sink->Calls(2);
  return DefWindowProcW(window, message, w, l);
}

// Messages already waiting for the host's thread run when an execution begins, before it
// completes.
TEST_F(HostRun, ExecutionFirstProcessesTheWaitingMessages) {
  seen = SeenMessage{&sink_};
  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = RecordingWindowProc;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.lpszClassName = L"NvHostComYield";
  RegisterClassW(&windowClass);
  const HWND window = CreateWindowW(L"NvHostComYield", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                    GetModuleHandleW(nullptr), nullptr);
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(PostMessageW(window, kWaitingMessage, 0, 0));
  WriteSplitTask(L"a", {L"@X"});
  Execute();
  EXPECT_EQ(seen.completesWhenHandled, 0);
  DestroyWindow(window);
}

// Title and summary come from the host's catalogue, the actions text from its editor.
TEST_F(HostRun, DescriptionsComeFromTheHostClasses) {
  EXPECT_EQ(GetTextAt(26), L"Extraction Chaine");
  EXPECT_NE(GetTextAt(25), L"");
  const std::wstring onErr = std::wstring(kTaskKey) + L"\\Action\\OnErr";
  PutNumber(onErr.c_str(), L"Go", 1);
  EXPECT_EQ(GetTextAt(28), L"[OnErr]#Run scenario : True\r\n    Auto-Run : False#");
}

}  // namespace
}  // namespace nv::hostcomtest
