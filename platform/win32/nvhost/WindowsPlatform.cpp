// nvhost.exe: a real COM client of the registered NVextch.dll on a single-threaded
// apartment, over the Windows registry.
#include <windows.h>
#include <fcntl.h>
#include <io.h>
#include <objbase.h>
#include <shellapi.h>

#include <cstdio>
#include <memory>
#include <string_view>

#include "common/Error.h"
#include "common/Utf.h"
#include "host/nvhost/HostPlatform.h"
#include "platform/win32/Win32Registry.h"
#include "platform/win32/com/ErrorInfo.h"
#include "platform/win32/nvhost/ComPlugin.h"
#include "platform/win32/nvhost/NvhostCommands.h"

namespace nv::com {

const wchar_t* ModuleErrorSource() noexcept { return L"nvhost"; }

}  // namespace nv::com

namespace nv {
namespace {

class WindowsPlatform final : public HostPlatform {
 public:
  WindowsPlatform() {
    // Values are read and printed byte for byte: no "\r" slipped in before each "\n".
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    const HRESULT hr = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (FAILED(hr)) throw RuntimeError(static_cast<std::int32_t>(hr), u"COM cannot be initialized");
  }
  ~WindowsPlatform() override { CoUninitialize(); }
  WindowsPlatform(const WindowsPlatform&) = delete;
  WindowsPlatform& operator=(const WindowsPlatform&) = delete;

  std::unique_ptr<Registry> OpenRegistry(const std::string&) override { return std::make_unique<Win32Registry>(); }
  std::unique_ptr<PluginClient> CreatePlugin() override { return nvhost::CreateComPlugin(); }
  bool ShowsWindows() const override { return true; }
  bool UsesHiveFile() const override { return false; }
  const std::vector<Command>& OwnCommands() const override {
    static const std::vector<Command> commands = {
        {"call", "call [--task SCENARIO TASK] [--lang fr|en] MEMBER [ARGS...]",
         "call any member of the plug-in by name through IDispatch and print its result",
         "Calls MEMBER of a new plug-in object by name through IDispatch and prints its result.\n"
         "ARGS are texts; a member that takes a number converts them as the plug-in does.\n"
         "\n"
         "  --task SCENARIO TASK   InitializeProperties for that task first\n"
         "  --lang fr|en           the language handed to InitializeProperties\n"
         "\n"
         "example:\n"
         "  nvhost call --task Demo LogLines GetStatus\n",
         nvhost::RunCallCommand},
    };
    return commands;
  }
};

// The command line as Windows keeps it, in UTF-16: argv would have gone through the
// ANSI code page and lost what it cannot hold.
std::vector<std::string> WideWords() {
  struct LocalDeleter {
    void operator()(LPWSTR* memory) const noexcept { LocalFree(memory); }
  };
  int count = 0;
  const std::unique_ptr<LPWSTR, LocalDeleter> arguments(CommandLineToArgvW(GetCommandLineW(), &count));
  if (!arguments) throw RuntimeError(ErrorNumber::InvalidProcedureCall, u"The command line cannot be read");
  std::vector<std::string> words;
  for (int index = 1; index < count; ++index) {
    const std::wstring_view word(arguments.get()[index]);
    words.push_back(ToUtf8(Text(word.begin(), word.end())));
  }
  return words;
}

}  // namespace

std::unique_ptr<HostPlatform> MakeHostPlatform() { return std::make_unique<WindowsPlatform>(); }

std::vector<std::string> CommandLineWords(int, char**) { return WideWords(); }

}  // namespace nv
