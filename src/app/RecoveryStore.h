#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/Result.h"
#include "files/PlotDocument.h"
#include "project/Project.h"

namespace quorvex {

// Where the program keeps what outlives a crash: quorvex in $XDG_STATE_HOME or ~/.local/state. Empty where the
// environment names no home.
std::string StateFolder();

// Copies of the projects and plots that are open and not saved, so that a crash loses a minute of work and not a day.
// Each run of the program has a folder of its own below `folder` and holds a lock in it, which ends with the process
// however that ends: a folder without a lock is what a crash left behind.
class RecoveryStore {
 public:
  explicit RecoveryStore(std::string folder) : folder_(std::move(folder)) {}
  ~RecoveryStore();  // an ordered end leaves nothing behind
  RecoveryStore(const RecoveryStore&) = delete;
  RecoveryStore& operator=(const RecoveryStore&) = delete;

  // Keep the project or plot of a window, which the caller numbers. Return 0 or the file error's number; what was kept
  // of the window before then stays.
  int Keep(std::size_t window, const Project& project);
  int Keep(std::size_t window, const PlotDocument& plot);
  void Forget(std::size_t window);

  // A project or plot of a run that crashed.
  struct LeftBehind {
    std::string Copy;      // the file that holds it
    std::string FileName;  // of the project or plot; "Recovered" where that is lost
    std::string Made;      // when it was kept, in local time
    std::string Project;   // that a plot without a file was made from, where it was

    bool IsPlot() const;
    bool HasFile() const;  // a name without a path is that of what was never saved
  };

  // All of them. They are this run's from now on: no other run is offered them. One that is neither discarded nor
  // adopted is offered again at the next start.
  std::vector<LeftBehind> Claim();
  void Discard(const LeftBehind& left);

  // The project as it was. Fails with the sentence for the user.
  static Result<Project> Read(const LeftBehind& project, const LocaleText& locale);
  // The same of a plot, which need not be one that can be created. Settings and prompter are the document's.
  static Result<PlotDocument> ReadPlot(const LeftBehind& plot, Settings& settings, const LocaleText& locale,
                                       Prompter& user);
  // The window shows that project or plot: the copy is what is kept of it until Keep has made one of this run's own.
  void Adopt(std::size_t window, const LeftBehind& left);

 private:
  struct Session {
    std::string Folder;
    int Lock = -1;
  };
  static bool LockSession(Session& session);
  int Begin();
  int Keep(std::size_t window, std::string_view extension, const std::string& name,
           const std::function<int(const std::string& copy)>& write);

  static LeftBehind Describe(const std::string& copy);
  void DiscardAdopted(std::size_t window);

  std::string folder_;
  Session own_;                   // begins with the first copy
  std::vector<Session> claimed_;  // folders of runs that crashed
  std::map<std::size_t, LeftBehind> adopted_;
};

}  // namespace quorvex
