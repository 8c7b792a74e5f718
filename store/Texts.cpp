#include "store/Texts.h"

#include <string_view>
#include <unordered_map>

#include "common/Conversions.h"
#include "common/Error.h"
#include "common/Utf.h"
#include "store/ModuleState.h"
#include "store/RegistryOperations.h"

namespace nv {
namespace {

struct TableRow {
  std::int32_t id;
  std::string_view french;
  std::string_view english;
};

#define NV_TEXT(id, french, english) {id, french, english},
constexpr TableRow kRows[] = {
#include "resources/StringTable.inc"
};
#undef NV_TEXT

const std::unordered_map<std::int32_t, Text>& Table() {
  static const auto table = [] {
    std::unordered_map<std::int32_t, Text> t;
    for (const TableRow& row : kRows) {
      t.emplace(row.id, FromUtf8(row.french));
      t.emplace(row.id + Language::English, FromUtf8(row.english));
    }
    return t;
  }();
  return table;
}

}  // namespace

const Text* FindTableText(std::int32_t identifier) {
  const auto& table = Table();
  const auto found = table.find(identifier);
  return found == table.end() ? nullptr : &found->second;
}

Text LoadText(std::int32_t identifier) {
  const std::int64_t sum = static_cast<std::int64_t>(identifier) + Module().LanguageOffset;
  if (sum < INT32_MIN || sum > INT32_MAX) RaiseError(ErrorNumber::Overflow);
  const Text* text = FindTableText(static_cast<std::int32_t>(sum));
  if (text == nullptr) {
    RaiseError(ErrorNumber::ResourceNotFound, u"Resource with identifier '" + DecimalText(sum) + u"' not found");
  }
  return *text;
}

void ReadLanguageSetting() {
  ModuleState& module = Module();
  const RegKey savedRoot = module.CurrentRoot;
  const Text savedSubKey = module.CurrentSubKey;
  module.CurrentRoot = RegRoot::LocalMachine;
  module.CurrentSubKey = u"SOFTWARE\\NOVRA";
  Variant setting;
  try {
    setting = ReadRegistryValue(u"Configuration", u"Lang");
  } catch (...) {
    module.CurrentRoot = savedRoot;
    module.CurrentSubKey = savedSubKey;
    throw;
  }
  module.CurrentRoot = savedRoot;
  module.CurrentSubKey = savedSubKey;
  module.LanguageOffset = setting.IsEmptyText() ? 0 : ToLong(setting);
}

}  // namespace nv
