#pragma once
// What the suite knows of the server from outside: its identity (written here again, not
// taken from the build, so that a wrong identifier in the IDL is caught), its file, its
// registration through regsvr32, and a plug-in object created by ProgID.
#include "platform/win32/com/WindowsSdk.h"
#include <wrl/client.h>

#include <string>

namespace nv::comtest {

inline constexpr wchar_t kProgId[] = L"NVExtractionChaine.ExtractionChaine";
inline constexpr wchar_t kErrorSource[] = L"NVExtractionChaine.ExtractionChaine";
inline constexpr CLSID kClassId = {0x204253AE, 0xE285, 0x4057, {0x96, 0x5A, 0xCA, 0xB0, 0xBF, 0x58, 0xE2, 0x7D}};
inline constexpr GUID kLibraryId = {0x9ABD353C, 0x1B86, 0x42EC, {0xA9, 0x00, 0xFF, 0xDE, 0x24, 0xA7, 0x9C, 0x6C}};
// The current identifier first, then the earlier ones.
inline constexpr IID kInterfaceIds[] = {
    {0xCF97FC32, 0xF9B2, 0x4BAD, {0xB8, 0xFA, 0xA2, 0xD1, 0xDE, 0x42, 0x67, 0x79}},
    {0x1CC95687, 0xAFB5, 0x4A20, {0x84, 0x39, 0x7C, 0x8E, 0x9F, 0xFE, 0xC3, 0x3E}},
    {0x4CD01546, 0xA7AB, 0x40EC, {0x9E, 0xD9, 0x6A, 0x6C, 0xD8, 0xF9, 0x65, 0x1A}},
};
inline constexpr IID kEventIds[] = {
    {0x6F05D2F0, 0x20C8, 0x4B2F, {0xA4, 0x57, 0x71, 0x1D, 0xB3, 0xCE, 0xD3, 0xE8}},
    {0x2179520B, 0x9C43, 0x4AF3, {0x9A, 0xDA, 0xFA, 0xED, 0x44, 0x26, 0x8A, 0x85}},
    {0x8272EA43, 0x47B6, 0x4E3F, {0xA3, 0xC9, 0x24, 0x7B, 0x88, 0xA5, 0x65, 0x46}},
};

std::wstring GuidText(REFGUID guid);

// A file beside the test program.
std::wstring BesideTestProgram(const wchar_t* fileName);
// NVextch.dll beside the test program.
std::wstring ServerPath();

// regsvr32 /s [/u] on a server; its exit code. Without a path: NVextch.dll.
DWORD RunRegsvr32(const std::wstring& server, bool unregister);
DWORD RunRegsvr32(bool unregister);

// A new plug-in object, created by ProgID, as its _ExtractionChaine interface.
Microsoft::WRL::ComPtr<IDispatch> CreatePlugin();

// The thread's error information, taken (and so cleared).
struct ErrorRecord {
  bool present = false;
  std::wstring description;
  std::wstring source;
  GUID interfaceId{};
};
ErrorRecord TakeErrorInfo();

}  // namespace nv::comtest
