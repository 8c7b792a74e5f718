#pragma once
// The words of the actions text. They are literals of the behaviour, not texts of the string
// table, and the two variants mix them: the English one still says "Vrai"/"Faux" after a
// condition, and both say "True"/"False" for the Loop flag.
#include "common/Text.h"

namespace nv {

struct ActionsWords {
  TextView runScenario;
  TextView autoRun;
  TextView checkAfterRun;
  TextView ifVariable;
  // The Go and Check flags.
  TextView flagSet;
  TextView flagClear;
};

inline constexpr ActionsWords kFrenchActionsWords{u"Continuez le scénario : ", u"Auto-Relance : ",
                                                  u"Effectuer le test après exécution : ", u"Si @", u"Vrai", u"Faux"};
inline constexpr ActionsWords kEnglishActionsWords{u"Run scenario : ", u"Auto-Run : ", u"Check after execution : ",
                                                   u"If @", u"True", u"False"};

// The Loop flag, in both variants.
inline constexpr TextView kLoopSet = u"True";
inline constexpr TextView kLoopClear = u"False";
// The value of a listed action's condition, in both variants.
inline constexpr TextView kConditionTrue = u"Vrai";
inline constexpr TextView kConditionFalse = u"Faux";

inline constexpr TextView kActionsLineBreak = u"\r\n";
inline constexpr TextView kActionsIndent = u"    ";

}  // namespace nv
