#pragma once
// What a user gives the actions editor for one action: natively from nvhost's options,
// on Windows from the editor's own dialog. Values left out keep what is stored.
#include <cstdint>
#include <optional>

#include "common/Text.h"

namespace nv {

struct ActionValues {
  std::int32_t kind = 0;
  std::optional<std::uint32_t> go;
  std::optional<std::uint32_t> loop;
  std::optional<Text> dest;
  std::optional<Text> variable;  // GVar for Goto, Var for ExeIf
  std::optional<std::uint32_t> ope;
  std::optional<std::uint32_t> check;
  std::optional<Text> value;
};

// Where the editor asks for values and shows its help.
class ActionPrompt {
 public:
  virtual ~ActionPrompt() = default;
  // The action to add; nothing when the user cancels.
  virtual std::optional<ActionValues> AskNewAction() = 0;
  // Changes to the action of `kind`; nothing when the user cancels.
  virtual std::optional<ActionValues> AskChanges(std::int32_t kind) = 0;
  virtual void ShowHelp(const Text& helpText) = 0;
};

}  // namespace nv
