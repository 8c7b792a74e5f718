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

#define NV_TEXT(name, id, french, english) {id, french, english},
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

const Text* FindTableText(std::int32_t identifier) {
  const auto& table = Table();
  const auto found = table.find(identifier);
  return found == table.end() ? nullptr : &found->second;
}

}  // namespace

Text LoadText(TextId identifier) {
  const std::int64_t sum = static_cast<std::int64_t>(identifier) + Module().LanguageOffset;
  if (sum < INT32_MIN || sum > INT32_MAX) RaiseError(ErrorNumber::Overflow);
  const Text* text = FindTableText(static_cast<std::int32_t>(sum));
  if (text == nullptr) {
    RaiseError(ErrorNumber::ResourceNotFound, u"Resource with identifier '" + DecimalText(sum) + u"' not found");
  }
  return *text;
}

void ReadLanguageSetting() {
  const SavedRegistryContext saved;
  ModuleState& module = Module();
  module.CurrentRoot = RegRoot::LocalMachine;
  module.CurrentSubKey = u"SOFTWARE\\NOVRA";
  const Variant setting = ReadRegistryValue(u"Configuration", u"Lang");
  module.LanguageOffset = setting.IsEmptyText() ? Language::French : ToLong(setting);
}

}  // namespace nv
