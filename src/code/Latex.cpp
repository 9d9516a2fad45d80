#include <algorithm>

#include "code/Formula.h"
#include "code/Languages.h"

namespace quorvex {
namespace {

// What a document takes in by \input: the formula, then the values of its coefficients.
std::string Write(const CodeModel& model, const CodeBody& body, const CodeLanguage& language) {
  CodeBody noted;
  noted.Remarks = {"To be taken into a document by \\input; its head wants \\usepackage{amsmath}."};
  for (std::string& note : FormulaNotes(model)) noted.Remarks.push_back(std::move(note));
  if (std::ranges::any_of(model.Values, HasFurtherDigits))
    noted.Remarks.push_back("The values of its coefficients are rounded to 15 digits.");
  if (model.Proof) {
    std::string proof = "At";
    for (std::size_t v = 0; v < model.Proof->X.size(); ++v)
      proof += (v > 0 ? ", " : " ") + std::string("x") + (model.Proof->X.size() > 1 ? std::to_string(v + 1) : "") +
               " = " + PlainNumber(model.Proof->X[v]);
    noted.Remarks.push_back(proof + " it gives y = " + PlainNumber(model.Proof->Y) + ".");
  }
  std::string text = CommentHead(model, noted, language) + "\\[\n" + LatexFormula(model) + "\n\\]\n";
  std::vector<std::string> values;
  const std::vector<std::string> names = LatexCoefficients(model);
  for (std::size_t i = 0; i < names.size(); ++i) values.push_back(names[i] + " &= " + LatexNumber(model.Values[i]));
  for (const auto& [word, value] : body.DataWords) values.push_back("\\mathrm{" + word + "} &= " + LatexNumber(value));
  if (values.empty()) return text;
  text += "\\begin{align*}\n";
  for (std::size_t i = 0; i < values.size(); ++i) text += values[i] + (i + 1 < values.size() ? " \\\\\n" : "\n");
  return text + "\\end{align*}\n";
}

}  // namespace

const CodeLanguage kLatex = {
    .Name = "LaTeX", .Extension = "tex", .Comment = "%", .Choice = "$1$2$3", .Number = PlainNumber, .Write = Write};

}  // namespace quorvex
