#pragma once
// A task as it is stored under its key, and the values that the dialog saves.
#include <array>
#include <cstdint>
#include <vector>

#include "common/Text.h"

namespace nv {

// The task type code of "String extraction".
constexpr std::int32_t kWrapperType = 39;

// The task's "Etat" in the registry (not the object's working mode).
namespace TaskStatus {
constexpr std::int16_t NeverRun = 0;
constexpr std::int16_t Running = 1;
constexpr std::int16_t Ended = 2;
constexpr std::int16_t Failed = 3;
}  // namespace TaskStatus

namespace FunctionCode {
constexpr std::int16_t Split = 0;
constexpr std::int16_t Substrings = 1;
constexpr std::int16_t FindValues = 2;
}  // namespace FunctionCode

// One field. Functions 0 and 2 use `Var` alone; function 1 all four texts, kept as read.
struct TaskField {
  Text Var;
  Text Start;
  Text End;
  Text ShowSep;

  friend bool operator==(const TaskField&, const TaskField&) = default;
};

struct TaskDefinition {
  Text Comment;
  std::int16_t Fonction = 0;
  Text Chaine;
  Text Separateur;
  Text Masque;
  Text Filtre;
  std::int16_t CaseSensitive = 0;
  std::int16_t Trim = 0;
  std::vector<TaskField> Fields;  // position p holds field p + 1
};

// What the dialog's editors hold when it saves.
struct TaskEditorValues {
  bool TaskStored = false;
  Text Comment;
  std::int16_t Fonction = -1;  // the position selected in the function list, -1 for none
  Text Chaine;
  Text Separateur;
  Text Masque;
  Text Filtre;
  std::int16_t IsTrimed = 0;  // check box states
  std::int16_t CaseSensitive = 0;
  std::vector<Text> Colonnes;               // functions 0 and 2: one variable per field
  std::vector<std::array<Text, 4>> Lignes;  // function 1: Var, Start, End, ShowSep
};

}  // namespace nv
