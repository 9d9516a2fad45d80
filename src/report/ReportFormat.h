#pragma once

#include <span>
#include <string>
#include <string_view>

#include "report/FitReport.h"

namespace quorvex {

// A form that reports are written in, a file of its own each. No text of a report, whatever it holds, can end what it
// stands in. Lines end with LF.
struct ReportFormat {
  const char* Ending;   // of its files' names
  const char* Filter;   // in file dialogs
  const char* Content;  // what such a file is said to contain
  bool ShowsPictures;   // as they are drawn; else numbers suffice
  bool IsPrinted;       // what Write gives is for the program that draws, which makes the file of it
  std::string (*Write)(const FitReport& report);
};

// All of them, as file dialogs offer them.
std::span<const ReportFormat> ReportFormats();
std::string ReportFilters();

// By the ending of a file's name, whatever its case; null where it is of none.
const ReportFormat* ReportFormatOf(std::string_view fileName);

// What is said of such a name.
std::string UnknownReport(const std::string& fileName);
// What is said where a report can't be written, with the reason, a sentence.
std::string NoReportText(const std::string& fileName, const std::string& why);

// One HTML 5 document, which is well-formed XML, too: pictures and style in it, formulas as MathML, nothing of any
// other file or of a network. Follows the reader's choice of dark or light, and prints without breaking a table.
std::string HtmlReport(const FitReport& report);

// What the program that draws makes a PDF document of: the same page, and the text of each picture's plot file, each
// behind a NUL. Asked for in the place of a picture's ending.
std::string PrintedReport(const FitReport& report);
inline constexpr std::string_view kPrintedReport = "report";

// Markdown with tables (GitHub's), formulas between $$, and pictures as data within the file, which some programs that
// show Markdown refuse: they show the picture's name instead.
std::string MarkdownReport(const FitReport& report);
// One of its parts, and a text in it, as notebooks have them, too. `picture` counts the pictures.
std::string MarkdownBlock(const ReportBlock& block, int picture, char decimalSeparator);
std::string MarkdownText(std::string_view text);

// A LaTeX article for any of its engines, plots drawn by pgfplots.
std::string LatexReport(const FitReport& report);
std::string LatexText(std::string_view text);

// A Jupyter notebook (nbformat 4.5) of Python, which runs from top to bottom: data and model first, then the rest.
std::string NotebookReport(const FitReport& report);

}  // namespace quorvex
