#include "app/OfferRecovery.h"

namespace quorvex {

std::optional<Project> OfferRecovery(RecoveryStore& store, const RecoveryStore::LeftBehind& left,
                                     const LocaleText& locale, Prompter& user) {
  if (!user.Ask("Quorvex ended unexpectedly while changes to the project '" + left.FileName +
                "' were not saved. Do you want to restore them?")) {
    if (user.Ask("The changes to the project '" + left.FileName + "' were kept on " + left.Made +
                 ". Do you want to delete them? If not, you will be asked again at the next start."))
      store.Discard(left);
    return std::nullopt;
  }
  Result<Project> project = RecoveryStore::Read(left, locale);
  if (project) return std::move(*project);
  user.Refuse(project.error());  // the copy stays, for whoever can read it
  return std::nullopt;
}

std::string FailureText(const std::string& what, bool everythingKept) {
  return what + " The command did not come to its end." +
         (everythingKept ? " What is not saved was copied aside, and is offered at the next start if Quorvex ends."
                         : " Not all of what is not saved could be copied aside.");
}

}  // namespace quorvex
