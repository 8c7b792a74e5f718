#pragma once
// The names by which COM knows the plug-in. The current identifiers come from the IDL
// (through widl's header); the earlier ones from the registration table, because the
// library no longer describes them, yet hosts built against them still ask for them.
#include <windows.h>

#include "NVExtractionChaine.h"
#include "platform/win32/com/RegistrationTable.h"

namespace nv::com {

inline constexpr wchar_t kProgId[] = L"NVExtractionChaine.ExtractionChaine";
inline constexpr wchar_t kErrorSource[] = L"NVExtractionChaine.ExtractionChaine";

// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}" read at compile time, so that an identifier the
// registration table spells is the same one QueryInterface answers to.
consteval GUID GuidFromText(const char* text) {
  const auto hex = [&](int from, int digits) {
    unsigned long value = 0;
    for (int i = from; i < from + digits; ++i) {
      const char c = text[i];
      const int digit = c >= '0' && c <= '9' ? c - '0' : c >= 'A' && c <= 'F' ? c - 'A' + 10 : c - 'a' + 10;
      value = value * 16 + static_cast<unsigned long>(digit);
    }
    return value;
  };
  GUID guid{};
  guid.Data1 = hex(1, 8);
  guid.Data2 = static_cast<unsigned short>(hex(10, 4));
  guid.Data3 = static_cast<unsigned short>(hex(15, 4));
  constexpr int kTail[] = {20, 22, 25, 27, 29, 31, 33, 35};
  for (int i = 0; i < 8; ++i) guid.Data4[i] = static_cast<unsigned char>(hex(kTail[i], 2));
  return guid;
}

inline constexpr GUID kEarlierInterfaceIds[] = {GuidFromText(ids::kEarlierInterfaces[0]),
                                                GuidFromText(ids::kEarlierInterfaces[1])};
inline constexpr GUID kEarlierEventIds[] = {GuidFromText(ids::kEarlierEvents[0]), GuidFromText(ids::kEarlierEvents[1])};

// The plug-in's interface, under its current identifier or an earlier one.
bool IsPluginInterfaceId(REFIID iid) noexcept;
// The event interface, likewise.
bool IsEventInterfaceId(REFIID iid) noexcept;

}  // namespace nv::com
