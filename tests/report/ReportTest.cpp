#include <gtest/gtest.h>

#include "core/NumberText.h"
#include "report/ReportFormat.h"
#include "report/TableBlocks.h"

namespace quorvex {
namespace {

constexpr const char* kHostile[] = {
    "</script><script>alert(1)</script>",
    "a & b < c > \"d\" 'e'",
    "]]> --> */ \"\"\" '''",
    "$x$ $$ \\[ \\end{document} \\",
    "{a}_b^c~d #1 100 % |",
    "``` ```` `",
    "- item",
    "1. item",
    "# heading",
    "\xC3\xA4\xCF\x83\xE4\xB8\xAD\xF0\x9F\x98\x80",
    "\xFF\xFE broken",
    "line\nend\r\nand\ttab \x01",
    "| a | b |",
    "![x](http://y) [z]: w",
    "<!-- ?> <?php",
};

// A report with the text wherever there may be one.
FitReport ReportOf(const std::string& text) {
  FitReport report{.Title = text, .Verdict = text, .Program = text, .Date = text};
  const ReportSeries line{.Legend = text, .IsCurve = true, .X = {1, 2}, .Y = {3, 4}};
  report.Sections.push_back(
      {text,
       {ReportText{text}, ReportList{{text, text}}, ReportFormula{"x", "<math><mi>x</mi></math>"},
        ReportTable{text, {{text}, {text, true}}, {{text, "-1.5E-7"}, {text, text}}},
        ReportFigure{.Title = text,
                     .Description = text,
                     .XTitle = text,
                     .YTitle = text,
                     .Svg = "<?xml version=\"1.0\"?>\n<svg><g/></svg>\n",
                     .Series = {line}},
        ReportFigure{.Title = text, .Description = text, .WhyNot = text}, ReportCode{"text", text + "\n" + text},
        ReportCode{"python", "pass\n", true}, ReportData{{text, text}, {"x", "y"}, {{1, 2}, {3, 4}}}}});
  report.Proof.push_back({"f", "f(1.0)", 2});
  return report;
}

// Why a text is no well-formed XML, as far as the writers of reports could break it; empty where it is.
std::string XmlFault(std::string_view xml) {
  std::vector<std::string> open;
  for (std::size_t at = xml.find('<'); at != std::string_view::npos; at = xml.find('<', at + 1)) {
    const std::size_t end = xml.find('>', at);
    if (end == std::string_view::npos) return "a tag without an end";
    const std::string_view tag = xml.substr(at + 1, end - at - 1);
    if (tag.starts_with("!DOCTYPE")) continue;
    if (tag.find('<') != std::string_view::npos) return "a sign within a tag: " + std::string(tag);
    const std::string name(tag.substr(0, tag.find_first_of(" /\n", 1)));
    if (tag.starts_with('/')) {
      if (open.empty() || "/" + open.back() != name) return "an end of " + name;
      open.pop_back();
    } else if (!tag.ends_with('/')) {
      if (name.empty() || std::isalpha(static_cast<unsigned char>(name[0])) == 0) return "no tag: " + std::string(tag);
      open.push_back(name);
    }
  }
  return open.empty() ? "" : "left open: " + open.back();
}

// The place behind a JSON value; npos where there is none.
std::size_t JsonEnd(std::string_view json, std::size_t at) {
  constexpr auto kNone = std::string_view::npos;
  const auto blanks = [&] { at = std::min(json.find_first_not_of(" \n", at), json.size()); };
  blanks();
  if (at >= json.size()) return kNone;
  const char c = json[at];
  if (c == '"') {
    for (++at; at < json.size() && json[at] != '"'; ++at) {
      if (static_cast<unsigned char>(json[at]) < ' ') return kNone;
      if (json[at] == '\\') ++at;
    }
    return at < json.size() ? at + 1 : kNone;
  }
  if (c != '{' && c != '[') return std::min(json.find_first_of(",]} \n", at), json.size());
  const char close = c == '{' ? '}' : ']';
  ++at;
  blanks();
  if (json[at] == close) return at + 1;
  while (true) {
    if (c == '{') {
      at = JsonEnd(json, at);
      if (at == kNone) return kNone;
      blanks();
      if (json[at++] != ':') return kNone;
    }
    at = JsonEnd(json, at);
    if (at == kNone) return kNone;
    blanks();
    if (json[at] == close) return at + 1;
    if (json[at++] != ',') return kNone;
    blanks();
  }
}

// Whether braces are balanced and every sign that TeX acts upon stands behind a backslash.
bool IsPlainLatex(std::string_view text) {
  int depth = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\\' && i + 1 < text.size()) {
      ++i;
      continue;
    }
    depth += c == '{' ? 1 : c == '}' ? -1 : 0;
    if (depth < 0 || std::string_view("$&#_%~^\n\\").find(c) != std::string_view::npos) return false;
  }
  return depth == 0;
}

std::size_t Count(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

TEST(Reports, StayWholeWhateverTheirTextsHold) {
  const FitReport plain = ReportOf("plain");
  const std::string plainText = MarkdownReport(plain);
  for (const std::string text : kHostile) {
    SCOPED_TRACE(text);
    const FitReport report = ReportOf(text);
    const std::string html = HtmlReport(report);
    EXPECT_EQ(XmlFault(html), "");
    EXPECT_EQ(Count(html, "<script"), 0u);
    EXPECT_EQ(Count(html, "<?"), 0u);

    const std::string notebook = NotebookReport(report);
    const std::size_t end = JsonEnd(notebook, 0);
    ASSERT_NE(end, std::string::npos);
    EXPECT_EQ(notebook.substr(end), "\n");

    EXPECT_TRUE(IsPlainLatex(LatexText(text))) << LatexText(text);
    const std::string latex = LatexReport(report);
    EXPECT_EQ(Count(latex, "\\end{document}"), 1u);

    const std::string markdown = MarkdownText(text);
    EXPECT_EQ(markdown.find('\n'), std::string::npos);
    EXPECT_EQ(markdown.find('<'), std::string::npos);
    // As many headings and rows of tables as that of harmless texts, besides those in code.
    const std::string document = MarkdownReport(report);
    EXPECT_EQ(Count(document, "\n## "), Count(plainText, "\n## "));
    EXPECT_EQ(Count(document, " |\n| "), Count(plainText, " |\n| ") + Count(text + "\n" + text, " |\n| "));
  }
}

TEST(Reports, WriteTextsAsEachFormatHasThem) {
  const struct {
    const char *Text, *Markdown, *Latex;
  } cases[] = {
      {"a_b*c", "a\\_b\\*c", "a\\_b{*}c"},
      {"<b> & \"c\"", "&lt;b&gt; &amp; &quot;c&quot;",
       "\\textless{}b\\textgreater{} \\& \\textquotedbl{}c\\textquotedbl{}"},
      {"1. a", "1\\. a", "1. a"},
      {"- a", "\\- a", "{-} a"},
      {"[a](b) | $x$", "\\[a\\](b) \\| \\$x\\$", "{[}a{]}(b) \\textbar{} \\$x\\$"},
      {"\\^~", "\\\\\\^\\~", "\\textbackslash{}\\textasciicircum{}\\textasciitilde{}"},
      {"\xFFz\n", "\xEF\xBF\xBDz ", "\xEF\xBF\xBDz "},
  };
  for (const auto& [text, markdown, latex] : cases) {
    EXPECT_EQ(MarkdownText(text), markdown);
    EXPECT_EQ(LatexText(text), latex);
  }
}

// A name of a file decides by its ending, whatever its case.
TEST(Reports, AreOfTheFormatThatTheNameAsksFor) {
  EXPECT_EQ(ReportFormatOf("a.HTML")->Write, HtmlReport);
  EXPECT_EQ(ReportFormatOf("a.b.ipynb")->Write, NotebookReport);
  for (const char* name : {"a.odt", "html", "", "a.html.gz"}) EXPECT_EQ(ReportFormatOf(name), nullptr) << name;
  EXPECT_EQ(UnknownReport("a.odt"),
            "The report 'a.odt' is not written: its name ends in none of .html, .pdf, .md, .tex, .ipynb.");
}

TEST(Reports, TellTheEndsOfLongData) {
  ReportData data{{"X"}, {"x"}, {std::vector<double>(201)}};
  for (std::size_t i = 0; i < 201; ++i) data.Columns[0][i] = 0.1 * static_cast<double>(i);
  std::string note;
  const ReportTable table = TableOf(data, ',', note);
  EXPECT_EQ(note, "The first and the last 20 of 201 points.");
  ASSERT_EQ(table.Rows.size(), 41u);
  EXPECT_EQ(table.Rows[19], (std::vector<std::string>{"20", "1,9"}));
  EXPECT_EQ(table.Rows[20], (std::vector<std::string>{"...", "..."}));
  EXPECT_EQ(table.Rows[21], (std::vector<std::string>{"182", "18,1"}));
  EXPECT_EQ(table.Rows[40][0], "201");
  data.Columns[0].resize(200);
  EXPECT_EQ(TableOf(data, ',', note).Rows.size(), 200u);
  EXPECT_EQ(note, "");
}

TEST(TableBlocks, TakeLinesAndHeadedRowsApart) {
  Report rows;
  rows.Add(RowKind::Line, {"Left out: ", "x"});
  rows.Add(RowKind::Line, {"R = ", "0.5"});
  rows.Add(RowKind::Line, {"Solver: Linear"});
  rows.Add(RowKind::Line, {});
  rows.Add(RowKind::Heading, {"Gone"});
  rows.Add(RowKind::Values, {"a", "1"});
  rows.Add(RowKind::Heading, {"Table"});
  rows.Add(RowKind::ColumnHeadings, {"Name", "Value", "Note"});
  rows.Add(RowKind::Remarked, {"a", "1E-5", "free"});
  rows.Add(RowKind::Remarked, {"b", "none"});
  const std::vector<ReportBlock> blocks = BlocksOf(rows, {}, {"Left out: ", "Gone"});
  ASSERT_EQ(blocks.size(), 2u);
  const auto& lines = std::get<ReportTable>(blocks[0]);
  EXPECT_FALSE(lines.HasHeadings());
  EXPECT_EQ(lines.Rows, (std::vector<std::vector<std::string>>{{"R", "0.5"}, {"Solver", "Linear"}}));
  const auto& table = std::get<ReportTable>(blocks[1]);
  EXPECT_EQ(table.Caption, "Table");
  EXPECT_EQ(table.Rows[1], (std::vector<std::string>{"b", "none", ""}));
  EXPECT_TRUE(table.Columns[1].HasNumbers);
  EXPECT_FALSE(table.Columns[2].HasNumbers);
}

}  // namespace
}  // namespace quorvex
