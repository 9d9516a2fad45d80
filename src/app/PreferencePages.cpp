// The rows of the preference dialogs, page by page, and the fonts of plots.

#include <array>

#include "app/Preferences.h"
#include "core/SolveData.h"
#include "plot3d/MeshSchemes.h"
#include "solve/SolveChoice.h"

namespace quorvex {
namespace {

using enum PreferenceKind;

constexpr double kMost16Bit = 32767, kMostScale = 1e300;

constexpr PreferenceChoice kDerivatives[] = {{"0", "Use Richardson's Extrapolation (Most Accurate)"},
                                             {"1", "Use Central Difference (Quickest)"},
                                             {"2", "Use Exact Derivatives (by the Rules of Calculus)"}};
constexpr PreferenceChoice kSorts[] = {{"1", "RSS"},  {"2", "R^2"}, {"3", "Ra^2"}, {"4", "StdErr"},
                                       {"5", "AICc"}, {"6", "BIC"}, {"7", "CV"}};
constexpr PreferenceChoice kAutoResults[] = {{"3", "Open when a solve ends"}, {"0", "Open when asked for"}};
constexpr PreferenceChoice kSetups[] = {
    {"0", "Single Model"}, {"1", "Groups"}, {"2", "All Models"}, {"3", "Last Solved Models"}};
constexpr PreferenceChoice kSolvers[] = {{"0", "NonLinear"}, {"1", "Linear"}};
constexpr PreferenceChoice kLosses[] = {
    {"0", kLossTexts[0]}, {"1", kLossTexts[1]}, {"2", kLossTexts[2]}, {"3", kLossTexts[3]}, {"4", kLossTexts[4]}};
constexpr auto kColorSchemes = [] {
  std::array<PreferenceChoice, kMeshSchemes> choices;
  for (std::size_t i = 0; i < choices.size(); ++i) choices[i] = {kMeshSchemeRows[i].Number(), kMeshSchemeRows[i].Name};
  return choices;
}();
constexpr PreferenceChoice kLineStyles[] = {
    {"0", "Solid"}, {"1", "Dash"}, {"2", "Dot"}, {"3", "Dash dot"}, {"4", "Dash dot dot"}};
constexpr PreferenceChoice kUnits[] = {{"inches", "inches"}, {"mm", "mm"}, {"cm", "cm"}};
constexpr PreferenceChoice kOrientations[] = {{"1", "Portrait"}, {"2", "Landscape"}};

constexpr Preference kSolver[] = {
    {"tolerance", "Regression &tolerance (%):", Real, 1e-15, 100},
    {"maxiterations", "&Maximum iterations:", Integer, 1, kMost16Bit},
    {"diviterations", "&Unchanged iterations allowed:", Integer, 1, kMost16Bit},
    {"derivative", "&Derivatives:", Choice, 0, 0, kDerivatives},
    {"threads", "T&hreads (0 for all processors):", Integer, 0, 1024},
    {"missingdatawarning", "&Warn of incomplete rows before a solve", OneOrZero},
};
constexpr Preference kResults[] = {
    {"sortindex", "S&ort solutions by:", Choice, 0, 0, kSorts},
    {"autoresults", "Results &window:", Choice, 0, 0, kAutoResults},
    {"showsumstats", "Show the s&ums and goodness of fit", OneOrZero},
    {"showvariance", "Show the &variance analysis", OneOrZero},
    {"show68ci", "Show &68% confidence intervals", OneOrZero},
    {"show90ci", "Show &90% confidence intervals", OneOrZero},
    {"show95ci", "Show 9&5% confidence intervals", OneOrZero},
    {"show99ci", "Show 99% &confidence intervals", OneOrZero},
};
constexpr PreferencePage kSolverPages[] = {{"&Solver", kSolver}, {"R&esults", kResults}};

constexpr Preference kGeneral[] = {
    {"default_numiv", "&Independent variables of a new project:", Integer, 1, kMostIndependentVariables},
    {"default_showsdev", "Standard &deviation column in a new project", TrueOrFalse},
    {"undolevels", "&Undo levels (0 for none):", Integer, 0, 1000},
    {"logintimeout", "&Connect to a database within (s, 0 for any time):", Integer, 0, kMost16Bit},
    {"querytimeout", "&End a query after (s, 0 for none):", Integer, 0, kMost16Bit},
    {"Show Tips at Startup", "Show &tips at startup", OneOrZero},
    {"loadusermodels", "&Load user models with a new project", OneOrZero},
    {"usermodelfile", "User &model file:", File},
};
constexpr Preference kSolve[] = {
    {"promptforsetup", "&Ask for the solve setup before each solve", TrueOrFalse},
    {"defaultsolvesetup", "&Models to solve:", Choice, 0, 0, kSetups},
    {"defaultsolver", "Sol&ver:", Choice, 0, 0, kSolvers},
    {"defaultabsolutedeviations", "Take standard deviations at their &word", TrueOrFalse},
    {"defaulttryharder", "Try harder from t&he start (nonlinear)", TrueOrFalse},
    {"defaultloss", "Resi&duals count as:", Choice, 0, 0, kLosses},
    {"defaultlossscale", "Scal&e of good residuals (0: found from them):", Real, 0, kMostScale},
    {"tryharder", "&Try harder where a nonlinear solve fails", TrueOrFalse},
};
constexpr Preference k2D[] = {
    {"xlabelstring", "&X axis labels:", Pattern},
    {"ylabelstring", "&Y axis labels:", Pattern},
    {"xlogscale", "&Logarithmic X axis", TrueOrFalse},
    {"ylogscale", "Logarithmic Y ax&is", TrueOrFalse},
    {"swapaxis", "S&wap the axes", TrueOrFalse},
    {"pointsperplot", "&Calculated points of a curve:", Integer, 3, 5000},
    {"plotatfittedonly", "Plot &at fitted points only", TrueOrFalse},
    {"extrapolate2d", "&Extrapolate curves to the axis limits", TrueOrFalse},
    {"make2dsquare", "S&quare frame", TrueOrFalse},
    {"template2d", "&Template:", File},
};
constexpr Preference k3D[] = {
    {"xlabelstring3d", "&X1 axis labels:", Pattern},
    {"ylabelstring3d", "X2 &axis labels:", Pattern},
    {"zlabelstring3d", "&Y axis labels:", Pattern},
    {"xlogscale3d", "&Logarithmic X1 axis", TrueOrFalse},
    {"ylogscale3d", "Logarit&hmic X2 axis", TrueOrFalse},
    {"zlogscale3d", "Logarithm&ic Y axis", TrueOrFalse},
    {"extrapolate3d", "&Extrapolate surfaces to the axis limits", TrueOrFalse},
    {"make3dsquare", "S&quare box", TrueOrFalse},
    {"template3d", "&Template:", File},
};
constexpr Preference kSurfaces[] = {
    {"shade3dmeshbyvalue", "S&hade surfaces by value", TrueOrFalse},
    {"mesh3dcolorscheme", "&Colour scheme:", Choice, 0, 0, kColorSchemes},
    {"mesh3dcontourcount", "Nu&mber of contours:", Integer, 2, 50},
    {"useaxisscale", "Scale colours to the a&xis", TrueOrFalse},
    {"display3dcontourlines", "&Draw contour lines", TrueOrFalse},
    {"mesh3dcontourcolor", "Contour colo&ur:", Color},
    {"mesh3dcontourstyle", "Contour st&yle:", Choice, 0, 0, kLineStyles},
    {"mesh3dcontourwidth", "Contour &width:", Integer, 1, 5},
};
constexpr Preference kLines[] = {
    {"plotbackgroundcolor", "Plot &background:", Color, 0xFFFFFF},
    {"tickpencolor", "&Colour of ticks and grids:", Color},
    {"tickpenwidth", "Major tick &width:", Integer, 1, 5},
    {"tickpenwidthminor", "M&inor tick width:", Integer, 1, 5},
    {"tickpenlength", "&Tick length (inches):", Real, 0.001, 0.5},
    {"discreetmarkersize", "&Marker size (points):", Integer, 1, 72},
    {"plotmodelsonly", "Plot models without the input &data", TrueOrFalse},
    {"hideplotinfo", "&Hide the guidance of the first plot", OneOrZero},
};
constexpr Preference kPage[] = {
    {"mleft", "&Left margin:", Real, 0, 1000, {}, "printsetup"},
    {"mright", "R&ight margin:", Real, 0, 1000, {}, "printsetup"},
    {"mtop", "&Top margin:", Real, 0, 1000, {}, "printsetup"},
    {"mbottom", "&Bottom margin:", Real, 0, 1000, {}, "printsetup"},
    {"munits", "&Units of the margins:", Choice, 0, 0, kUnits, "printsetup"},
    {"plotorientation", "Orient&ation:", Choice, 0, 0, kOrientations, "printsetup"},
    {"printbackground", "Print the bac&kground of plots", TrueOrFalse, 0, 0, {}, "printsetup"},
};
constexpr PreferencePage kGeneralPages[] = {{"&General", kGeneral}, {"&Solve", kSolve},       {"&2D Plots", k2D},
                                            {"&3D Plots", k3D},     {"Sur&faces", kSurfaces}, {"Li&nes", kLines},
                                            {"&Paper", kPage}};

constexpr FontPreference kFonts[] = {
    {"plottitle", false, "Plot title"},
    {"xaxistitle", false, "X axis title"},
    {"yaxistitle", false, "Y axis title"},
    {"xaxisnumber", false, "X axis numbers"},
    {"yaxisnumber", false, "Y axis numbers"},
    {"plotlegend", false, "Legend"},
    {"footnote", false, "Footnote"},
    {"xaxistitle", true, "X1 axis title (3D)"},
    {"yaxistitle", true, "X2 axis title (3D)"},
    {"zaxistitle", true, "Y axis title (3D)"},
    {"xaxisnumber", true, "X1 axis numbers (3D)"},
    {"yaxisnumber", true, "X2 axis numbers (3D)"},
    {"zaxisnumber", true, "Y axis numbers (3D)"},
};

}  // namespace

std::span<const PreferencePage> SolverPreferences() { return kSolverPages; }
std::span<const PreferencePage> GeneralPreferences() { return kGeneralPages; }
std::span<const FontPreference> FontPreferences() { return kFonts; }

}  // namespace quorvex
