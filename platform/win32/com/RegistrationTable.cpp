#include "platform/win32/com/RegistrationTable.h"

namespace nv::com {
namespace {

// The automation marshalers: the type library's for the dual interface, IDispatch's for
// the event interface.
constexpr char kTypeLibMarshaler[] = "{00020424-0000-0000-C000-000000000046}";
constexpr char kDispatchMarshaler[] = "{00020420-0000-0000-C000-000000000046}";

std::string LibraryVersion() { return std::to_string(ids::kLibraryMajor) + "." + std::to_string(ids::kLibraryMinor); }

class TableBuilder {
 public:
  void Root(std::string key) { table_.roots.push_back(std::move(key)); }
  void Text(std::string key, std::string name, std::string text) {
    table_.entries.push_back({std::move(key), std::move(name), ValueSource::Text, std::move(text)});
  }
  void Located(std::string key, ValueSource source) {
    table_.entries.push_back({std::move(key), std::string(), source, {}});
  }
  void KeyAlone(std::string key) { table_.entries.push_back({std::move(key), std::nullopt, ValueSource::Text, {}}); }
  RegistrationTable Take() { return std::move(table_); }

 private:
  RegistrationTable table_;
};

// An interface the library describes, or an earlier identifier registered as the interface
// it became.
void AddInterface(TableBuilder& table, const std::string& iid, const char* name, const char* marshaler,
                  const char* forwardTo) {
  const std::string key = std::string("Interface\\") + iid;
  table.Root(key);
  table.Text(key, "", name);
  table.Text(key + "\\ProxyStubClsid", "", marshaler);
  table.Text(key + "\\ProxyStubClsid32", "", marshaler);
  table.Text(key + "\\TypeLib", "", ids::kLibrary);
  table.Text(key + "\\TypeLib", "Version", LibraryVersion());
  if (forwardTo != nullptr) table.Text(key + "\\Forward", "", forwardTo);
}

}  // namespace

RegistrationTable PluginRegistration(ServerArchitecture architecture) {
  TableBuilder table;
  const std::string classKey = std::string("CLSID\\") + ids::kClass;
  table.Root(classKey);
  table.Text(classKey, "", ids::kClassName);
  table.Located(classKey + "\\InprocServer32", ValueSource::ServerPath);
  table.Text(classKey + "\\InprocServer32", "ThreadingModel", "Apartment");
  table.Text(classKey + "\\ProgID", "", ids::kProgId);
  table.Text(classKey + "\\VERSION", "", LibraryVersion());
  table.Text(classKey + "\\TypeLib", "", ids::kLibrary);
  table.KeyAlone(classKey + "\\Programmable");

  const std::string progId = ids::kProgId;
  table.Root(progId);
  table.Text(progId, "", ids::kClassName);
  table.Text(progId + "\\Clsid", "", ids::kClass);

  // The library's own version key is the root: other versions of it are not ours to remove.
  const std::string libraryKey = std::string("TypeLib\\") + ids::kLibrary + "\\" + LibraryVersion();
  table.Root(libraryKey);
  table.Text(libraryKey, "", ids::kLibraryTitle);
  table.Text(libraryKey + "\\FLAGS", "", "0");
  table.Located(libraryKey + "\\HELPDIR", ValueSource::ServerFolder);
  table.Located(libraryKey + (architecture == ServerArchitecture::X64 ? "\\0\\win64" : "\\0\\win32"),
                ValueSource::ServerPath);

  AddInterface(table, ids::kInterface, "_ExtractionChaine", kTypeLibMarshaler, nullptr);
  AddInterface(table, ids::kEvents, "__ExtractionChaine", kDispatchMarshaler, nullptr);
  for (const char* earlier : ids::kEarlierInterfaces) {
    AddInterface(table, earlier, "_ExtractionChaine", kTypeLibMarshaler, ids::kInterface);
  }
  for (const char* earlier : ids::kEarlierEvents) {
    AddInterface(table, earlier, "__ExtractionChaine", kDispatchMarshaler, ids::kEvents);
  }
  return table.Take();
}

}  // namespace nv::com
