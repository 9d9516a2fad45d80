#include <algorithm>
#include <array>

#include "core/TextEncoding.h"
#include "core/XmlText.h"
#include "report/ReportFormat.h"

namespace quorvex {
namespace {

std::string Base64(std::string_view bytes) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::string_view three = bytes.substr(i, 3);
    unsigned value = 0;
    for (std::size_t k = 0; k < 3; ++k)
      value = value << 8 | (k < three.size() ? static_cast<unsigned char>(three[k]) : 0u);
    for (std::size_t k = 0; k < 4; ++k) text += k <= three.size() ? kDigits[value >> (18 - 6 * k) & 63] : '=';
  }
  return text;
}

// Longer than any row of such signs in the text.
std::string FenceAround(std::string_view text) {
  std::size_t longest = 2, run = 0;
  for (const char c : text) {
    run = c == '`' ? run + 1 : 0;
    longest = std::max(longest, run);
  }
  return std::string(longest + 1, '`');
}

std::string PictureName(int picture) { return "picture-" + std::to_string(picture); }

struct BlockWriter {
  int Picture;
  char DecimalSeparator;

  std::string operator()(const ReportText& text) const { return MarkdownText(text.Text) + "\n"; }

  std::string operator()(const ReportList& list) const {
    std::string text;
    for (const std::string& item : list.Items) text += "- " + MarkdownText(item) + "\n";
    return text;
  }

  std::string operator()(const ReportFormula& formula) const { return "$$\n" + formula.Latex + "\n$$\n"; }

  std::string operator()(const ReportTable& table) const {
    std::string text = table.Caption.empty() ? "" : "**" + MarkdownText(table.Caption) + "**\n\n";
    std::string rule = "|";
    text += "|";
    for (const ReportColumn& column : table.Columns) {
      text += " " + MarkdownText(column.Heading) + " |";
      rule += column.HasNumbers ? " ---: |" : " --- |";
    }
    text += "\n" + rule + "\n";
    for (const std::vector<std::string>& row : table.Rows) {
      text += "|";
      for (const std::string& cell : row) text += " " + MarkdownText(cell) + " |";
      text += "\n";
    }
    return text;
  }

  std::string operator()(const ReportFigure& figure) const {
    if (!figure.HasPicture) return "";
    if (figure.Svg.empty()) return MarkdownText(figure.Title + ": " + figure.WhyNot) + "\n";
    return "![" + MarkdownText(figure.Title) + "][" + PictureName(Picture) + "]\n\n" +
           MarkdownText(figure.Title + ". " + figure.Description) + "\n";
  }

  std::string operator()(const ReportCode& code) const {
    const std::string fence = FenceAround(code.Text);
    const std::string end = code.Text.ends_with('\n') ? "" : "\n";
    return fence + code.Language + "\n" + code.Text + end + fence + "\n";
  }

  std::string operator()(const ReportData& data) const {
    std::string note;
    const std::string table = (*this)(TableOf(data, DecimalSeparator, note));
    return note.empty() ? table : MarkdownText(note) + "\n\n" + table;
  }
};

}  // namespace

// Every sign that may be markup somewhere gets a backslash, those of HTML become references, and all of it stands in
// one line. A number at the front of a paragraph would begin a list by the point behind it.
std::string MarkdownText(std::string_view text) {
  constexpr std::string_view kMarkup = "\\`*_{}[]#|~$^";
  std::string markdown;
  const std::string safe = XmlText(text);
  const std::size_t digits = std::min(safe.find_first_not_of("0123456789"), safe.size());
  for (std::size_t i = 0; i < safe.size(); ++i) {
    const char c = safe[i];
    const bool beginsList =
        ((c == '-' || c == '+') && i == 0 && safe.size() > 1 && safe[1] == ' ') ||
        (digits > 0 && i == digits && (c == '.' || c == ')') && i + 1 < safe.size() && safe[i + 1] == ' ');
    const bool isRule = i == 0 && (c == '-' || c == '=') && safe.find_first_not_of("-= ") == std::string::npos;
    if (kMarkup.find(c) != std::string_view::npos || beginsList || isRule) markdown += '\\';
    markdown += c;
  }
  return markdown;
}

std::string MarkdownBlock(const ReportBlock& block, int picture, char decimalSeparator) {
  return std::visit(BlockWriter{picture, decimalSeparator}, block);
}

std::string MarkdownReport(const FitReport& report) {
  std::string text = "# " + MarkdownText(report.Title) + "\n\n**" + MarkdownText(report.Verdict) + "**\n\n" +
                     MarkdownText(report.Program + ", " + report.Date) + "\n";
  std::string pictures;
  int count = 0;
  for (const ReportSection& section : report.Sections) {
    text += "\n## " + MarkdownText(section.Heading) + "\n";
    for (const ReportBlock& block : section.Blocks) {
      const auto* figure = std::get_if<ReportFigure>(&block);
      if (figure != nullptr && !figure->Svg.empty())
        pictures += "\n[" + PictureName(++count) + "]: data:image/svg+xml;base64," + Base64(figure->Svg);
      text += "\n" + MarkdownBlock(block, count, report.DecimalSeparator);
    }
  }
  return text + (pictures.empty() ? "" : pictures + "\n");
}

}  // namespace quorvex
