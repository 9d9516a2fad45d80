#include <gtest/gtest.h>

#include <filesystem>

#include "TemporaryFolder.h"
#include "core/FileCalls.h"
#include "core/RecentFiles.h"
#include "files/PlotDocument.h"
#include "files/PlotFile.h"
#include "files/ProjectFile.h"
#include "plot/Plots.h"
#include "plot3d/PlotClass3D.h"

namespace quorvex {
namespace {

using Said = std::vector<std::string>;

class PlotDocumentTest : public testing::Test {
 protected:
  // One series, the points (1, 2), (2, 4) and (3, 8).
  PlotDocument Document() {
    auto plot = std::make_unique<PlotClass>(settings);
    plot->PlotData.push_back(PointSeries({1, 2, 3}, {2, 4, 8}, "Input Data"));
    auto document = NewPlotDocument(std::move(plot), settings, user);
    document->WritePicture = [this](const std::string& file) { pictures.push_back(file); };
    return std::move(*document);
  }
  static void Change(PlotDocument& document, const std::string& title) {
    document.Plot().PlotTitle = title;
    document.Record(kPropertiesChange);
  }
  std::string TitleIn(const std::string& file) {
    const auto plot = OpenPlotFile(file, settings, {});
    return plot ? (*plot)->PlotTitle : plot.error();
  }
  Said Take() { return std::exchange(user.Said, {}); }

  TemporaryFolder folder;
  Settings settings;
  RecordingPrompter user;
  std::vector<std::string> pictures;
};

constexpr const char* kSaveFilters =
    "Plot files (*.plt);;Bitmap files (*.bmp);;Enhanced MetaFile (*.emf);;SVG files (*.svg);;PDF documents "
    "(*.pdf);;PNG files (*.png)|plt|";
constexpr const char* kCannotBeSaved =
    "refuse: An error in the current plot settings prohibits the plot from being saved in it's current state. Check "
    "the plot settings in the Graph Properties window.";

TEST_F(PlotDocumentTest, IsSavedUnderANameThatItKeeps) {
  PlotDocument plot = Document();
  const std::string first = folder.Path("first.plt"), second = folder.Path("second.plt"), copy = folder.Path("copy");
  Change(plot, "one");
  EXPECT_FALSE(plot.FileSave());  // the user cancels
  EXPECT_FALSE(plot.HasFile);
  user.File = first;
  EXPECT_TRUE(plot.FileSave());
  EXPECT_EQ(Take(), Said(2, std::string("save: Save As|") + kSaveFilters + "Plot"));
  EXPECT_EQ(plot.FileName, first);
  EXPECT_FALSE(plot.Changed());
  EXPECT_EQ(TitleIn(first), "one");

  Change(plot, "two");
  EXPECT_TRUE(plot.FileSave());
  EXPECT_EQ(Take(), Said{});
  EXPECT_EQ(TitleIn(first), "two");

  Change(plot, "three");
  user.File = copy;
  EXPECT_TRUE(plot.FileSaveCopyAs());
  EXPECT_EQ(Take(), Said{std::string("save: Save Copy As|") + kSaveFilters + first});
  EXPECT_EQ(TitleIn(copy), "three");
  EXPECT_EQ(plot.FileName, first);
  EXPECT_TRUE(plot.Changed());

  user.File = second;
  EXPECT_TRUE(plot.FileSaveAs());
  EXPECT_EQ(plot.FileName, second);
  EXPECT_FALSE(plot.Changed());
  EXPECT_EQ(TitleIn(first), "two");
  EXPECT_EQ(RecentFiles(settings, kRecentPlots), (std::vector<std::string>{second, copy, first}));
  EXPECT_TRUE(plot.Undo());
  EXPECT_TRUE(plot.Changed()) << "the file has the later state";
}

TEST_F(PlotDocumentTest, WritesAPictureWhereTheNameAsksForOne) {
  PlotDocument plot = Document();
  Change(plot, "one");
  for (const char* name : {"a.png", "a.BMP", "a.pdf", "a.emf", "a.svg"}) {
    user.File = folder.Path(name);
    EXPECT_FALSE(plot.FileSaveAs());
    EXPECT_EQ(pictures.back(), *user.File);
  }
  EXPECT_EQ(pictures.size(), 5u);
  EXPECT_FALSE(plot.HasFile);
  EXPECT_TRUE(plot.Changed());
}

TEST_F(PlotDocumentTest, IsNotSavedUnderAnEndingOfAnotherKind) {
  PlotDocument plot = Document();
  for (const char* name : {"a.jpg", "a.", "a.plt~"}) {
    user.File = folder.Path(name);
    EXPECT_FALSE(plot.FileSaveAs());
    EXPECT_EQ(user.Last(), "refuse: The plot '" + *user.File +
                               "' is not written: its name ends in none of .bmp, .emf, .svg, .pdf, .png, .plt.");
    EXPECT_FALSE(std::filesystem::exists(*user.File));
  }
  EXPECT_FALSE(plot.HasFile);
}

TEST_F(PlotDocumentTest, NamesTheFileOfDataThatNoScaleHolds) {
  const std::string file = folder.Write("huge.dat", "1 -1.7e308\n2 1.7e308\n");
  EXPECT_FALSE(OpenPlotDocument(file, settings, {}, user));
  EXPECT_EQ(Take(), Said{"refuse: Error creating plot from '" + file + "'.\r\nThe file appears to be corrupted."});
}

TEST_F(PlotDocumentTest, IsNotSavedInError) {
  PlotDocument plot = Document();
  plot.FileName = folder.Path("a.plt");
  Change(plot, "one");
  plot.Plot().PlotCreated = false;
  for (const bool hasFile : {false, true}) {
    plot.HasFile = hasFile;
    EXPECT_FALSE(plot.FileSave());
    EXPECT_FALSE(plot.FileSaveAs());
    EXPECT_FALSE(plot.FileSaveCopyAs());
    EXPECT_EQ(Take(), Said(3, kCannotBeSaved));
  }
  EXPECT_FALSE(plot.MayClose());
  EXPECT_EQ(Take(), (Said{"ask: Save changes to plot '" + plot.FileName + "'?", kCannotBeSaved}));

  plot.Undo();
  ASSERT_TRUE(plot.Plot().PlotCreated);
  plot.Redo();
  for (const char* call : {"open", "write", "fsync", "rename"}) {
    const FileCalls fail([&](std::string_view made) { return made == call ? EIO : 0; });
    EXPECT_FALSE(plot.FileSave()) << call;
    EXPECT_EQ(user.Last(), "refuse: Error saving plot to '" + plot.FileName + "'. The device reports an error.");
    EXPECT_TRUE(plot.Changed());
  }
}

TEST_F(PlotDocumentTest, AsksForWhatChangedBeforeItCloses) {
  PlotDocument plot = Document();
  EXPECT_TRUE(plot.MayClose());
  EXPECT_EQ(Take(), Said{});
  plot.FileName = "Plot 3";
  Change(plot, "one");
  const std::string asked = "ask: Save changes to plot 'Plot 3'?";
  user.Answer = false;
  EXPECT_TRUE(plot.MayClose());
  EXPECT_TRUE(plot.Changed()) << "another may still keep it open";
  user.Cancel = true;
  EXPECT_FALSE(plot.MayClose());
  EXPECT_EQ(Take(), Said(2, asked));

  user.Cancel = false;
  user.Answer = true;
  EXPECT_FALSE(plot.MayClose()) << "Save As was cancelled";
  user.File = folder.Path("a.png");
  EXPECT_FALSE(plot.MayClose()) << "a picture is not the plot";
  user.File = folder.Path("a.plt");
  EXPECT_TRUE(plot.MayClose());
  EXPECT_EQ(Take().size(), 6u);
  EXPECT_TRUE(plot.MayClose());
  Change(plot, "two");
  EXPECT_TRUE(plot.MayClose());
  EXPECT_EQ(Take(), Said{"ask: Save changes to plot '" + folder.Path("a.plt") + "'?"});
  EXPECT_EQ(TitleIn(folder.Path("a.plt")), "two");
}

TEST_F(PlotDocumentTest, OpensItsFile) {
  PlotDocument plot = Document();
  user.File = folder.Path("a.plt");
  Change(plot, "one");
  ASSERT_TRUE(plot.FileSave());
  settings = Settings();
  auto opened = OpenPlotDocument(folder.Path("a.plt"), settings, {}, user);
  ASSERT_TRUE(opened);
  EXPECT_EQ(opened->FileName, folder.Path("a.plt"));
  EXPECT_TRUE(opened->HasFile);
  EXPECT_FALSE(opened->Changed());
  EXPECT_TRUE(opened->Plot().PlotCreated);
  EXPECT_EQ(opened->Plot().PlotTitle, "one");
  EXPECT_EQ(RecentFiles(settings, kRecentPlots), std::vector<std::string>{folder.Path("a.plt")});

  // Numbers from elsewhere are no file of the plot's.
  auto data = OpenPlotDocument(folder.Write("a.dat", "1 2\n2 3\n3 5\n"), settings, {}, user);
  ASSERT_TRUE(data);
  EXPECT_FALSE(data->HasFile);
  EXPECT_EQ(data->FileName, "Plot");
  EXPECT_EQ(data->Plot().PlotData[0].NumTablePoints(), 3u);

  Take();
  const std::string broken = folder.Write("broken.plt", folder.Read("a.plt").substr(0, 400));
  const std::string missing = folder.Path("missing.plt");
  for (const std::string& file : {broken, missing}) {
    EXPECT_FALSE(OpenPlotDocument(file, settings, {}, user));
    EXPECT_EQ(Take(),
              Said{"refuse: Error reading plot '" + file + "'.\r\nThe file is incompatible or appears corrupted."});
  }
  // Whole, but with a model that has no value at the first points.
  PlotClass faulty{settings};
  faulty.PlotData.emplace_back(Curve("a*log(x-5)", {1}));
  faulty.PlotCreated = true;
  const std::string file = folder.Path("faulty.plt");
  ASSERT_TRUE(SavePlot(faulty, file, user));
  EXPECT_FALSE(OpenPlotDocument(file, settings, {}, user));
  EXPECT_EQ(Take(), Said{"refuse: Error creating plot from '" + file + "'.\r\nThe file appears to be corrupted."});
  EXPECT_EQ(RecentFiles(settings, kRecentPlots).size(), 1u);
}

TEST_F(PlotDocumentTest, TakesBackImportsAndTemplates) {
  PlotDocument plot = Document();
  EXPECT_FALSE(plot.Import());
  EXPECT_EQ(Take(),
            Said{"open: Import|Plot files (*.plt);;Quorvex files (*.qvx);;Data Files (*.dat);;All Files (*.*)"});
  const double most = static_cast<const PlotClass&>(plot.Plot()).Y.Max;
  user.File = folder.Write("more.dat", "1 20\n2 30\n");
  EXPECT_TRUE(plot.Import());
  EXPECT_EQ(plot.Plot().PlotData.size(), 2u);
  EXPECT_GE(static_cast<const PlotClass&>(plot.Plot()).Y.Max, 30) << "what came is to be seen";
  EXPECT_EQ(plot.History().UndoText(), "&Undo Import");
  EXPECT_TRUE(plot.Undo());
  EXPECT_EQ(plot.Plot().PlotData.size(), 1u);
  EXPECT_EQ(static_cast<const PlotClass&>(plot.Plot()).Y.Max, most);
  EXPECT_TRUE(plot.Redo());
  EXPECT_EQ(plot.Plot().PlotData.size(), 2u);

  user.File = folder.Write("empty.dat", "");
  Take();
  EXPECT_FALSE(plot.Import());
  EXPECT_EQ(user.Last(), "refuse: Error importing data from '" + *user.File +
                             "'. Either there is no data available in this file, or the file is corrupt.");

  user.File = folder.Write("a.qv2", "plot_title_text = From a template\nplot_background_color = (1, 2, 3)\n");
  EXPECT_TRUE(plot.ApplyTemplate());
  EXPECT_EQ(plot.Plot().PlotTitle, "From a template");
  EXPECT_EQ(plot.History().UndoText(), "&Undo Apply Template");
  EXPECT_EQ(RecentFiles(settings, kRecentTemplates), std::vector<std::string>{*user.File});
  EXPECT_TRUE(plot.Undo());
  EXPECT_EQ(plot.Plot().PlotTitle, "");
  Take();
  user.File = folder.Write("a.qv3", "plot_title_text = From a template\n");
  EXPECT_FALSE(plot.ApplyTemplate());
  EXPECT_EQ(Take().back(), "refuse: You cannot apply a 3D Template to a 2D Plot.");
  EXPECT_EQ(plot.Plot().PlotTitle, "");
}

TEST_F(PlotDocumentTest, GivesNewPlotsTheDefaultTemplate) {
  settings.Set("template2d", folder.Write("new.qv2", "plot_title_text = As always\nx_axis_scale_min = -5\n"));
  const PlotDocument plot = Document();
  EXPECT_EQ(plot.Plot().PlotTitle, "As always");
  EXPECT_EQ(plot.Plot().Axes()[0]->Min, -5);
  EXPECT_GT(plot.Plot().Axes()[1]->Max, 0) << "a scale of the data";
  EXPECT_FALSE(plot.Changed());
  EXPECT_TRUE(plot.Plot().PlotCreated);
}

TEST_F(PlotDocumentTest, KeepsAsManyChangesAsTheSettingsSay) {
  PlotDocument plot = Document();
  settings.Set("undolevels", "2");
  for (const char* title : {"a", "b", "c"}) Change(plot, title);
  EXPECT_TRUE(plot.Undo());
  EXPECT_TRUE(plot.Undo());
  EXPECT_FALSE(plot.Undo());
  EXPECT_EQ(plot.Plot().PlotTitle, "a");
}

}  // namespace
}  // namespace quorvex
