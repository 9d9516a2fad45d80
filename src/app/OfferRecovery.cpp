#include "app/OfferRecovery.h"

namespace quorvex {
namespace {

bool IsWanted(RecoveryStore& store, const RecoveryStore::LeftBehind& left, Prompter& user) {
  std::string name = (left.IsPlot() ? "the plot '" : "the project '") + left.FileName + "'";
  if (!left.Project.empty()) name += " of the project '" + left.Project + "'";
  if (user.Ask("Quorvex ended unexpectedly while changes to " + name + " were not saved. Do you want to restore them?"))
    return true;
  if (user.Ask("The changes to " + name + " were kept on " + left.Made +
               ". Do you want to delete them? If not, you will be asked again at the next start."))
    store.Discard(left);
  return false;
}

template <typename T>
std::optional<T> Restored(Result<T> read, Prompter& user) {
  if (read) return std::move(*read);
  user.Refuse(read.error());  // the copy stays, for whoever can read it
  return std::nullopt;
}

}  // namespace

std::optional<Project> OfferRecovery(RecoveryStore& store, const RecoveryStore::LeftBehind& left,
                                     const LocaleText& locale, Prompter& user) {
  if (!IsWanted(store, left, user)) return std::nullopt;
  return Restored(RecoveryStore::Read(left, locale), user);
}

std::optional<PlotDocument> OfferPlotRecovery(RecoveryStore& store, const RecoveryStore::LeftBehind& left,
                                              Settings& settings, const LocaleText& locale, Prompter& user) {
  if (!IsWanted(store, left, user)) return std::nullopt;
  return Restored(RecoveryStore::ReadPlot(left, settings, locale, user), user);
}

std::string FailureText(const std::string& what, bool everythingKept) {
  return what + " The command did not come to its end." +
         (everythingKept ? " What is not saved was copied aside, and is offered at the next start if Quorvex ends."
                         : " Not all of what is not saved could be copied aside.");
}

}  // namespace quorvex
