#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "files/ExportPlotData.h"
#include "files/PlotTemplate.h"
#include "plot/PlotPage.h"
#include "plot/PlotUndo.h"

namespace quorvex {

// The files that Open of a plot's window offers.
inline constexpr const char* kPlotFilter = "Plot files (*.plt);;All Files (*.*)";

inline constexpr const char* kUnnamedPlot = "Plot";

// A plot as the document of a window: its file, its changes, and the commands that meet files.
class PlotDocument {
 public:
  // A plot that has been created and has no file. Settings and prompter outlive the document.
  PlotDocument(std::unique_ptr<PlotPage> plot, Settings& settings, Prompter& user);

  PlotPage& Plot() { return *plot_; }
  const PlotPage& Plot() const { return *plot_; }
  Settings& Preferences() { return settings_; }
  Prompter& User() { return user_; }

  std::string FileName = kUnnamedPlot;  // of a plot without a file its name, such as "Plot 1"
  bool HasFile = false;
  std::string Project;  // the name of that which a plot without a file was made from, where there was one
  bool Changed() const { return undo_.Changed(); }
  // What the plot was changed by happened before, and is to be saved.
  void NeverSaved() { undo_.NeverSaved(); }

  // Writes a picture of the plot, as large as its window, and tells the user.
  std::function<void(const std::string& fileName)> WritePicture;

  // The plot has been changed; `what` is the label for that. How many changes can be taken back is a setting.
  void Record(std::string_view what);
  // Take a change back, or make it again. False where there is none.
  bool Undo() { return Become(undo_.Undo()); }
  bool Redo() { return Become(undo_.Redo()); }
  const PlotUndo& History() const { return undo_; }

  // Save: a plot without a file goes through Save As, where the ending of the name may ask for a picture, which leaves
  // the plot unsaved. The name is the plot's from then on, but for a copy. False where the plot was not saved.
  bool FileSave();
  bool FileSaveAs() { return SaveUnder("Save As", true); }
  bool FileSaveCopyAs() { return SaveUnder("Save Copy As", false); }
  // Asks to save what changed. False where the plot must stay open: the user cancelled, or it could not be saved.
  bool MayClose();

  // Adds to the series, on scales that show all.
  void Add(std::vector<PlotSeries> series);
  // Asks for a file and adds what it holds to the series. False where nothing came.
  bool Import();
  // Asks for a file and writes the series into it as a table.
  bool Export(ExportDelimiter delimiter);

  // Applies a template, of which the user may be asked for single values. False where the file is none for this plot.
  bool ApplyTemplate();
  bool ApplyTemplate(const std::string& fileName);
  bool SaveTemplate(const TemplateSelection& selection);

  // The calculator of a plot of three dimensions.
  void ShowCalculator();

 private:
  bool Become(const PlotPage* state);
  void ShowAll(std::string_view change);
  bool SaveUnder(const char* title, bool rename);
  bool SaveTo(const std::string& fileName);
  void Remember(std::string_view section, const std::string& fileName);

  std::unique_ptr<PlotPage> plot_;
  Settings& settings_;
  Prompter& user_;
  PlotUndo undo_;
};

// A plot that has just been made, on the scales of its data and with the look of the template, or where none is named
// of that which the settings ask for. Nothing, and refused, where it cannot be created or have the template.
std::optional<PlotDocument> NewPlotDocument(std::unique_ptr<PlotPage> plot, Settings& settings, Prompter& user,
                                            const std::string& templateFile = {});

// Opens a plot file; any other file as data, whose plot then has no file. Nothing, and refused, where there is nothing
// to be shown.
std::optional<PlotDocument> OpenPlotDocument(const std::string& fileName, Settings& settings, const LocaleText& locale,
                                             Prompter& user);

}  // namespace quorvex
