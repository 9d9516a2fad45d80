#include "plot/ui/PlotPreview.h"

#include <QGraphicsView>
#include <QHBoxLayout>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "core/QuietPrompter.h"
#include "plot/PictureMessages.h"
#include "plot/ui/PSetup.h"
#include "plot/ui/PlotOutput.h"

namespace quorvex {
namespace {

// Keeps what is refused while a page is drawn: a message box in the midst of that would paint the window again.
class HeldRefusals : public QuietPrompter {
 public:
  explicit HeldRefusals(std::vector<std::string>& texts) : texts_(texts) {}
  void Refuse(const std::string& text) override { texts_.push_back(text); }

 private:
  std::vector<std::string>& texts_;
};

}  // namespace

PlotPreview::PlotPreview(PlotPage& plot, Settings& settings, Prompter& user, QWidget* parent)
    : QDialog(parent),
      plot_(plot),
      settings_(settings),
      user_(user),
      printer_(std::make_unique<QPrinter>(QPrinter::HighResolution)),
      page_(new QPrintPreviewWidget(printer_.get(), this)) {
  setObjectName("PlotPreview");
  setWindowTitle("Print Preview");
  auto* view = page_->findChild<QGraphicsView*>();
  view->setObjectName("page");
  view->setAccessibleName("Page");
  connect(page_, &QPrintPreviewWidget::paintRequested, this, [this](QPrinter* printer) {
    HeldRefusals held(refusals_);
    DrawOnPaper(plot_, *printer, PageSetup::Read(settings_), held);
  });

  auto* commands = new QHBoxLayout;
  const auto add = [&](const char* name, const char* text, auto command) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, command);
    commands->addWidget(button);
    return button;
  };
  QPushButton* print = add("print", "&Print...", [this] { Print(); });
  print->setDefault(true);
  add("pageSetup", "Page Set&up...", [this] { PageSetupCommand(); });
  commands->addStretch();
  add("zoomIn", "Zoom &In", [this] { page_->zoomIn(); });
  add("zoomOut", "Zoom &Out", [this] { page_->zoomOut(); });
  add("wholePage", "&Whole Page", [this] { page_->fitInView(); });
  commands->addStretch();
  add("close", "&Close", [this] { reject(); });
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(page_, 1);
  rows->addLayout(commands);
  setTabOrder(commands->itemAt(commands->count() - 1)->widget(), view);
  print->setFocus();
  resize(QSize(780, 640).boundedTo(screen()->availableSize() * 0.9));
}

PlotPreview::~PlotPreview() = default;

void PlotPreview::Refresh() {
  SetUpPlotPrinter(*printer_, settings_);
  refusals_.clear();
  page_->updatePreview();
  for (const std::string& text : std::exchange(refusals_, {})) user_.Refuse(text);
}

int PlotPreview::PageCount() const { return page_->pageCount(); }

void PlotPreview::PageSetupCommand() {
  if (PSetup(settings_, plot_.Locale, user_, this).exec() == QDialog::Accepted) Refresh();
}

void PlotPreview::Print() {
  if (AskAndPrint(plot_, *printer_, settings_, user_, this)) accept();
}

void PreviewPlot(PlotPage& plot, Settings& settings, Prompter& user, QWidget* parent) {
  if (!CanBe("printed", plot, user)) return;
  PlotPreview preview(plot, settings, user, parent);
  preview.Refresh();
  preview.exec();
}

}  // namespace quorvex
