#include "app/HelpPages.h"

namespace quorvex {
namespace {

constexpr HelpPage kRows[] = {
    {"quorvexWindow", "sheet.html"},
    {"NewProj", "sheet.html#new"},
    {"frmImport", "import.html"},
    {"frmDataBase", "import.html#database"},
    {"SolveSetup", "solve.html#setup"},
    {"Regress", "solve.html#single"},
    {"Groups", "solve.html#groups"},
    {"Interp", "solve.html#interpolation"},
    {"Solve", "solve.html#run"},
    {"reginit", "solve.html#estimates"},
    {"ABortOnMissing", "solve.html#rows"},
    {"ClearFits", "solve.html#clear"},
    {"usereq", "models.html"},
    {"frmEqEdit", "models.html#editor"},
    {"frmPartial", "models.html#derivatives"},
    {"frmCopyModel", "models.html#copy"},
    {"frmChooseModel", "models.html#files"},
    {"frmResults", "results.html"},
    {"Dataplot", "plots.html"},
    {"PlotWindow", "plots.html"},
    {"Properties2D", "plots.html#properties"},
    {"Properties3D", "plots.html#properties"},
    {"PSetup", "plots.html#paper"},
    {"frmMacro", "macros.html"},
    {"frmViewMacro", "macros.html#view"},
    {"FilePref", "preferences.html#solver"},
    {"frmGenPref", "preferences.html#general"},
};

}  // namespace

std::span<const HelpPage> HelpPages() { return kRows; }

std::string HelpPageOf(std::string_view windowClass) {
  if (const auto scope = windowClass.rfind("::"); scope != std::string_view::npos) windowClass.remove_prefix(scope + 2);
  for (const HelpPage& row : kRows)
    if (row.Window == windowClass) return std::string(row.Page);
  return "index.html";
}

}  // namespace quorvex
