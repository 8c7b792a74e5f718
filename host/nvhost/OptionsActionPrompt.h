#pragma once
// The actions editor's questions answered from nvhost's command line: the values given
// with `nvhost action add|modify`, the help printed on the session's output.
#include <iosfwd>
#include <optional>

#include "host/ActionValues.h"

namespace nv {

class OptionsActionPrompt final : public ActionPrompt {
 public:
  explicit OptionsActionPrompt(std::ostream& out) : out_(out) {}

  void Answer(ActionValues values) { answer_ = std::move(values); }

  std::optional<ActionValues> AskNewAction() override { return answer_; }
  std::optional<ActionValues> AskChanges(std::int32_t) override { return answer_; }
  void ShowHelp(const Text& helpText) override;

 private:
  std::ostream& out_;
  std::optional<ActionValues> answer_;
};

}  // namespace nv
