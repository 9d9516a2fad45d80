#include <algorithm>

#include "core/JsonText.h"
#include "core/NumberText.h"
#include "report/ReportFormat.h"

namespace quorvex {
namespace {

std::string PythonNumber(double value) { return ShortestNumber(value); }

std::string PythonList(const std::vector<double>& values) {
  constexpr std::size_t kInALine = 8;
  std::string text = "[";
  for (std::size_t i = 0; i < values.size(); ++i)
    text += (i % kInALine == 0 ? "\n    " : " ") + PythonNumber(values[i]) + ",";
  return text + "\n]";
}

// JSON's escapes are those of Python, too.
std::string PythonText(std::string_view text) { return JsonText(text); }

std::string DataCell(const ReportData& data) {
  std::string code;
  for (std::size_t c = 0; c < data.Columns.size(); ++c)
    code += data.Names[c] + " = " + PythonList(data.Columns[c]) + "\n";
  return code;
}

class Notebook {
 public:
  explicit Notebook(const FitReport& report) : report_(report) {
    for (const ReportSection& section : report.Sections)
      for (const ReportBlock& block : section.Blocks)
        if (const auto* data = std::get_if<ReportData>(&block)) data_ = data;
  }

  std::string Write() {
    Markdown("# " + MarkdownText(report_.Title) + "\n\n**" + MarkdownText(report_.Verdict) + "**\n\n" +
             MarkdownText(report_.Program + ", " + report_.Date));
    // What the other cells compute with comes first.
    for (const bool runs : {true, false})
      for (const ReportSection& section : report_.Sections)
        if (IsCode(section) == runs) Section(section);
    return "{\n \"cells\": [\n" + cells_ +
           "\n ],\n \"metadata\": {\n  \"kernelspec\": {\"display_name\": \"Python 3\", \"language\": \"python\", "
           "\"name\": \"python3\"},\n  \"language_info\": {\"name\": \"python\"}\n },\n \"nbformat\": 4,\n "
           "\"nbformat_minor\": 5\n}\n";
  }

 private:
  static bool IsCode(const ReportSection& section) {
    return std::ranges::any_of(section.Blocks, [](const ReportBlock& block) {
      const auto* code = std::get_if<ReportCode>(&block);
      return std::holds_alternative<ReportData>(block) || (code != nullptr && code->Runs);
    });
  }

  // What is no code of its own goes into one cell, as far as it stands together.
  void Section(const ReportSection& section) {
    std::string text = "## " + MarkdownText(section.Heading) + "\n";
    for (const ReportBlock& block : section.Blocks) {
      if (std::holds_alternative<ReportFigure>(block) && CellOf(block).empty()) continue;
      const std::string cell = CellOf(block);
      if (cell.empty()) {
        text += "\n" + MarkdownBlock(block, 0, report_.DecimalSeparator);
        continue;
      }
      if (!text.empty()) Markdown(text);
      text.clear();
      Code(cell);
    }
    if (!text.empty()) Markdown(text);
  }

  std::string CellOf(const ReportBlock& block) const {
    if (const auto* data = std::get_if<ReportData>(&block)) return DataCell(*data);
    if (const auto* code = std::get_if<ReportCode>(&block); code != nullptr && code->Runs) return code->Text + Check();
    if (const auto* figure = std::get_if<ReportFigure>(&block)) return FigureCell(*figure);
    return "";
  }

  std::string Check() const {
    if (report_.Proof.empty()) return "";
    const ReportProof& proof = report_.Proof.front();
    const std::string value = PythonNumber(proof.Value);
    return "\n\n# The value that the program computed.\nassert math.isclose(" + proof.Call + ", " + value +
           ", rel_tol=1e-9, abs_tol=1e-300)\n";
  }

  // Draws by the function, so that it follows what its reader changes.
  std::string FigureCell(const ReportFigure& figure) const {
    if (figure.Series.empty() || data_ == nullptr || report_.Proof.empty()) return "";
    const std::size_t last = static_cast<std::size_t>(std::ranges::find(data_->Names, "y") - data_->Names.begin());
    std::string columns;
    for (std::size_t c = 0; c < last; ++c) columns += data_->Names[c] + ", ";
    std::string code =
        "def value(*point):\n"
        "    try:\n"
        "        return " +
        report_.Proof.front().Function +
        "(*point)\n"
        "    except (ArithmeticError, ValueError):\n"
        "        return math.nan\n"
        "\n"
        "\n"
        "try:\n"
        "    import matplotlib.pyplot as plt\n"
        "except ImportError:\n"
        "    print(\"There is no matplotlib to draw this figure with.\")\n"
        "else:\n"
        "    fitted = [value(*point) for point in zip(" +
        columns.substr(0, columns.size() - 2) + ")]\n    figure, axes = plt.subplots()\n";
    switch (figure.Kind) {
      case ReportFigureKind::Surface:
        break;
      case ReportFigureKind::Curve:
        code +=
            "    along = [min(x) + (max(x) - min(x)) * i / 400 for i in range(401)]\n"
            "    axes.plot(x, y, \"o\", mfc=\"none\")\n"
            "    axes.plot(along, [value(at) for at in along])\n";
        break;
      case ReportFigureKind::Agreement:
        code +=
            "    axes.plot(y, fitted, \"o\", mfc=\"none\")\n"
            "    axes.axline((y[0], y[0]), slope=1)\n";
        break;
      case ReportFigureKind::Residuals:
        code +=
            "    axes.plot(fitted, [measured - f for measured, f in zip(y, fitted)], \"o\", mfc=\"none\")\n"
            "    axes.axhline(0)\n";
    }
    // A "$" would begin mathematics.
    const auto label = [](std::string text) {
      for (std::size_t at = 0; (at = text.find('$', at)) != std::string::npos; at += 2) text.insert(at, "\\");
      return PythonText(text);
    };
    return code + "    axes.set(title=" + label(figure.Title) + ", xlabel=" + label(figure.XTitle) +
           ", ylabel=" + label(figure.YTitle) + ")\n    plt.show()\n";
  }

  void Markdown(const std::string& text) { Cell("markdown", text, ""); }
  void Code(const std::string& text) { Cell("code", text, "\"execution_count\": null, \"outputs\": [], "); }

  void Cell(const std::string& type, std::string text, const std::string& more) {
    while (text.ends_with('\n')) text.pop_back();
    cells_ += (cells_.empty() ? "" : ",\n") + std::string("  {\"cell_type\": \"") + type + "\", \"id\": \"cell-" +
              std::to_string(++count_) + "\", \"metadata\": {}, " + more + "\"source\": " + JsonText(text) + "}";
  }

  const FitReport& report_;
  const ReportData* data_ = nullptr;
  std::string cells_;
  int count_ = 0;
};

}  // namespace

std::string NotebookReport(const FitReport& report) { return Notebook(report).Write(); }

}  // namespace quorvex
