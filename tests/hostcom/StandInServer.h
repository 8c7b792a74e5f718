#pragma once
// The host stand-in as the suites meet it: registered beside the plug-in for the whole run,
// its classes creatable by the host's class identifiers.
#include <string>

#include "platform/win32/com/WindowsSdk.h"

namespace nv::hostcomtest {

inline constexpr CLSID kVariablesServiceClass = {
    0xA4C42093, 0x4821, 0x49A8, {0xA5, 0x5C, 0x78, 0xE5, 0x77, 0x73, 0x40, 0xA3}};
inline constexpr CLSID kReportWriterClass = {
    0x7D9C7317, 0x3346, 0x415E, {0x85, 0x3D, 0x4D, 0xD9, 0x9D, 0xB4, 0xEF, 0xD0}};
inline constexpr CLSID kWrapperCatalogClass = {
    0x08C2AB98, 0x61B3, 0x45E8, {0xB6, 0x47, 0x74, 0x6B, 0x4E, 0x90, 0xD4, 0x01}};
inline constexpr CLSID kActionsEditorClass = {
    0xE164D97B, 0xCCCB, 0x4956, {0x93, 0x28, 0x48, 0x83, 0xA0, 0xB7, 0x9A, 0xF0}};

inline constexpr IID kVariablesServiceInterface = {
    0x8CE113E5, 0x7B56, 0x49A7, {0xB4, 0x9D, 0x3F, 0x96, 0x15, 0xF5, 0x5C, 0x14}};
inline constexpr IID kReportWriterInterface = {
    0x6E67BF53, 0xE1E2, 0x44A4, {0xA4, 0x7D, 0x8D, 0xF7, 0x95, 0x20, 0xB7, 0x2A}};
inline constexpr IID kWrapperCatalogInterface = {
    0x94930642, 0xCE04, 0x43EE, {0x80, 0x18, 0x77, 0xFE, 0xDC, 0x73, 0xB5, 0x62}};
inline constexpr IID kActionsEditorInterface = {
    0xC5EE9ACA, 0x8166, 0x4737, {0x8C, 0x17, 0x9A, 0x1B, 0xA0, 0x51, 0x86, 0xCF}};

// nvhoststandin.dll beside the test program.
std::wstring StandInPath();

// regsvr32 /s [/u] on the stand-in; its exit code.
DWORD RegisterStandIn(bool unregister);

// One host class made unknown to COM until the scope ends, when the stand-in is registered
// again, as a host whose installation lacks that class.
class MissingHostClass {
 public:
  explicit MissingHostClass(const CLSID& classId);
  ~MissingHostClass();
  MissingHostClass(const MissingHostClass&) = delete;
  MissingHostClass& operator=(const MissingHostClass&) = delete;
};

}  // namespace nv::hostcomtest
