#pragma once
// The names by which COM knows the plug-in. The current identifiers come from the IDL
// (through widl's header); the earlier ones are kept here because the library no longer
// describes them, yet hosts built against them still ask for them.
#include <windows.h>

#include "NVExtractionChaine.h"

namespace nv::com {

inline constexpr wchar_t kProgId[] = L"NVExtractionChaine.ExtractionChaine";
inline constexpr wchar_t kErrorSource[] = L"NVExtractionChaine.ExtractionChaine";
inline constexpr wchar_t kClassName[] = L"ExtractionChaine";
inline constexpr WORD kLibraryMajor = 1;
inline constexpr WORD kLibraryMinor = 2;

inline constexpr GUID kEarlierInterfaceIds[] = {
    {0x1CC95687, 0xAFB5, 0x4A20, {0x84, 0x39, 0x7C, 0x8E, 0x9F, 0xFE, 0xC3, 0x3E}},
    {0x4CD01546, 0xA7AB, 0x40EC, {0x9E, 0xD9, 0x6A, 0x6C, 0xD8, 0xF9, 0x65, 0x1A}},
};
inline constexpr GUID kEarlierEventIds[] = {
    {0x2179520B, 0x9C43, 0x4AF3, {0x9A, 0xDA, 0xFA, 0xED, 0x44, 0x26, 0x8A, 0x85}},
    {0x8272EA43, 0x47B6, 0x4E3F, {0xA3, 0xC9, 0x24, 0x7B, 0x88, 0xA5, 0x65, 0x46}},
};

// The plug-in's interface, under its current identifier or an earlier one.
bool IsPluginInterfaceId(REFIID iid) noexcept;
// The event interface, likewise.
bool IsEventInterfaceId(REFIID iid) noexcept;

}  // namespace nv::com
