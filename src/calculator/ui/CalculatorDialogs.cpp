#include "calculator/ui/CalculatorDialogs.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <utility>

#include "calculator/Generators.h"
#include "core/ui/BusyCursor.h"
#include "sheet/ui/SheetDialog.h"

namespace quorvex {
namespace {

std::string Typed(const QLineEdit* edit) { return edit->text().toStdString(); }

// What the dialog's OK makes; nothing where the user cancels.
template <typename T, typename Make>
std::optional<T> RunFor(SheetDialog& dialog, Prompter& user, const Make& make) {
  const ArrowCursor arrow;
  std::optional<T> made;
  dialog.Run([&] {
    Result<T> result = make();
    if (!result) {
      user.Refuse(result.error());
      return false;
    }
    made.emplace(std::move(*result));
    return true;
  });
  return made;
}

}  // namespace

std::optional<PlotSeries> ShowDistribution(QWidget* parent, const LocaleText& locale, Prompter& user) {
  SheetDialog dialog(parent, "Distribution", "Normal Distribution");
  const QLineEdit* s = dialog.AddText("parameters0", "&Standard deviation:", "1");
  const QLineEdit* m = dialog.AddText("parameters1", "&Mean:", "0");
  const QLineEdit* n = dialog.AddText("parameters2", "&Number of points:", "101");
  const QLineEdit* k = dialog.AddText("parameters3", "&Range, in standard deviations:", "4");
  return RunFor<PlotSeries>(dialog, user, [&] {
    return DistributionCurve{Typed(s), Typed(m), Typed(n), Typed(k)}.Make(locale);
  });
}

std::optional<PlotSeries> ShowExpression(QWidget* parent, const LocaleText& locale, Prompter& user) {
  SheetDialog dialog(parent, "expsetup", "Equation");
  QLineEdit* function = dialog.AddText("functiontext", "&Y =");
  function->setMinimumWidth(function->fontMetrics().averageCharWidth() * 40);
  const QLineEdit* min = dialog.AddText("mintext", "X mi&n:", "0");
  const QLineEdit* max = dialog.AddText("maxtext", "X m&ax:", "1");
  const QLineEdit* samples = dialog.AddText("samplestext", "&Samples:", "100");
  return RunFor<PlotSeries>(dialog, user, [&] {
    return ExpressionCurve{Typed(function), Typed(min), Typed(max), Typed(samples)}.Make(locale);
  });
}

std::optional<PlotSeries> ShowSample(QWidget* parent, const PlotSeries& equation, const Settings& settings,
                                     const LocaleText& locale, Prompter& user) {
  SheetDialog dialog(parent, "frmSample", "Sample");
  const SampledCurve defaults = SampledCurve::Defaults(equation, settings, locale);
  QLineEdit* min = dialog.AddText("txtMaxMin0", "X mi&n:");
  QLineEdit* max = dialog.AddText("txtMaxMin1", "X m&ax:");
  QLineEdit* samples = dialog.AddText("txtSamples", "&Samples:");
  QCheckBox* fitted = dialog.AddCheck("ckSampleFitted", "At the &fitted X values");
  auto* again = new QPushButton("&Defaults", &dialog);
  again->setObjectName("cmdDefaults");
  again->setAutoDefault(false);
  dialog.Rows()->addRow(QString(), again);
  const auto fill = [=] {
    min->setText(QString::fromStdString(defaults.XMin));
    max->setText(QString::fromStdString(defaults.XMax));
    samples->setText(QString::fromStdString(defaults.Samples));
    fitted->setChecked(false);
  };
  fill();
  QObject::connect(again, &QPushButton::clicked, &dialog, fill);
  for (QLineEdit* edit : {min, max, samples})
    QObject::connect(fitted, &QCheckBox::toggled, edit, &QWidget::setDisabled);
  return RunFor<PlotSeries>(dialog, user, [&] {
    return SampledCurve{Typed(min), Typed(max), Typed(samples), fitted->isChecked()}.Make(equation, locale);
  });
}

std::optional<XRange> ShowSection(QWidget* parent, const XRange& whole, const LocaleText& locale, Prompter& user) {
  SheetDialog dialog(parent, "frmSectionPlot", "Section");
  const QLineEdit* min = dialog.AddText("txtXMin", "X mi&n:", QString::fromStdString(ExactText(whole.Min, locale)));
  const QLineEdit* max = dialog.AddText("txtXMax", "X m&ax:", QString::fromStdString(ExactText(whole.Max, locale)));
  return RunFor<XRange>(dialog, user, [&] { return ParseXRange(Typed(min), Typed(max), locale); });
}

}  // namespace quorvex
