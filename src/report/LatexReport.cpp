#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>

#include "code/Formula.h"
#include "core/NumberText.h"
#include "core/TextEncoding.h"
#include "report/ReportFormat.h"

namespace quorvex {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
constexpr std::size_t kMostPointsDrawn = 1000;  // TeX holds all of them in memory at once
constexpr std::size_t kRowsOfAPage = 30, kColumnsOfAPage = 7;

// Takes a character of UTF-8 off the front; U+FFFD for a byte that is none, a blank for control characters.
std::string_view TakeCharacter(std::string_view& text) {
  const std::size_t length = Utf8Length(text);
  std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
  text.remove_prefix(character.size());
  const auto first = static_cast<unsigned char>(character[0]);
  if (length == 0) return kReplacement;
  return first < ' ' || first == 0x7F ? " " : character;
}

std::uint32_t CodePoint(std::string_view character) {
  const auto first = static_cast<unsigned char>(character[0]);
  std::uint32_t code = first < 0x80 ? first : first < 0xE0 ? first & 0x1Fu : first < 0xF0 ? first & 0xFu : first & 7u;
  for (const char c : character.substr(1)) code = code << 6 | (static_cast<unsigned char>(c) & 0x3Fu);
  return code;
}

std::string Hexadecimal(std::uint32_t code) {
  std::string text;
  for (; code > 0 || text.size() < 4; code /= 16) text.insert(text.begin(), "0123456789ABCDEF"[code % 16]);
  return text;
}

// Greek letters have a sign in every font of mathematics; what pdfTeX has none for, it shows as its number.
std::string Fallback(std::uint32_t code) {
  static constexpr const char* kGreek[] = {
      "alpha", "beta", "gamma", "delta", "epsilon",  "zeta",  "eta", "theta",   "iota", "kappa", "lambda", "mu",   "nu",
      "xi",    "",     "pi",    "rho",   "varsigma", "sigma", "tau", "upsilon", "phi",  "chi",   "psi",    "omega"};
  const std::string letter = code >= 0x3B1 && code <= 0x3C9 ? kGreek[code - 0x3B1] : "";
  if (!letter.empty()) return "\\ensuremath{\\" + letter + "}";
  return "{\\footnotesize[U+" + Hexadecimal(code) + "]}";
}

// What pdfTeX is to make of the characters of a document that it has nothing for. The other engines have all
// characters, as far as their font has.
std::string Declarations(std::string_view document) {
  std::map<std::uint32_t, std::string_view> wanted;
  while (!document.empty())
    if (const std::string_view character = TakeCharacter(document); character.size() > 1)
      wanted.emplace(CodePoint(character), character);
  if (wanted.empty()) return "";
  std::string lines =
      "\\newcommand{\\OrElse}[3]{\\ifcsname "
      "u8:\\detokenize{#1}\\endcsname\\else\\DeclareUnicodeCharacter{#2}{#3}\\fi}\n"
      "\\ifdefined\\DeclareUnicodeCharacter\n";
  for (const auto& [code, character] : wanted)
    lines += "\\OrElse{" + std::string(character) + "}{" + Hexadecimal(code) + "}{" + Fallback(code) + "}\n";
  return lines + "\\fi\n";
}

// Lines of a program: every blank and every character as it is, broken where the paper ends.
std::string CodeLines(std::string_view code) {
  std::string text = "\\begingroup\\small\\ttfamily\\raggedright\\setlength{\\parindent}{0pt}\n";
  while (!code.empty()) {
    std::string line;
    for (const char c : LatexText(TakeLine(code))) line += c == ' ' ? std::string("\\ ") : std::string(1, c);
    text += "\\mbox{}" + line + "\\par\n";
  }
  return text + "\\endgroup\n";
}

std::string Coordinates(const ReportSeries& series) {
  const std::size_t step = (series.X.size() + kMostPointsDrawn - 1) / kMostPointsDrawn;
  std::string text;
  for (std::size_t i = 0; i < series.X.size(); i += std::max<std::size_t>(step, 1))
    text += "(" + GeneralNumber(series.X[i], 9) + "," + GeneralNumber(series.Y[i], 9) + ")\n";
  return text;
}

// A comma between digits stands close in mathematics where it is in braces.
std::string WithSeparator(std::string number, char separator) {
  const std::size_t point = number.find('.');
  if (point != std::string::npos)
    number.replace(point, 1, separator == '.' ? "." : "{" + std::string(1, separator) + "}");
  return number;
}

struct BlockWriter {
  const FitReport& Whole;

  std::string operator()(const ReportText& text) const { return LatexText(text.Text) + "\n"; }

  std::string operator()(const ReportList& list) const {
    std::string text = "\\begin{itemize}\n";
    for (const std::string& item : list.Items) text += "\\item{} " + LatexText(item) + "\n";
    return text + "\\end{itemize}\n";
  }

  std::string operator()(const ReportFormula& formula) const { return "\\[\n" + formula.Latex + "\n\\]\n"; }

  std::string operator()(const ReportTable& table) const {
    if (table.Rows.empty()) return "";
    // The texts at the end of a row are the longest of a table, and may be sentences.
    const bool isWide = table.Columns.size() > kColumnsOfAPage;
    std::string columns;
    for (std::size_t c = 0; c < table.Columns.size(); ++c)
      columns += table.Columns[c].HasNumbers                         ? "r"
                 : c + 1 == table.Columns.size() && c > 0 && !isWide ? "p{.45\\linewidth}"
                                                                     : "l";
    std::string head;
    if (table.HasHeadings()) {
      std::vector<std::string> headings;
      for (const ReportColumn& column : table.Columns) headings.push_back(LatexText(column.Heading));
      head = Row(headings) + "\\hline\n";
    }
    std::string body;
    for (const std::vector<std::string>& row : table.Rows) {
      std::vector<std::string> cells;
      for (std::size_t c = 0; c < row.size(); ++c) cells.push_back(Cell(row[c], table.Columns[c].HasNumbers));
      body += Row(cells);
    }
    const std::string caption =
        table.Caption.empty() ? "" : "\\noindent\\textbf{" + LatexText(table.Caption) + "}\\nopagebreak\n\n";
    if (table.Rows.size() > kRowsOfAPage)
      return caption + "{\\small\n\\begin{longtable}{" + columns + "}\n\\hline\n" + head + "\\endhead\n" + body +
             "\\hline\n\\end{longtable}}\n";
    return caption + "\\begin{center}\\small\n" +
           // A matrix of many coefficients would leave the paper.
           (isWide ? "\\resizebox{\\linewidth}{!}{%\n" : "") + "\\begin{tabular}{" + columns + "}\n\\hline\n" + head +
           body + "\\hline\n\\end{tabular}" + (isWide ? "}" : "") + "\n\\end{center}\n";
  }

  std::string operator()(const ReportFigure& figure) const {
    if (figure.Series.empty()) return "";
    std::string text =
        "\\begin{center}\n\\begin{tikzpicture}\n\\begin{axis}[width=.8\\linewidth, height=.5\\linewidth, "
        "legend pos=outer north east, legend style={draw=none}, legend cell align=left,\n  xlabel={" +
        LatexText(figure.XTitle) + "}, ylabel={" + LatexText(figure.YTitle) + "}]\n";
    for (const ReportSeries& series : figure.Series)
      text += std::string("\\addplot[") + (series.IsCurve ? "thick, blue" : "only marks, mark=o, mark size=1.6pt") +
              "] coordinates {\n" + Coordinates(series) + "};\n";
    return text + "\\end{axis}\n\\end{tikzpicture}\n\n" + LatexText(figure.Title + ". ") +
           LatexText(LegendsText(figure)) + "\n\\end{center}\n";
  }

  std::string operator()(const ReportCode& code) const { return CodeLines(code.Text); }

  std::string operator()(const ReportData& data) const {
    std::string note;
    const std::string table = (*this)(TableOf(data, Whole.DecimalSeparator, note));
    return note.empty() ? table : LatexText(note) + "\n\n" + table;
  }

  static std::string LegendsText(const ReportFigure& figure) {
    std::string text;
    for (const ReportSeries& series : figure.Series)
      text += (text.empty() ? "" : "; ") + std::string(series.IsCurve ? "line: " : "circles: ") + series.Legend;
    return text + ".";
  }

  std::string Cell(std::string cell, bool isNumber) const {
    if (!isNumber) return LatexText(cell);
    std::ranges::replace(cell, Whole.DecimalSeparator, '.');
    const std::optional<double> value = NumericText(cell);
    return value ? "$" + WithSeparator(LatexNumber(*value), Whole.DecimalSeparator) + "$" : LatexText(cell);
  }

  static std::string Row(const std::vector<std::string>& cells) {
    std::string row;
    for (std::size_t c = 0; c < cells.size(); ++c) row += (c > 0 ? " & " : "") + cells[c];
    return row + " \\\\\n";
  }
};

}  // namespace

// Braces behind what stands for a sign, so that "[" at the front of a row is no argument and "--" no dash.
std::string LatexText(std::string_view text) {
  std::string latex;
  while (!text.empty()) {
    const std::string_view character = TakeCharacter(text);
    switch (character[0]) {
      case '\\':
        latex += "\\textbackslash{}";
        break;
      case '~':
        latex += "\\textasciitilde{}";
        break;
      case '^':
        latex += "\\textasciicircum{}";
        break;
      case '"':
        latex += "\\textquotedbl{}";
        break;
      case '\'':
        latex += "\\textquotesingle{}";
        break;
      case '`':
        latex += "\\textasciigrave{}";
        break;
      case '<':
        latex += "\\textless{}";
        break;
      case '>':
        latex += "\\textgreater{}";
        break;
      case '|':
        latex += "\\textbar{}";
        break;
      case '{':
      case '}':
      case '$':
      case '&':
      case '#':
      case '_':
      case '%':
        latex.append("\\").append(character);
        break;
      case '-':
      case '[':
      case ']':
      case '*':
      case ',':
      case '?':
      case '!':
        latex.append("{").append(character).append("}");
        break;
      default:
        latex += character;
    }
  }
  return latex;
}

std::string LatexReport(const FitReport& report) {
  std::string body = "\\title{" + LatexText(report.Title) + "}\n\\author{" + LatexText(report.Program) + "}\n\\date{" +
                     LatexText(report.Date) + "}\n\\maketitle\n\n\\noindent\\textbf{" + LatexText(report.Verdict) +
                     "}\n";
  for (const ReportSection& section : report.Sections) {
    body += "\n\\section*{" + LatexText(section.Heading) + "}\n";
    for (const ReportBlock& block : section.Blocks) body += "\n" + std::visit(BlockWriter{report}, block);
  }
  return "\\documentclass[a4paper]{article}\n"
         "\\usepackage[margin=2.5cm]{geometry}\n"
         "\\usepackage{iftex}\n"
         "\\ifpdftex\\usepackage[utf8]{inputenc}\\usepackage[T1]{fontenc}\\fi\n"
         "\\usepackage{textcomp, amsmath, amssymb, graphicx, longtable, pgfplots}\n"
         "\\pgfplotsset{compat=1.14}\n" +
         std::string(report.DecimalSeparator == ',' ? "\\pgfplotsset{/pgf/number format/use comma}\n" : "") +
         "\\emergencystretch=3em\n" + Declarations(body) + "\\begin{document}\n" + body + "\\end{document}\n";
}

}  // namespace quorvex
