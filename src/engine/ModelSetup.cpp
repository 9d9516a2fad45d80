#include "engine/ModelSetup.h"

#include "core/NumberText.h"

namespace quorvex {

std::string BoundsFault(const Coefficient& coefficient) {
  const double least = coefficient.Minimum, most = coefficient.Maximum;
  // An infinite one is none only on its own side.
  if (!(least < HUGE_VAL)) return "The minimum of coefficient " + coefficient.Name + " is no number.";
  if (!(most > -HUGE_VAL)) return "The maximum of coefficient " + coefficient.Name + " is no number.";
  if (least <= most) return {};
  return "The minimum of coefficient " + coefficient.Name + ", " + GeneralNumber(least) + ", is above its maximum, " +
         GeneralNumber(most) + ".";
}

}  // namespace quorvex
