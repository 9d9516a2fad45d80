#pragma once

#include <optional>
#include <string>

#include "app/RecoveryStore.h"
#include "core/Prompter.h"

namespace quorvex {

// Ask whether a project or plot that a crash left behind is to be restored, and where not, whether it may be deleted.
// Nothing where it isn't restored; it is offered again at the next start unless the user had it deleted.
std::optional<Project> OfferRecovery(RecoveryStore& store, const RecoveryStore::LeftBehind& left,
                                     const LocaleText& locale, Prompter& user);
std::optional<PlotDocument> OfferPlotRecovery(RecoveryStore& store, const RecoveryStore::LeftBehind& left,
                                              Settings& settings, const LocaleText& locale, Prompter& user);

// What the user hears after a command failed in a way that nobody foresaw, `what` saying how.
std::string FailureText(const std::string& what, bool everythingKept);

inline constexpr const char* kNotKept = "The changes could not be kept for the case of a crash.";

}  // namespace quorvex
