#include "store/TaskStore.h"

#include "common/Conversions.h"
#include "store/KeyValueSnapshot.h"
#include "store/ModuleState.h"
#include "store/RegistryKey.h"
#include "store/RegistryOperations.h"
#include "store/Timestamp.h"

namespace nv {
namespace {

constexpr const char16_t* kFieldSuffixes[] = {u").Var", u").Start", u").End", u").ShowSep"};

std::int16_t IntegerOrZero(const Variant& value) { return value.IsEmptyText() ? 0 : ToInteger(value); }

void WriteText(TextView task, TextView name, TextView value) { WriteRegistryValue(task, name, ValueKind::Text, value); }

void WriteNumber(TextView task, TextView name, std::int64_t value) {
  WriteRegistryValue(task, name, ValueKind::Number, DecimalText(value));
}

}  // namespace

Text FieldValueName(std::int32_t index, TextView suffix) {
  Text name;
  FieldValueNameInto(index, suffix, name);
  return name;
}

void FieldValueNameInto(std::int32_t index, TextView suffix, Text& name) {
  name.assign(u"Fields(");
  AppendDecimal(name, index);
  name += suffix;
}

void LoadTaskDefinition(TextView taskName, TaskDefinition& definition) {
  // One enumeration of the task key serves every read of the load; each read keeps the
  // reader's rules, and the values are converted in the reader's order, so the first
  // conversion to fail is the same.
  Registry& registry = ModuleRegistry();
  const ReadingScope reading(registry);  // one consistent state of the task, one lock
  UniqueRegKey key;
  OpenUniqueKey(registry, Module().CurrentRoot, SectionPath(taskName), RegAccess::QueryValue, key);
  KeyValueSnapshot values(registry, key.Get());
  const auto read = [&](TextView name) { return values.Read(name); };
  Text fieldName;  // one buffer for the thousands of names a large task has
  const auto readField = [&](std::int32_t i, TextView suffix) {
    FieldValueNameInto(i, suffix, fieldName);
    return values.Read(fieldName);
  };

  definition.Comment = ToText(read(u"Comment"));
  definition.Fonction = IntegerOrZero(read(u"Fonction"));
  definition.Chaine = ToText(read(u"Chaine"));
  definition.Separateur = ToText(read(u"Separateur"));
  definition.Masque = ToText(read(u"Masque"));
  definition.Filtre = ToText(read(u"Filtre"));
  definition.CaseSensitive = IntegerOrZero(read(u"CaseSensitive"));
  definition.Trim = IntegerOrZero(read(u"Trim"));
  definition.Fields = {};

  const Variant count = read(u"Fields.Count");
  if (count.IsEmptyText()) return;
  const std::int16_t n = ToInteger(count);
  const bool variablesOnly = definition.Fonction == FunctionCode::Split || definition.Fonction == FunctionCode::FindValues;
  if (!variablesOnly && definition.Fonction != FunctionCode::Substrings) return;
  definition.Fields.reserve(n > 0 ? static_cast<std::size_t>(n) : 0);
  for (std::int32_t i = 1; i <= n; ++i) {
    TaskField field;
    field.Var = ToText(readField(i, kFieldSuffixes[0]));
    if (!variablesOnly) {
      field.Start = ToText(readField(i, kFieldSuffixes[1]));
      field.End = ToText(readField(i, kFieldSuffixes[2]));
      field.ShowSep = ToText(readField(i, kFieldSuffixes[3]));
    }
    definition.Fields.push_back(std::move(field));
  }
}

void WriteTaskStatus(TextView taskName, std::int16_t status) { WriteNumber(taskName, u"Etat", status); }

void SaveTask(TextView taskName, const TaskEditorValues& values) {
  if (values.TaskStored) {
    WriteText(taskName, u"ModifiéLe", CurrentTimestamp());
  } else {
    WriteNumber(taskName, u"Etat", 0);
    WriteText(taskName, u"CréeLe", CurrentTimestamp());
  }
  WriteNumber(taskName, u"Type", kWrapperType);
  WriteText(taskName, u"Comment", values.Comment);

  for (const char16_t* name : {u"Fonction", u"Chaine", u"Separateur", u"Masque", u"Filtre"}) {
    DeleteRegistryValue(taskName, name);
  }
  const Variant oldCount = ReadRegistryValue(taskName, u"Fields.Count");
  if (!oldCount.IsEmptyText()) {
    const std::int16_t n = ToInteger(oldCount);
    for (std::int32_t i = 1; i <= n; ++i) {
      for (const char16_t* suffix : kFieldSuffixes) DeleteRegistryValue(taskName, FieldValueName(i, suffix));
    }
  }
  DeleteRegistryValue(taskName, u"Fields.Count");

  WriteNumber(taskName, u"Fonction", values.Fonction);
  const auto writeVariables = [&] {
    WriteNumber(taskName, u"Fields.Count", static_cast<std::int64_t>(values.Colonnes.size()));
    for (std::size_t i = 0; i < values.Colonnes.size(); ++i) {
      WriteText(taskName, FieldValueName(static_cast<std::int32_t>(i + 1), kFieldSuffixes[0]), values.Colonnes[i]);
    }
  };
  switch (values.Fonction) {
    case FunctionCode::Split:
      WriteText(taskName, u"Chaine", values.Chaine);
      WriteText(taskName, u"Separateur", values.Separateur);
      writeVariables();
      break;
    case FunctionCode::Substrings:
      WriteText(taskName, u"Chaine", values.Chaine);
      WriteText(taskName, u"Separateur", values.Separateur);
      WriteNumber(taskName, u"Fields.Count", static_cast<std::int64_t>(values.Lignes.size()));
      for (std::size_t i = 0; i < values.Lignes.size(); ++i) {
        for (std::size_t k = 0; k < 4; ++k) {
          WriteText(taskName, FieldValueName(static_cast<std::int32_t>(i + 1), kFieldSuffixes[k]), values.Lignes[i][k]);
        }
      }
      break;
    case FunctionCode::FindValues:
      WriteText(taskName, u"Chaine", values.Chaine);
      WriteText(taskName, u"Masque", values.Masque);
      WriteText(taskName, u"Filtre", values.Filtre);
      WriteText(taskName, u"Trim", DecimalText(values.IsTrimed));
      WriteText(taskName, u"CaseSensitive", DecimalText(values.CaseSensitive));
      writeVariables();
      break;
    default:
      break;
  }
}

}  // namespace nv
