#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/DerivativeKind.h"
#include "core/LossKind.h"

namespace quorvex {

// The preferences that the program reads once at start and hands down; only the store in app/ knows where they are
// kept. What the solver reads in its loops stands as plain fields. Every setting, those included, is also kept as text
// by section and key, both without regard to case. The initial state is that of a user who has set nothing.
//
// Each key has a default text (Settings.cpp). In many keys that default, mostly "0", says that the user never chose,
// and a built-in value takes its place, so that zero cannot be stored there as a choice of its own. A number that
// cannot be read counts as not set.
struct Settings {
  double ResidualTolerance = 1e-10;  // key "tolerance", percent change of the merit function
  int MaxIterations = 250;           // key "maxiterations"
  int DivIterations = 10;            // key "diviterations", iterations allowed without improvement
  DerivativeKind DerivativeMethod = DerivativeKind::Richardson;  // key "derivative", by number
  int Threads =
      0;  // key "threads": threads for what can be done side by side, at most; 0 for as many as the process may use
  // Of one run, and stored under no key: where the search of a nonlinear model fails, go on (engine/TryHarder.h); given
  // standard deviations are taken at their word instead of telling no more than their ratios; what a residual costs,
  // and the scale of good residuals that goes by, found from the residuals where it is 0 (engine/RobustFit.h).
  bool TryHarder = false;
  bool AbsoluteDeviations = false;
  LossKind Loss = LossKind::Squares;
  double LossScale = 0;

  // The value in force: what is stored, the default where nothing is, then the built-in value where one stands in
  // for that text. Empty for a key that is neither stored nor known.
  std::string Text(std::string_view key, std::string_view section = "startup") const;
  double Number(std::string_view key, std::string_view section = "startup") const;
  std::int32_t Integer(std::string_view key, std::string_view section = "startup") const;  // ties to even
  bool Flag(std::string_view key, std::string_view section = "startup") const;
  // The folder that the user was in last; empty where none was ever chosen.
  std::string Folder(std::string_view key) const;

  // Stores a text and brings the field of that key, if it has one, up to date. Numbers are stored with ".".
  void Set(std::string_view key, std::string_view text, std::string_view section = "startup");
  void SetNumber(std::string_view key, double value, std::string_view section = "startup");
  void SetFlag(std::string_view key, bool value, std::string_view section = "startup");

  // Sections and keys that were set to another text since ForgetChanges.
  const std::set<std::pair<std::string, std::string>>& Changes() const { return changes_; }
  void ForgetChanges() { changes_.clear(); }

  // Whether a text is stored for the key.
  bool Has(std::string_view key, std::string_view section = "startup") const;

 private:
  void ReadField(std::string_view key);

  std::map<std::pair<std::string, std::string>, std::string> stored_;  // by section and key, both in lower case
  std::set<std::pair<std::string, std::string>> changes_;              // as they were spelled
};

}  // namespace quorvex
