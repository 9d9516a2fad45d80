#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "core/Result.h"
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

  // Keeps the project of a window, which the caller numbers. Returns 0 or the file error's number; what was kept of the
  // window before then stays.
  int Keep(std::size_t window, const Project& project);
  void Forget(std::size_t window);

  // A project of a run that crashed.
  struct LeftBehind {
    std::string Copy;      // the file that holds it
    std::string FileName;  // of the project; "Recovered" where that is lost
    std::string Made;      // when it was kept, in local time
  };

  // All of them. They are this run's from now on: no other run is offered them. One that is neither discarded nor
  // adopted is offered again at the next start.
  std::vector<LeftBehind> Claim();
  void Discard(const LeftBehind& project);

  // The project as it was. Fails with the sentence for the user.
  static Result<Project> Read(const LeftBehind& project, const LocaleText& locale);
  // The window shows that project: the copy is what is kept of it until Keep has made one of this run's own.
  void Adopt(std::size_t window, const LeftBehind& project);

 private:
  struct Session {
    std::string Folder;
    int Lock = -1;
  };
  static bool LockSession(Session& session);
  int Begin();

  static LeftBehind Describe(const std::string& copy);
  void DiscardAdopted(std::size_t window);

  std::string folder_;
  Session own_;                   // begins with the first copy
  std::vector<Session> claimed_;  // folders of runs that crashed
  std::map<std::size_t, LeftBehind> adopted_;
};

}  // namespace quorvex
