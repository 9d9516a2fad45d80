#include <algorithm>

#include "plot/PlotSwitches.h"
#include "plot3d/PlotClass3D.h"

namespace quorvex {
namespace {

bool HasModel(const PlotPage& page) {
  return std::ranges::any_of(page.PlotData, [](const PlotSeries& series) { return series.Model() != nullptr; });
}

constexpr PlotSwitch OfModels(PlotSwitch entry) {
  entry.Applies = HasModel;
  return entry;
}

template <auto member>
constexpr PlotSwitch Of(const char* name, const char* text) {
  return MemberSwitch<PlotClass3D, member>(name, text);
}

// How models are drawn, which is the same for all.
template <auto field>
bool ModelsHave(const PlotPage& page) {
  return std::ranges::any_of(
      page.PlotData, [](const PlotSeries& series) { return series.Model() != nullptr && series.Style().*field; });
}

template <auto field>
constexpr PlotSwitch StyleSwitch(const char* name, const char* text) {
  return OfModels({name, text, ModelsHave<field>, [](PlotPage& page, bool on, Prompter&) {
                     for (PlotSeries& series : page.PlotData)
                       if (series.Model() != nullptr) series.Style().*field = on;
                   }});
}

void ShowResidualBars(PlotPage& page, bool on, Prompter&) {
  for (PlotSeries& series : page.PlotData)
    if (series.Model() != nullptr) series.Style().ShowErrorBars = on && series.GenerateErrorTable();
}

constexpr auto kIsFilled = ModelsHave<&SeriesStyle::ShadeMesh>;

bool IsByValue(const PlotPage& page) {
  return kIsFilled(page) && static_cast<const PlotClass3D&>(page).ShadeMeshByValue;
}

// In steps, whose borders are the contours and leave no room for a mesh.
bool HasBands(const PlotPage& page) {
  return IsByValue(page) && static_cast<const PlotClass3D&>(page).MeshColorScheme != kTrueColorScheme;
}

bool HasNoBands(const PlotPage& page) { return !HasBands(page); }

constexpr PlotSwitch Where(bool (*matters)(const PlotPage& page), PlotSwitch entry) {
  entry.Matters = matters;
  return entry;
}

// The grid of a plane: the lines that either of its axes has there, told by their places in Grids.
template <auto first, std::size_t i, auto second, std::size_t j, auto field>
constexpr PlotSwitch GridSwitch(const char* name, const char* text) {
  return {name, text,
          [](const PlotPage& page) {
            const auto& plot = static_cast<const PlotClass3D&>(page);
            return (plot.*first).Grids[i].*field && (plot.*second).Grids[j].*field;
          },
          [](PlotPage& page, bool on, Prompter&) {
            auto& plot = static_cast<PlotClass3D&>(page);
            (plot.*first).Grids[i].*field = (plot.*second).Grids[j].*field = on;
          }};
}

constexpr auto kX1 = &PlotClass3D::X, kX2 = &PlotClass3D::Y, kY = &PlotClass3D::Z;
constexpr auto kMajor = &BoxAxis::PlaneGrids::Major, kMinor = &BoxAxis::PlaneGrids::Minor;
constexpr BoxPlane PlotClass3D::*kPlanes[] = {&PlotClass3D::BoxXY, &PlotClass3D::BoxYZ, &PlotClass3D::BoxXZ};

bool ShadesPlanes(const PlotPage& page) {
  const auto& plot = static_cast<const PlotClass3D&>(page);
  return std::ranges::all_of(kPlanes, [&](auto plane) { return (plot.*plane).Shade; });
}

void ShadePlanes(PlotPage& page, bool on, Prompter&) {
  for (const auto plane : kPlanes) (static_cast<PlotClass3D&>(page).*plane).Shade = on;
}

// X1 to the right and X2 upward, as on a map.
void SeeFromAbove(PlotPage& page, bool, Prompter&) { page.SetAngles({180, 90}); }

template <std::int16_t scheme>
constexpr PlotSwitch SchemeSwitch() {
  constexpr const MeshSchemeRow& row = kMeshSchemeRows[scheme];
  PlotSwitch entry =
      OfModels({row.Switch, row.Entry,
                [](const PlotPage& page) { return static_cast<const PlotClass3D&>(page).MeshColorScheme == scheme; },
                [](PlotPage& page, bool, Prompter&) { static_cast<PlotClass3D&>(page).MeshColorScheme = scheme; }});
  entry.Menu = "Color&s";
  return Where(IsByValue, entry);
}

constexpr PlotSwitch kSwitches[] = {
    LogScaleSwitch<0>("XLogScale", "Logarithmic X&1 Axis"),
    LogScaleSwitch<1>("YLogScale", "Logarithmic X&2 Axis"),
    LogScaleSwitch<2>("ZLogScale", "Logarithmic &Y Axis"),
    Of<&PlotClass3D::Make3DSquare>("Make3DSquare", "S&quare Picture"),
    {"SeeFromAbove", "From &Above", nullptr, SeeFromAbove},
    {},
    GridSwitch<kX1, 0, kX2, 0, kMajor>("ShowXYMajorGrids", "X1-X2 &Grid"),
    GridSwitch<kX1, 0, kX2, 0, kMinor>("ShowXYMinorGrids", "X1-X2 Mi&nor Grid"),
    GridSwitch<kX1, 1, kY, 0, kMajor>("ShowXZMajorGrids", "X1-Y Gri&d"),
    GridSwitch<kX1, 1, kY, 0, kMinor>("ShowXZMinorGrids", "X1-Y Min&or Grid"),
    GridSwitch<kX2, 1, kY, 1, kMajor>("ShowYZMajorGrids", "X2-Y Gr&id"),
    GridSwitch<kX2, 1, kY, 1, kMinor>("ShowYZMinorGrids", "X2-Y &Minor Grid"),
    {"ShadePlanes", "Shaded &Planes", ShadesPlanes, ShadePlanes},
    {},
    StyleSwitch<&SeriesStyle::ShadeMesh>("ShadeMesh", "&Filled Surface"),
    Where(kIsFilled, OfModels(Of<&PlotClass3D::ShadeMeshByValue>("ShadeMeshByValue", "Shade by &Value"))),
    SchemeSwitch<0>(),
    SchemeSwitch<1>(),
    SchemeSwitch<2>(),
    SchemeSwitch<3>(),
    SchemeSwitch<4>(),
    SchemeSwitch<5>(),
    SchemeSwitch<6>(),
    SchemeSwitch<7>(),
    SchemeSwitch<8>(),
    SchemeSwitch<9>(),
    SchemeSwitch<10>(),
    SchemeSwitch<11>(),
    SchemeSwitch<12>(),
    SchemeSwitch<13>(),
    Where(HasBands, OfModels(Of<&PlotClass3D::DisplayContourLines>("DisplayContourLines", "&Contour Lines"))),
    Where(HasNoBands, StyleSwitch<&SeriesStyle::DisplayLine>("DisplayLine", "Mes&h Lines")),
    {},
    kLegendSwitch,
    kErrorBarSwitch,
    OfModels({"ShowResidualBars", "Resid&ual Bars", ModelsHave<&SeriesStyle::ShowErrorBars>, ShowResidualBars}),
};

}  // namespace

std::span<const PlotSwitch> PlotClass3D::Switches() const { return kSwitches; }

}  // namespace quorvex
