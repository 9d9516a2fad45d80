// The pictures that macros get from the two programs, against those of the desktop's windows.

#include <QTableView>
#include <QThread>

#include "Frame.h"
#include "Paths.h"
#include "batch/Program.h"

namespace quorvex {
namespace {

constexpr const char* kNothing = "env -i QUORVEX_SETTINGS=/dev/null";
constexpr const char* kCurve =
    "0.05 0.053 0.028\n0.2 0.151 0.024\n0.4 0.24 0.026\n0.8 0.407 0.028\n1.6 0.666 0.031\n3.1 1.038 0.038\n"
    "6.3 1.429 0.069\n12.5 1.77 0.085\n";
constexpr const char* kPlane = "1 1 3\n1 2 4.1\n2 1 5.2\n2 2 6\n3 5 9.9\n3 1 7.1\n";
constexpr const char* kLook2D =
    "plot_title_text = A~>2~> of it\nx_axis_scale_log = True\nlegend_shadow_display = True\n"
    "linesetting_1_marker_style = 4\nswap_xy_axis = True\nx_axis_major_grid = True\n";
constexpr const char* kLook3D =
    "x1_x2_view_angle = 30\nx1_y_view_angle = 60\nsurface_mesh_byvalue_shade = False\ny_axis_title_text = Time\n";

class MacroPicture : public Frame {
 protected:
  void Draw(const std::string& data, const std::string& statements, const std::string& models) {
    Files.Folder.Write("data.txt", data);
    ASSERT_EQ(Files.RunMacro("B_MACRO\nDataFile = @data.txt\nOutputFile = @out.qvx\nOutputFormat = Quorvex\n"
                             "LogFile = @run.log\nPlotFile = @p.png\nPlotFile = @p.plt\n" +
                                 statements + models + "E_MACRO\n",
                             kNothing),
              0)
        << Files.Log() << Files.Err;
    EXPECT_EQ(Files.Err, "");
    EXPECT_EQ(Files.Log().find("Warning"), std::string::npos) << Files.Log();
  }
  QImage Drawn(const char* name = "p.png") const {
    return QImage(QString::fromStdString(Files.Folder.Path(name))).convertToFormat(QImage::Format_RGB32);
  }
  // The picture of the plot's window.
  static QImage Shown(Dataplot& window) {
    window.View().setFixedSize(800, 600);
    window.adjustSize();
    QTest::qWait(50);
    return window.View().Picture();
  }

  Program Files;
};

TEST_F(MacroPicture, IsThatOfTheWindowPixelForPixel) {
  const std::string line = "B_MODEL\nID = straight\nY = a+b*x\nE_MODEL\n";
  const std::string curves = line + "B_MODEL\nID = bent\nY = a*x/(b+x)\nE_MODEL\n";
  const std::string planes = "B_MODEL\nY = a+b*x1+c*x2\nE_MODEL\n";
  const std::string plane = "IndependentVariables = 2\n";
  const struct {
    const char* Name;
    const char* Data;
    std::string Statements, Models;
    const char* Command;
    const char* Look;
  } cases[] = {
      {"curves", kCurve, "Weighted = True\nPlotModels = all\n", curves, "mnuPlotAll", ""},
      {"curve", kCurve, "", line, "mnuPlotSelected", ""},
      {"template", kCurve, "PlotTemplate = @look.qv2\nWeighted = True\n", line, "mnuPlotSelected", "look.qv2"},
      {"probability", kCurve, "PlotKind = Probability\n", line, "mnuPlotProbability", ""},
      {"surface", kPlane, plane, planes, "mnuPlotSelected", ""},
      {"surface with template", kPlane, plane + "PlotTemplate = @look.qv3\n", planes, "mnuPlotSelected", "look.qv3"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.Name);
    Files.Folder.Write("look.qv2", kLook2D);
    Files.Folder.Write("look.qv3", kLook3D);
    Draw(c.Data, c.Statements, c.Models);
    if (HasFailure()) return;
    Start(Files.Folder.Path("out.qvx"));
    Active().findChild<QTableView*>("SolvedList")->selectRow(0);
    Trigger(c.Command);
    ASSERT_EQ(Active().findChildren<Dataplot*>().size(), 1);
    Dataplot& window = *Active().findChild<Dataplot*>();
    if (*c.Look != 0) {
      ASSERT_TRUE(window.Document().ApplyTemplate(Files.Folder.Path(c.Look)));
      window.View().Redraw();
    }
    EXPECT_EQ(Drawn().size(), QSize(800, 600));
    EXPECT_TRUE(Drawn() == Shown(window));
    CloseUnsaved();
  }
}

TEST_F(MacroPicture, NeedsNothingOfItsEnvironmentAndIsTheSameOnEachRun) {
  const std::string statements =
      "Weighted = True\nPlotFile = @p.svg\nPlotFile = @p.pdf\nPlotFile = @p.bmp\nPlotFile = @p.emf\n";
  std::map<std::string, std::string> first;
  for (const char* environment :
       {kNothing, "DISPLAY=:987 QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=3 QT_FONT_DPI=200 QT_QPA_PLATFORMTHEME=gtk3",
        "WAYLAND_DISPLAY=none QT_QPA_PLATFORM=none QT_STYLE_OVERRIDE=none"}) {
    Files.Folder.Write("data.txt", kCurve);
    ASSERT_EQ(Files.RunMacro("B_MACRO\nDataFile = @data.txt\nOutputFile = @out.txt\nPlotFile = @p.png\n" + statements +
                                 "LogFile = @run.log\nB_MODEL\nY = a+b*x\nE_MODEL\nE_MACRO\n",
                             environment),
              0)
        << environment << Files.Log();
    EXPECT_EQ(Files.Out + Files.Err, "");
    for (const char* name : {"p.png", "p.svg", "p.pdf", "p.bmp", "p.emf"}) {
      const std::string picture = Files.Folder.Read(name);
      EXPECT_GT(picture.size(), 1000U) << name;
      EXPECT_TRUE(first.try_emplace(name, picture).first->second == picture) << name << ' ' << environment;
      std::filesystem::remove(Files.Folder.Path(name));
    }
    if (environment == kNothing) QThread::msleep(1100);  // times in files go by the second
  }
}

TEST_F(MacroPicture, ComesFromAPlotFileAsWell) {
  Draw(kCurve, "", "B_MODEL\nY = a+b*x\nE_MODEL\n");
  for (const std::string& program : {ConsoleProgram(), DesktopProgram()}) {
    Files.Executable = program;
    EXPECT_EQ(Files.Run(Files.InFolder("-plot @p.plt @q.png @q.pdf"), kNothing), 0) << Files.Err;
    EXPECT_EQ(Files.Out + Files.Err, "");
    EXPECT_TRUE(Drawn("q.png") == Drawn());
    EXPECT_TRUE(Files.Folder.Read("q.pdf").starts_with("%PDF"));
  }
}

}  // namespace
}  // namespace quorvex
