#pragma once

#include <string>
#include <variant>
#include <vector>

namespace quorvex {

// The report on a fit as a document: what it tells, in the order in which it tells it, gathered once for all formats.
// All texts are plain, and may hold any character; numbers in them have the decimal separator of the report, those of
// code a point. A writer (ReportFormat.h)
// makes of them what its format has.

struct ReportText {
  std::string Text;  // a paragraph
};

struct ReportList {
  std::vector<std::string> Items;
};

struct ReportFormula {
  std::string Latex, MathML;  // code/Formula.h
};

struct ReportColumn {
  std::string Heading;
  bool HasNumbers = false;
};

// The first cell of a row says what the row is of. A table without headings tells a value each row.
struct ReportTable {
  std::string Caption;
  std::vector<ReportColumn> Columns;
  std::vector<std::vector<std::string>> Rows;

  bool HasHeadings() const;
};

// Points, or a curve through them.
struct ReportSeries {
  std::string Legend;
  bool IsCurve = false;
  std::vector<double> X = {}, Y = {};
};

// A surface has no numbers; how calculated and measured values agree stands in its place where there are no pictures.
enum class ReportFigureKind { Curve, Surface, Agreement, Residuals };

// A picture, and the numbers behind it for formats that draw themselves.
struct ReportFigure {
  ReportFigureKind Kind = ReportFigureKind::Curve;
  std::string Title, Description, XTitle = {}, YTitle = {};
  bool HasPicture = true;   // else the numbers alone
  std::string Svg = {};     // a whole document; empty where nobody could draw it
  std::string WhyNot = {};  // a sentence, where it is empty
  std::string Plot = {};    // the text of its plot file
  std::vector<ReportSeries> Series = {};
};

struct ReportCode {
  std::string Language;  // in lower case
  std::string Text;      // lines
  bool Runs = false;     // in the notebook
};

// The points of the fit, in columns of equal length: those of X first, then Y, then standard deviations where there are
// any.
struct ReportData {
  std::vector<std::string> Headings;
  std::vector<std::string> Names = {};  // the same as names of a programming language: x1, x2, y, sd
  std::vector<std::vector<double>> Columns = {};
};

using ReportBlock =
    std::variant<ReportText, ReportList, ReportFormula, ReportTable, ReportFigure, ReportCode, ReportData>;

struct ReportSection {
  std::string Heading;
  std::vector<ReportBlock> Blocks;
};

// The model's function in the code that runs, and a value that it must give.
struct ReportProof {
  std::string Function, Call;
  double Value = 0;
};

struct FitReport {
  std::string Title, Verdict;  // what was fitted, and a sentence on whether to trust it
  std::string Program, Date;
  char DecimalSeparator = '.';
  std::vector<ReportSection> Sections = {};
  std::vector<ReportProof> Proof = {};  // one or none
};

// The data as a table of texts: all points where they are few, else the first and the last ones with a row of dots
// between them, which `note` tells; else that is empty.
ReportTable TableOf(const ReportData& data, char decimalSeparator, std::string& note);

// A number of a table, to seven digits; empty for none.
std::string ReportNumber(double value, char decimalSeparator);

}  // namespace quorvex
