#include "core/XmlText.h"
#include "report/ReportFormat.h"

namespace quorvex {
namespace {

constexpr std::string_view kStyle = R"(
:root { color-scheme: light dark; --ink: #1b1f24; --paper: #ffffff; --line: #d0d7de; --shade: #f3f5f7; --mark: #0b5cad; }
@media (prefers-color-scheme: dark) {
  :root { --ink: #e4e7eb; --paper: #16191d; --line: #3d444d; --shade: #20252b; --mark: #78b4f0; }
}
* { box-sizing: border-box; }
body { margin: 0 auto; padding: 2rem 1.25rem 4rem; max-width: 54rem; background: var(--paper); color: var(--ink);
  font: 1rem/1.55 system-ui, "Segoe UI", "DejaVu Sans", sans-serif; overflow-wrap: break-word; }
h1 { margin: 0 0 .5rem; font-size: 1.75rem; line-height: 1.25; }
h2 { margin: 2.25rem 0 .75rem; padding-bottom: .25rem; border-bottom: 1px solid var(--line); font-size: 1.25rem; }
.verdict { margin: .75rem 0; padding: .75rem 1rem; border-left: .25rem solid var(--mark); background: var(--shade);
  font-weight: 600; }
.about { opacity: .8; font-size: .875rem; }
.wide { margin: 1rem 0; overflow-x: auto; overflow-y: hidden; }
.formula { padding: .5rem 0; }
table { border-collapse: collapse; font-size: .9rem; }
caption { padding: .25rem 0; text-align: left; font-weight: 600; }
th, td { padding: .25rem .75rem; border-bottom: 1px solid var(--line); text-align: left; vertical-align: top; }
th { min-width: 5rem; overflow-wrap: anywhere; }
th[scope="row"] { font-weight: 400; }
thead th { border-bottom: 2px solid var(--line); background: var(--shade); }
.number { text-align: right; font-variant-numeric: tabular-nums; }
td.number { white-space: nowrap; }
math { font-size: 1.15rem; }
mtd { padding-left: .15em; padding-right: .15em; }
figure { margin: 1.25rem 0; }
figure svg { display: block; width: 100%; height: auto; border: 1px solid var(--line); background: #ffffff; }
figcaption { margin-top: .35rem; font-size: .875rem; }
pre { margin: 1rem 0; padding: .75rem 1rem; overflow-x: auto; border: 1px solid var(--line); background: var(--shade);
  font: .825rem/1.45 ui-monospace, "DejaVu Sans Mono", monospace; }
@media print {
  :root { color-scheme: light; --ink: #000000; --paper: #ffffff; --line: #999999; --shade: #ffffff; --mark: #000000; }
  body { max-width: none; padding: 0; font-size: 10pt; }
  h1, h2, caption { break-after: avoid; }
  figure, tr, .whole, .verdict { break-inside: avoid; }
  thead { display: table-header-group; }
  .wide, pre { overflow: visible; }
  table { font-size: 8.5pt; }
  th, td { padding: .15rem .4rem; }
  pre { white-space: pre-wrap; }
  figure svg { max-height: 11cm; }
}
)";

// More rows than a page has are broken between them, fewer stay together.
constexpr std::size_t kRowsOfAPage = 40;

std::string Element(const std::string& name, std::string_view text, const std::string& attributes = "") {
  return "<" + name + attributes + ">" + XmlText(text) + "</" + name + ">";
}

// With its line ends, which XmlText makes blanks.
std::string Lines(std::string_view text) {
  std::string lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    lines += XmlText(text.substr(0, end)) + "\n";
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

// The element alone: the head of an XML document has no place in another one.
std::string_view SvgElement(std::string_view document) {
  const std::size_t begin = document.find("<svg");
  return begin == std::string_view::npos ? "" : document.substr(begin);
}

struct BlockWriter {
  const FitReport& Whole;

  std::string operator()(const ReportText& text) const { return Element("p", text.Text) + "\n"; }

  std::string operator()(const ReportList& list) const {
    std::string html = "<ul>\n";
    for (const std::string& item : list.Items) html += Element("li", item) + "\n";
    return html + "</ul>\n";
  }

  std::string operator()(const ReportFormula& formula) const {
    return "<div class=\"wide formula\" tabindex=\"0\">\n" + formula.MathML + "\n</div>\n";
  }

  std::string operator()(const ReportTable& table) const {
    const auto look = [&](std::size_t column) {
      return std::string(table.Columns[column].HasNumbers ? " class=\"number\"" : "");
    };
    const bool isWhole = table.Rows.size() <= kRowsOfAPage;
    std::string html = std::string("<div class=\"wide") + (isWhole ? " whole" : "") + "\" tabindex=\"0\"><table>\n";
    if (!table.Caption.empty()) html += Element("caption", table.Caption) + "\n";
    if (table.HasHeadings()) {
      html += "<thead><tr>";
      for (std::size_t c = 0; c < table.Columns.size(); ++c)
        html += Element("th", table.Columns[c].Heading, " scope=\"col\"" + look(c));
      html += "</tr></thead>\n";
    }
    html += "<tbody>\n";
    for (const std::vector<std::string>& row : table.Rows) {
      html += "<tr>";
      for (std::size_t c = 0; c < row.size(); ++c)
        html += c == 0 ? Element("th", row[c], " scope=\"row\"" + look(c)) : Element("td", row[c], look(c));
      html += "</tr>\n";
    }
    return html + "</tbody></table></div>\n";
  }

  std::string operator()(const ReportFigure& figure) const {
    if (!figure.HasPicture) return "";
    if (figure.Svg.empty()) return Element("p", figure.Title + ": " + figure.WhyNot) + "\n";
    return "<figure>\n" + std::string(SvgElement(figure.Svg)) +
           Element("figcaption", figure.Title + ". " + figure.Description) + "\n</figure>\n";
  }

  std::string operator()(const ReportCode& code) const {
    return "<pre tabindex=\"0\"><code>" + Lines(code.Text) + "</code></pre>\n";
  }

  std::string operator()(const ReportData& data) const {
    std::string note;
    const std::string table = (*this)(TableOf(data, Whole.DecimalSeparator, note));
    return note.empty() ? table : (*this)(ReportText{note}) + table;
  }
};

}  // namespace

std::string HtmlReport(const FitReport& report) {
  std::string html =
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n";
  html += "<meta name=\"generator\" content=\"" + XmlText(report.Program) + "\"/>\n";
  html += Element("title", report.Title) + "\n<style>" + std::string(kStyle) + "</style>\n</head>\n<body>\n<main>\n";
  html += Element("h1", report.Title) + "\n" + Element("p", report.Verdict, " class=\"verdict\"") + "\n";
  html += Element("p", report.Program + ", " + report.Date, " class=\"about\"") + "\n";
  for (const ReportSection& section : report.Sections) {
    html += "<section>\n" + Element("h2", section.Heading) + "\n";
    for (const ReportBlock& block : section.Blocks) html += std::visit(BlockWriter{report}, block);
    html += "</section>\n";
  }
  return html + "</main>\n</body>\n</html>\n";
}

std::string PrintedReport(const FitReport& report) {
  std::string printed = HtmlReport(report);
  for (const ReportSection& section : report.Sections)
    for (const ReportBlock& block : section.Blocks)
      if (const auto* figure = std::get_if<ReportFigure>(&block); figure != nullptr && !figure->Svg.empty())
        printed.append(1, '\0').append(figure->Plot);
  return printed;
}

}  // namespace quorvex
