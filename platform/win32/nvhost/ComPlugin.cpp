#include "platform/win32/nvhost/ComPlugin.h"

#include <windows.h>
#include <ocidl.h>
#include <wrl/client.h>

#include <iostream>

#include "NVExtractionChaine.h"
#include "platform/win32/com/Bstr.h"
#include "platform/win32/com/CallFailure.h"
#include "platform/win32/com/ComObject.h"
#include "platform/win32/nvhost/CompleteSink.h"
#include "platform/win32/com/MessagePump.h"
#include "platform/win32/nvhost/NvhostCommands.h"

namespace nv::nvhost {
namespace {

using com::CheckCall;
using com::MakeBstr;
using com::UniqueBstr;
using Microsoft::WRL::ComPtr;

constexpr wchar_t kProgId[] = L"NVExtractionChaine.ExtractionChaine";

class ComPlugin final : public PluginClient {
 public:
  ComPlugin() {
    CLSID classId{};
    CheckCall(CLSIDFromProgID(kProgId, &classId), u"Looking up NVExtractionChaine.ExtractionChaine");
    CheckCall(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID__ExtractionChaine,
                               reinterpret_cast<void**>(plugin_.GetAddressOf())),
              u"Creating NVExtractionChaine.ExtractionChaine");
    ComPtr<IConnectionPointContainer> container;
    CheckCall(plugin_.As(&container), u"The plug-in's connection points");
    CheckCall(container->FindConnectionPoint(DIID___ExtractionChaine, &point_), u"The plug-in's event interface");
    sink_ = com::MakeComObject<CompleteSink>();
    CheckCall(point_->Advise(sink_.Get(), &cookie_), u"Advising the plug-in's events");
  }
  ~ComPlugin() override {
    if (point_ && cookie_ != 0) point_->Unadvise(cookie_);
  }
  ComPlugin(const ComPlugin&) = delete;
  ComPlugin& operator=(const ComPlugin&) = delete;

  void InitializeProperties(const Text& name, const Text& scenario, std::int32_t language) override {
    UniqueBstr nameArgument = MakeBstr(name);
    UniqueBstr scenarioArgument = MakeBstr(scenario);
    BSTR namePointer = nameArgument.get();
    BSTR scenarioPointer = scenarioArgument.get();
    LONG languageArgument = language;
    CheckCall(plugin_->InitializeProperties(&namePointer, &scenarioPointer, &languageArgument),
              u"_ExtractionChaine.InitializeProperties");
  }
  void SetReportFilePath(const Text& path) override {
    UniqueBstr argument = MakeBstr(path);
    BSTR pointer = argument.get();
    CheckCall(plugin_->SetReportFilePath(&pointer), u"_ExtractionChaine.SetReportFilePath");
  }
  void SetWorkingMode(std::int32_t mode) override {
    LONG argument = mode;
    CheckCall(plugin_->SetWorkingMode(&argument), u"_ExtractionChaine.SetWorkingMode");
  }
  // As a host's UI thread: the call runs, then the messages it left are dispatched. Every
  // execution raises Complete exactly once; anything else is reported.
  void ExecuteTache() override {
    sink_->ResetCount();
    CheckCall(plugin_->ExecuteTache(), u"_ExtractionChaine.ExecuteTache");
    com::PumpWaitingMessages();
    if (sink_->CompleteCount() != 1) {
      std::cerr << "nvhost: the plug-in raised Complete " << sink_->CompleteCount() << " times\n";
    }
  }
  std::int32_t GetStatus() override {
    LONG status = 0;
    CheckCall(plugin_->GetStatus(&status), u"_ExtractionChaine.GetStatus");
    return status;
  }
  Text GetTaskDescription() override {
    UniqueBstr text;
    CheckCall(plugin_->GetTaskDescription(text.put()), u"_ExtractionChaine.GetTaskDescription");
    return com::TextOf(text.get());
  }
  Text GetActions() override {
    UniqueBstr text;
    CheckCall(plugin_->GetActions(text.put()), u"_ExtractionChaine.GetActions");
    return com::TextOf(text.get());
  }
  IDispatch& Dispatch() noexcept { return *plugin_.Get(); }

  std::int32_t ShowWrapper() override {
    LONG mode = 0;
    CheckCall(plugin_->ShowWrapper(&mode), u"_ExtractionChaine.ShowWrapper");
    com::PumpWaitingMessages();
    return mode;
  }

 private:
  ComPtr<_ExtractionChaine> plugin_;
  ComPtr<IConnectionPoint> point_;
  ComPtr<com::ComObject<CompleteSink>> sink_;
  DWORD cookie_ = 0;
};

}  // namespace

std::unique_ptr<PluginClient> CreateComPlugin() { return std::make_unique<ComPlugin>(); }

IDispatch& DispatchOf(PluginClient& plugin) { return dynamic_cast<ComPlugin&>(plugin).Dispatch(); }

}  // namespace nv::nvhost
