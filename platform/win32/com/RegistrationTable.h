#pragma once
// Every registry entry that makes NVextch.dll a COM server: the class, its ProgID, the type
// library and the interfaces, earlier identifiers included. One table for DllRegisterServer
// and for the installer's generated registry entries, so that the two cannot drift. Plain
// C++ without <windows.h>: the generator of the installer's entries runs on the build machine.
#include <array>
#include <optional>
#include <string>
#include <vector>

namespace nv::com {

// The identifiers as the registry spells them. The current ones repeat the IDL's (a test
// holds them equal to widl's); the earlier ones exist only here and in hosts built against them.
namespace ids {
inline constexpr char kClass[] = "{204253AE-E285-4057-965A-CAB0BF58E27D}";
inline constexpr char kLibrary[] = "{9ABD353C-1B86-42EC-A900-FFDE24A79C6C}";
inline constexpr char kInterface[] = "{CF97FC32-F9B2-4BAD-B8FA-A2D1DE426779}";
inline constexpr char kEvents[] = "{6F05D2F0-20C8-4B2F-A457-711DB3CED3E8}";
inline constexpr std::array<const char*, 2> kEarlierInterfaces = {"{1CC95687-AFB5-4A20-8439-7C8E9FFEC33E}",
                                                                  "{4CD01546-A7AB-40EC-9ED9-6A6CD8F9651A}"};
inline constexpr std::array<const char*, 2> kEarlierEvents = {"{2179520B-9C43-4AF3-9ADA-FAED44268A85}",
                                                              "{8272EA43-47B6-4E3F-A3C9-247B88A56546}"};
inline constexpr char kProgId[] = "NVExtractionChaine.ExtractionChaine";
inline constexpr char kClassName[] = "ExtractionChaine";
// The library's help string, UTF-8: what the registry shows as the library's name.
inline constexpr char kLibraryTitle[] = "NOVRA 6.0 ( Extraction Chaîne )";
inline constexpr int kLibraryMajor = 1;
inline constexpr int kLibraryMinor = 2;
}  // namespace ids

enum class ServerArchitecture { X86, X64 };

// Where a value's text comes from: fixed, or the place the server is installed at.
enum class ValueSource {
  Text,
  ServerPath,    // the DLL's full path
  ServerFolder,  // its folder, with a trailing backslash
};

struct RegistryEntry {
  std::string key;                  // under HKEY_CLASSES_ROOT
  std::optional<std::string> name;  // "" the default value; none: the key alone
  ValueSource source = ValueSource::Text;
  std::string text;                 // UTF-8, for ValueSource::Text
};

struct RegistrationTable {
  // The keys the registration owns whole: removing these removes every entry below.
  std::vector<std::string> roots;
  std::vector<RegistryEntry> entries;
};

RegistrationTable PluginRegistration(ServerArchitecture architecture);

}  // namespace nv::com
