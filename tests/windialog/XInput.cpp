#include "tests/windialog/XInput.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace nv::uitest {
namespace {

constexpr DWORD kToolLimitMs = 15000;

bool UnderWine() { return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr; }

std::string At(POINT point) { return std::to_string(point.x) + " " + std::to_string(point.y); }

// A name of this process's own for each run's files, on the display's side (Wine's Z: is /).
std::string RunFile(const char* kind) {
  static int run = 0;
  return "/tmp/nv-xinput-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++run) + "-" + kind;
}

std::wstring WindowsPath(const std::string& unixPath) {
  std::wstring path = L"Z:";
  for (const char c : unixPath) path += c == '/' ? L'\\' : static_cast<wchar_t>(c);
  return path;
}

}  // namespace

std::string XInput::Missing() {
  if (!UnderWine()) return "real input goes through the X server: only under Wine";
  if (GetFileAttributesW(L"Z:\\usr\\bin\\xdotool") == INVALID_FILE_ATTRIBUTES) return "xdotool is not installed";
  return {};
}

void XInput::Run(const std::string& arguments) const {
  const std::string done = RunFile("done");
  const std::string log = RunFile("log");
  // Wine starts a Unix program like any other; its end shows as the file it leaves.
  std::wstring command = L"Z:\\bin\\sh -c \"xdotool ";
  for (const char c : arguments) command += static_cast<wchar_t>(c);
  command += L" >" + std::wstring(log.begin(), log.end()) + L" 2>&1; echo $? >" + std::wstring(done.begin(), done.end()) +
             L".part; mv " + std::wstring(done.begin(), done.end()) + L".part " + std::wstring(done.begin(), done.end()) + L"\"";
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
      << "xdotool cannot be started";
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  const std::wstring donePath = WindowsPath(done);
  DWORD waited = 0;
  for (; waited < kToolLimitMs && GetFileAttributesW(donePath.c_str()) == INVALID_FILE_ATTRIBUTES; waited += 10) Sleep(10);
  ASSERT_LT(waited, kToolLimitMs) << "xdotool " << arguments << " did not end";
  std::ifstream status(donePath.c_str());
  int code = -1;
  status >> code;
  std::ifstream output(WindowsPath(log).c_str());
  std::ostringstream said;
  said << output.rdbuf();
  EXPECT_EQ(code, 0) << "xdotool " << arguments << ": " << said.str();
  status.close();
  output.close();
  DeleteFileW(donePath.c_str());
  DeleteFileW(WindowsPath(log).c_str());
}

void XInput::MoveTo(POINT screen) const { Run("mousemove " + At(screen)); }
void XInput::Click(POINT screen) const { Run("mousemove " + At(screen) + " click 1"); }
void XInput::DoubleClick(POINT screen) const { Run("mousemove " + At(screen) + " click --repeat 2 --delay 80 1"); }

void XInput::Drag(POINT from, POINT to) const {
  // In steps, as a hand moves, so that the window follows the drag as it goes.
  std::string steps = "mousemove " + At(from) + " mousedown 1";
  for (int i = 1; i <= 4; ++i) {
    steps += " sleep 0.05 mousemove " + At({from.x + (to.x - from.x) * i / 4, from.y + (to.y - from.y) * i / 4});
  }
  Run(steps + " sleep 0.05 mouseup 1");
}

void XInput::Keys(const std::string& keys) const { Run("key --delay 60 " + keys); }
void XInput::Type(const std::string& text) const { Run("type --delay 40 '" + text + "'"); }

}  // namespace nv::uitest
