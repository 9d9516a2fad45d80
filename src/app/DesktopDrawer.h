#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>

#include "batch/PlotDrawer.h"
#include "core/FreshFile.h"

namespace quorvex {

// Has the desktop program draw, which needs no display for that. One process draws all the plots of a run, one after
// the other: it is started for the first of them, and anew after one that it didn't survive.
//
// The two share two files without a name in any folder, so that nothing stays behind however they end. This program
// begins: it fills the first with the text of a plot and writes a line with the ending of the picture that is wanted.
// The other one fills the second with the picture, and answers with a line: empty, or why there is no picture.
class DesktopDrawer : public PlotDrawer {
 public:
  static constexpr const char* kSwitch = "-draw";  // of the desktop program, in front of the two files

  // The program beside this one. One that needs longer for a picture than `limit` is ended, and none is drawn any more.
  DesktopDrawer();
  DesktopDrawer(std::filesystem::path program, std::chrono::milliseconds limit);
  ~DesktopDrawer() override { End(); }
  DesktopDrawer(const DesktopDrawer&) = delete;
  DesktopDrawer& operator=(const DesktopDrawer&) = delete;

  std::string WhyNone() const override;
  Result<std::string> Draw(const std::string& plotText, const std::string& ending,
                           const std::function<bool()>& goOn) override;

 private:
  bool Start();
  void End();
  bool HasMore(int patience) const;
  std::string Await(const std::function<bool()>& goOn);

  const std::filesystem::path program_;
  const std::chrono::milliseconds limit_;
  FreshFile plot_, picture_;
  pid_t process_ = -1;
  int connection_ = -1;
  bool hung_ = false;
};

}  // namespace quorvex
