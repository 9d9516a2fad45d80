#include "files/ui/frmPlotEquation.h"

#include <QButtonGroup>
#include <QFileInfo>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>

#include "core/ui/Controls.h"
#include "files/PlotTemplateKeys.h"
#include "results/EquationPlot.h"
#include "sheet/ui/SheetDialog.h"

namespace quorvex {
namespace {

// The fields of a variable's range.
struct RangeFields {
  QLineEdit *Min, *Max, *Divisions;

  EquationPlot::Range Texts() const {
    return {Min->text().toStdString(), Max->text().toStdString(), Divisions->text().toStdString()};
  }
};

// The fields of one kind of equation, row by row.
class EquationPage {
 public:
  EquationPage(SheetDialog& dialog, QStackedWidget* pages, const char* equation)
      : dialog_(dialog), rows_(new QFormLayout(pages->widget(pages->addWidget(new QWidget(pages))))) {
    rows_->setContentsMargins(0, 0, 0, 0);
    Equation = dialog.AddText(rows_, equation, "&Y =");
    Equation->setMinimumWidth(Equation->fontMetrics().averageCharWidth() * 48);
  }

  RangeFields AddRange(const QString& variable, const QString& points, const std::array<const char*, 3>& letters) {
    const auto add = [&](const char* name, const QString& what, const char* letter, const QString& text) {
      QString label = variable + ' ' + what + ':';
      label.insert(label.indexOf(letter), '&');
      return dialog_.AddText(rows_, qPrintable("txt" + variable + name), label, text);
    };
    return {add("Min", "Min", letters[0], "0"), add("Max", "Max", letters[1], "1"),
            add("Divisions", "Divisions", letters[2], points)};
  }

  // `kind` is the end of the names: "2D" or "3D".
  void AddTemplate(const QString& kind, const PlotTemplateFormat& format, const Settings& settings, Prompter& user) {
    auto* choose = Named(new QPushButton("&Browse...", &dialog_), qPrintable("cmdTemplate" + kind));
    choose->setAccessibleName("Browse for the template");
    choose->setAutoDefault(false);
    Template = dialog_.AddText(rows_, qPrintable("txtTemplate" + kind), "&Template:", {}, choose);
    const QString usual = QString::fromStdString(settings.Text(format.Setting));
    Template->setPlaceholderText(usual.isEmpty() ? "none" : QFileInfo(usual).fileName());
    QObject::connect(choose, &QPushButton::clicked, Template, [this, &format, &user] {
      if (const auto file = user.ChooseFileToOpen("Choose Template", format.Filter))
        Template->setText(QString::fromStdString(*file));
    });
  }

  QLineEdit *Equation, *Template = nullptr;

 private:
  SheetDialog& dialog_;
  QFormLayout* rows_;
};

}  // namespace

std::optional<PlotDocument> ShowPlotEquation(QWidget* parent, Settings& settings, const LocaleText& locale,
                                             Prompter& user) {
  SheetDialog dialog(parent, "frmPlotEquation", "Plot Equation");
  QButtonGroup* type = dialog.AddOptions("optnType", "Kind:", {"&2D, in X", "&3D, in X1 and X2"});
  auto* pages = new QStackedWidget(&dialog);
  EquationPage curve(dialog, pages, "txt2D"), surface(dialog, pages, "txt3D");
  const RangeFields x = curve.AddRange("X", QString::number(settings.Integer("pointsperplot")), {"n", "a", "D"});
  curve.AddTemplate("2D", TemplateFormat2D(), settings, user);
  const RangeFields x1 = surface.AddRange("X1", "30", {"M", "a", "D"}),
                    x2 = surface.AddRange("X2", "30", {"n", "x", "v"});
  surface.AddTemplate("3D", TemplateFormat3D(), settings, user);
  QObject::connect(type, &QButtonGroup::idClicked, pages, &QStackedWidget::setCurrentIndex);
  dialog.Rows()->addRow(pages);
  curve.Equation->setFocus();

  std::optional<PlotDocument> document;
  dialog.Run([&] {
    const EquationPlot equation{.ThreeD = type->checkedId() == 1,
                                .Txt2D = curve.Equation->text().toStdString(),
                                .Txt3D = surface.Equation->text().toStdString(),
                                .X = x.Texts(),
                                .Plane = {x1.Texts(), x2.Texts()}};
    Result<std::unique_ptr<PlotPage>> plot = equation.Make(settings, locale);
    if (!plot) {
      user.Refuse(plot.error());
      return false;
    }
    const EquationPage& page = equation.ThreeD ? surface : curve;
    auto made = NewPlotDocument(std::move(*plot), settings, user, page.Template->text().trimmed().toStdString());
    if (made) document.emplace(std::move(*made));
    return document.has_value();
  });
  return document;
}

}  // namespace quorvex
