#include <QPushButton>

#include "Shots.h"
#include "app/DesktopDrawer.h"
#include "batch/RunMacro.h"
#include "batch/ui/cfgSolveWindow.h"

namespace quorvex {
namespace {

// The progress form, taken twice in the search for the third model.
class PhotographedForm : public cfgSolveWindow {
 public:
  explicit PhotographedForm(const Shots& shots) : shots_(shots) { Show(true); }

  void SetStatusLabel(const std::string& text) override {
    cfgSolveWindow::SetStatusLabel(text);
    turn_ = 0;
    ++model_;
  }

  void Yield() override {
    cfgSolveWindow::Yield();
    if (model_ != 3 || ++turn_ != 5) return;
    auto* detail = findChild<QPushButton*>("cmdDetail");
    shots_.Take(*this, "progress-short");
    detail->click();
    shots_.Take(*this, "progress-detail");
    detail->click();
  }

 private:
  const Shots& shots_;
  int model_ = 0, turn_ = 0;
};

}  // namespace

void TakeProgress(const Shots& shots) {
  PhotographedForm form(shots);
  DesktopDrawer drawer;
  RunMacro(MacroRequest("examples/puromycin.cfg"), shots.Run, form, drawer);
}

}  // namespace quorvex
