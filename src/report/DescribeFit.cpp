#include "report/DescribeFit.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "code/CodeLanguage.h"
#include "code/Formula.h"
#include "core/NotingPrompter.h"
#include "core/NumberText.h"
#include "core/Version.h"
#include "engine/UserModel.h"
#include "files/PlotDocument.h"
#include "files/PlotFile.h"
#include "report/ReportMethods.h"
#include "report/TableBlocks.h"
#include "results/FitInformation.h"
#include "results/PlotPoints.h"
#include "results/ResultPlots.h"
#include "solve/GatherData.h"

namespace quorvex {
namespace {

constexpr std::size_t kLevel = 2;  // 95 % among kLimitLevels
constexpr int kCurvePoints = 400;
constexpr const char* kLimitsShown[] = {"show68ci", "show90ci", "show95ci", "show99ci"};

// A formula with that in the place of each point between digits, of which only numbers have any.
std::string WithSeparator(const std::string& formula, const std::string& separator) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  std::string text;
  bool isMarkup = false;
  for (std::size_t i = 0; i < formula.size(); ++i) {
    isMarkup = formula[i] == '<' || (isMarkup && formula[i] != '>');
    const bool isPoint = formula[i] == '.' && !isMarkup && i > 0 && i + 1 < formula.size() && isDigit(formula[i - 1]) &&
                         isDigit(formula[i + 1]);
    text += isPoint ? separator : std::string(1, formula[i]);
  }
  return text;
}

class Describer {
 public:
  Describer(const ReportSource& source, const Settings& settings)
      : source_(source),
        settings_(settings),
        diagnosis_(source.Diagnoses[source.Which]),
        data_(GatherData(source.Sheet, PointOrder::OfSheet)),
        titles_(AxisTitles(source.Sheet)),
        code_(DescribeForCode(source.Model)) {
    // Each coefficient has its limits in a table of its own.
    for (const char* key : kLimitsShown) settings_.Set(key, "0");
  }

  FitReport Describe() {
    report_.Title = ShownName(source_.Model);
    report_.Verdict = Headline(diagnosis_.Judgement);
    report_.Program = std::string("Quorvex ") + kVersion;
    report_.Date = source_.Date;
    report_.DecimalSeparator = source_.Locale.DecimalSeparator;
    Model();
    Coefficients();
    Figures();
    Statistics();
    Diagnoses();
    Data();
    Code();
    Begin("How to cite the methods");
    Put(ReportList{MethodsOf(source_.Model, diagnosis_, source_.Circumstances.Choices)});
    Macro();
    return std::move(report_);
  }

 private:
  void Begin(std::string heading) { report_.Sections.push_back({std::move(heading), {}}); }
  void Put(ReportBlock block) { report_.Sections.back().Blocks.push_back(std::move(block)); }
  void PutAll(std::vector<ReportBlock> blocks) {
    for (ReportBlock& block : blocks) Put(std::move(block));
  }

  void Model() {
    Begin("Model");
    const char separator = source_.Locale.DecimalSeparator;
    Put(separator == '.' ? ReportFormula{LatexFormula(code_), MathMLFormula(code_)}
                         : ReportFormula{WithSeparator(LatexFormula(code_), "{" + std::string(1, separator) + "}"),
                                         WithSeparator(MathMLFormula(code_), std::string(1, separator))});
    if (std::vector<std::string> notes = FormulaNotes(code_); !notes.empty()) Put(ReportList{std::move(notes)});
    Put(ReportText{"As it was written:"});
    Put(ReportCode{"text", code_.Definition, false});
  }

  void Coefficients() {
    if (diagnosis_.Coefficients.empty()) return;
    Begin("Coefficients");
    const auto& all = diagnosis_.Coefficients;
    const bool profile = std::ranges::any_of(all, [](const auto& one) { return one.Profile.has_value(); });
    const bool bootstrap = std::ranges::any_of(all, [](const auto& one) { return one.Bootstrapped.has_value(); });
    const auto begin = [](const char* caption, std::initializer_list<const char*> numbers) {
      ReportTable table{.Caption = caption, .Columns = {{"Name", false}}, .Rows = {}};
      for (const char* heading : numbers) table.Columns.push_back({heading, true});
      return table;
    };
    ReportTable table = begin("Values with their standard errors and 95 % limits",
                              {"Value", "Standard error", "Lower limit", "Upper limit"});
    table.Columns.push_back({"State", false});
    // Limits of other kinds have a table of their own, by which both go on a page.
    ReportTable others = begin("95 % limits of other kinds", {});
    const auto head = [&](const char* heading) { others.Columns.push_back({heading, true}); };
    if (profile)
      for (const char* heading : {"Profile likelihood, lower", "Upper"}) head(heading);
    if (bootstrap)
      for (const char* heading : {"Bootstrap, lower", "Upper"}) head(heading);
    const auto row = [&](const auto& one, const std::optional<LimitsByLevel>& byProfile, const std::string& state) {
      std::vector<std::string> cells = {one.Name, Number(one.Value), Number(one.StdErr)};
      Limits(cells, one.Symmetric);
      cells.push_back(state);
      table.Rows.push_back(std::move(cells));
      others.Rows.push_back({one.Name});
      if (profile) Limits(others.Rows.back(), byProfile);
      if (bootstrap)
        Limits(others.Rows.back(), one.Bootstrapped ? std::optional(one.Bootstrapped->Limits) : std::nullopt);
    };
    for (const CoefficientDiagnosis& one : all)
      row(one, one.Profile,
          one.IsHeld        ? "held"
          : one.IsAtMinimum ? "at its minimum"
          : one.IsAtMaximum ? "at its maximum"
                            : "free");
    for (const QuantityDiagnosis& one : diagnosis_.Quantities)
      row(one, std::nullopt, one.Fault.empty() ? "= " + one.Expression : one.Fault);
    Put(std::move(table));
    if (profile || bootstrap) Put(std::move(others));
    Put(ReportText{diagnosis_.AbsoluteDeviations
                       ? "Standard errors are those of the given standard deviations, taken at their word."
                       : "Standard errors are those of the scatter of the points about the curve."});
  }

  std::string Number(double value) const { return ReportNumber(value, source_.Locale.DecimalSeparator); }

  void Limits(std::vector<std::string>& cells, const std::optional<LimitsByLevel>& limits) const {
    const Interval ends = limits ? (*limits)[kLevel] : Interval();
    for (const double end : {ends.Lower, ends.Upper}) cells.push_back(std::isinf(end) ? "none" : Number(end));
  }

  // The pictures, in the order of PlotsOfReport.
  void Figures() {
    Begin("Plots");
    const std::vector<std::vector<double>>& X = data_.Points.X;
    const std::optional<std::vector<double>> fitted = source_.Model.ValuesAt(X);
    const std::string& yTitle = titles_.back();
    if (X.size() == 1) {
      Put(ReportFigure{.Title = "Points and model",
                       .Description = "The points, the model's curve and the band that holds the curve with 95 % "
                                      "probability.",
                       .XTitle = titles_[0],
                       .YTitle = yTitle,
                       .Series = {{"points", false, X[0], data_.Points.Y}, Curve()}});
    } else {
      if (X.size() == 2)
        Put(ReportFigure{.Kind = ReportFigureKind::Surface,
                         .Title = "Points and model",
                         .Description = "The points and the model's surface."});
      ReportFigure agreement{.Kind = ReportFigureKind::Agreement,
                             .Title = "Calculated and measured values",
                             .Description = "On the line both are equal.",
                             .XTitle = "Measured " + yTitle,
                             .YTitle = "Calculated " + yTitle,
                             .HasPicture = X.size() > 2};
      const auto [least, most] = std::ranges::minmax(data_.Points.Y);
      if (fitted)
        agreement.Series = {{"points", false, data_.Points.Y, *fitted},
                            {"equal values", true, {least, most}, {least, most}}};
      Put(std::move(agreement));
    }
    ReportFigure residuals{.Kind = ReportFigureKind::Residuals,
                           .Title = "Residuals",
                           .Description =
                               "What is left of each measured value without the calculated one. A good "
                               "model leaves no pattern.",
                           .XTitle = "Calculated " + yTitle,
                           .YTitle = "Residual"};
    std::vector<double> left;
    for (std::size_t i = 0; fitted && i < fitted->size(); ++i) left.push_back(data_.Points.Y[i] - (*fitted)[i]);
    if (fitted) {
      const auto [least, most] = std::ranges::minmax(*fitted);
      residuals.Series = {{"points", false, *fitted, std::move(left)}, {"0", true, {least, most}, {0, 0}}};
    }
    Put(std::move(residuals));
  }

  ReportSeries Curve() {
    ReportSeries curve{.Legend = "model", .IsCurve = true};
    const auto [least, most] = std::ranges::minmax(data_.Points.X[0]);
    for (int i = 0; i <= kCurvePoints; ++i) {
      const double x = least + (most - least) * i / kCurvePoints;
      double y = 0;
      if (!source_.Model.Evaluate(std::span(&x, 1), y) || !std::isfinite(y)) continue;
      curve.X.push_back(x);
      curve.Y.push_back(y);
    }
    return curve;
  }

  void Statistics() {
    Begin("Statistics");
    const FitCircumstances circumstances{.ProjectFile = source_.DataName,
                                         .Observations = data_.Points.N(),
                                         .MissingPoints = data_.IncompleteRows,
                                         .Limits = source_.Limits,
                                         .Weighted = IsWeighted(data_.Points),
                                         .Points = &data_.Points};
    const SolvedItem solution{.Model = &source_.Model};
    PutAll(BlocksOf(FitInformation(solution, circumstances, settings_, source_.Locale, WindowPatterns()),
                    source_.Locale,
                    {"Quorvex version ", "Results from project ", "Equation ID: ", "Model Definition:", "Y = "}));
  }

  void Diagnoses() {
    Begin("Diagnosis");
    std::vector<std::string> sentences = diagnosis_.Judgement.Reasons;
    sentences.insert(sentences.end(), diagnosis_.Judgement.Notes.begin(), diagnosis_.Judgement.Notes.end());
    if (!sentences.empty()) Put(ReportList{std::move(sentences)});
    PutAll(
        BlocksOf(DiagnosisReport(source_.Diagnoses, source_.Which, source_.Circumstances, settings_, source_.Locale,
                                 WindowPatterns()),
                 source_.Locale,
                 {"Reason: ", "Note: ", "Equation ID: ", "Coefficients", "Reported Quantities", "Standard errors: "}));
  }

  void Data() {
    Begin("Data");
    Put(ReportText{std::to_string(data_.Points.N()) + " points from " + source_.DataName + "."});
    ReportData data{.Headings = titles_};
    for (std::size_t v = 0; v < data_.Points.X.size(); ++v)
      data.Names.push_back(data_.Points.X.size() == 1 ? "x" : "x" + std::to_string(v + 1));
    data.Names.emplace_back("y");
    data.Columns = data_.Points.X;
    data.Columns.push_back(data_.Points.Y);
    if (IsWeighted(data_.Points)) {
      data.Headings.emplace_back("SD");
      data.Names.emplace_back("sd");
      data.Columns.push_back(data_.Points.SD);
    }
    data.Headings.resize(data.Columns.size());
    Put(std::move(data));
  }

  // In the language of the notebook.
  void Code() {
    const CodeLanguage& python = *LanguageOfFile(".py");
    Begin("The model in Python");
    if (code_.Proof) {
      const CodeBody body = GenerateBody(code_, python, "model");
      report_.Proof.push_back({body.Function, ProofCall(code_, body, python), code_.Proof->Y});
      Put(ReportText{report_.Proof[0].Call + " must give " + ShortestNumber(code_.Proof->Y) + "."});
    }
    Put(ReportCode{"python", WriteCode(code_, python, "model"), true});
  }

  void Macro() {
    if (source_.Macro.empty()) return;
    Begin("The macro that makes this report");
    if (!source_.MacroNote.empty()) Put(ReportText{source_.MacroNote});
    Put(ReportCode{"text", source_.Macro, false});
  }

  const ReportSource& source_;
  Settings settings_;
  const Diagnosis& diagnosis_;
  const GatheredData data_;
  const std::vector<std::string> titles_;
  CodeModel code_;
  FitReport report_;
};

Result<std::unique_ptr<PlotPage>> PageOf(ResultPlotKind kind, const ReportSource& source, const Settings& settings) {
  const GatheredData data = GatherData(source.Sheet, PointOrder::OfSheet);
  // What a surface would show of more variables nobody can draw.
  if (kind == ResultPlotKind::Model && data.Points.X.size() > 2)
    return EstimatePreview(source.Model, source.Model.CoefficientValues, data.Points, AxisTitles(source.Sheet),
                           settings);
  const std::size_t calculated = ScatterTypes(source.Sheet).size() - 1;
  return PlotOfResults(kind, SolvedItem{.Model = &source.Model}, data, source.Sheet, settings, {}, calculated);
}

ReportPlot PlotOf(ResultPlotKind kind, const ReportSource& source, Settings& settings) {
  Result<std::unique_ptr<PlotPage>> page = PageOf(kind, source, settings);
  if (!page) return {"", page.error()};
  std::vector<std::string> none;
  if (kind == ResultPlotKind::Model) ShowBands(**page, BandKind::Confidence, kBandLevel, none);
  NotingPrompter user;
  std::optional<PlotDocument> document = NewPlotDocument(std::move(*page), settings, user);
  if (!document || !document->Plot().PlotCreated) return {"", kPlotFailure};
  return {PlotFileText(document->Plot()), ""};
}

}  // namespace

FitReport DescribeFit(const ReportSource& source, const Settings& settings) {
  return Describer(source, settings).Describe();
}

std::vector<ReportPlot> PlotsOfReport(const ReportSource& source, Settings& settings) {
  return {PlotOf(ResultPlotKind::Model, source, settings), PlotOf(ResultPlotKind::Residuals, source, settings)};
}

void PlacePicture(FitReport& report, std::size_t number, const ReportPlot& plot, const Result<std::string>& svg) {
  for (ReportSection& section : report.Sections)
    for (ReportBlock& block : section.Blocks)
      if (auto* figure = std::get_if<ReportFigure>(&block); figure != nullptr && figure->HasPicture && number-- == 0) {
        if (svg) figure->Svg = *svg;
        if (svg) figure->Plot = plot.Text;
        if (!svg) figure->WhyNot = svg.error();
        return;
      }
}

}  // namespace quorvex
