#include "report/ReportFormat.h"

#include <algorithm>

#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr ReportFormat kFormats[] = {
    {".html", "HTML documents (*.html)", "report as HTML", true, false, HtmlReport},
    {".pdf", "PDF documents (*.pdf)", "report as PDF", true, true, PrintedReport},
    {".md", "Markdown documents (*.md)", "report as Markdown", true, false, MarkdownReport},
    {".tex", "LaTeX documents (*.tex)", "report as LaTeX", false, false, LatexReport},
    {".ipynb", "Jupyter notebooks (*.ipynb)", "report as a notebook", false, false, NotebookReport},
};

}  // namespace

std::span<const ReportFormat> ReportFormats() { return kFormats; }

std::string ReportFilters() {
  std::string filters;
  for (const ReportFormat& format : kFormats) filters += (filters.empty() ? "" : ";;") + std::string(format.Filter);
  return filters;
}

const ReportFormat* ReportFormatOf(std::string_view fileName) {
  const std::string lower = ToLower(fileName);
  const auto* const known = std::ranges::find_if(
      kFormats, [&](const ReportFormat& format) { return std::string_view(lower).ends_with(format.Ending); });
  return known == std::end(kFormats) ? nullptr : known;
}

std::string UnknownReport(const std::string& fileName) {
  std::string endings;
  for (const ReportFormat& format : kFormats) endings += (endings.empty() ? "" : ", ") + std::string(format.Ending);
  return "The report '" + fileName + "' is not written: its name ends in none of " + endings + ".";
}

std::string NoReportText(const std::string& fileName, const std::string& why) {
  return "The report '" + fileName + "' cannot be written. " + why;
}

}  // namespace quorvex
