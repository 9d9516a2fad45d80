#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "project/Project.h"

namespace quorvex {

// Where the program keeps what outlives a crash: quorvex in $XDG_STATE_HOME or ~/.local/state. Empty where the
// environment names no home.
std::string StateFolder();

// Copies of the projects that are open and not saved, so that a crash loses a minute of work and not a day. Each run of
// the program has a folder of its own below `folder` and holds a lock in it, which ends with the process however that
// ends: a folder without a lock is what a crash left behind.
class RecoveryStore {
 public:
  explicit RecoveryStore(std::string folder) : folder_(std::move(folder)) {}
  ~RecoveryStore();  // an ordered end leaves nothing behind
  RecoveryStore(const RecoveryStore&) = delete;
  RecoveryStore& operator=(const RecoveryStore&) = delete;

  // Keeps the project of a window, which the caller numbers. Returns 0 or the file error's number.
  int Keep(std::size_t window, const Project& project);
  void Forget(std::size_t window);

  // A project of a run that crashed.
  struct LeftBehind {
    std::string Copy;      // the file that holds it
    std::string FileName;  // that it had
  };

  // All of them. They are this run's from now on: no other run is offered them.
  std::vector<LeftBehind> Claim();
  void Discard(const LeftBehind& project);

 private:
  struct Session {
    std::string Folder;
    int Lock = -1;
  };
  static bool LockSession(Session& session);
  int Begin();

  std::string folder_;
  Session own_;                   // begins with the first copy
  std::vector<Session> claimed_;  // folders of runs that crashed
};

}  // namespace quorvex
