#pragma once

#include <QTimer>

#include "core/Prompter.h"
#include "core/Settings.h"

namespace quorvex {

// Stores what is chosen in passing, such as the order of solutions, soon after it was. Where that fails the user is
// told once: nobody wants to hear it at each file that is opened.
class PreferenceKeeper : public QObject {
 public:
  // Both outlive it.
  PreferenceKeeper(Settings& settings, Prompter& user);

  // Tells of a file error's number, 0 for none.
  void Tell(int error);
  // The user has heard that preferences cannot be stored.
  void SayNoMore() { told_ = true; }

 private:
  void Store();

  Settings& settings_;
  Prompter& user_;
  QTimer delay_;
  bool told_ = false;
};

}  // namespace quorvex
