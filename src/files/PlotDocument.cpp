#include "files/PlotDocument.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <utility>

#include "core/Files.h"
#include "core/NumberText.h"
#include "core/QuietPrompter.h"
#include "core/RecentFiles.h"
#include "files/DetectFileType.h"
#include "files/ImportPlotData.h"
#include "files/PlotFile.h"
#include "files/PlotTemplateKeys.h"
#include "plot/PictureMessages.h"

namespace quorvex {
namespace {

constexpr const char* kImportFilter = "Plot files (*.plt);;Quorvex files (*.qvx);;Data Files (*.dat);;All Files (*.*)";

std::string Absolute(const std::string& fileName) {
  std::error_code failure;
  const std::filesystem::path path = std::filesystem::absolute(fileName, failure);
  return failure ? fileName : path.lexically_normal().string();
}

}  // namespace

PlotDocument::PlotDocument(std::unique_ptr<PlotPage> plot, Settings& settings, Prompter& user)
    : plot_(std::move(plot)), settings_(settings), user_(user), undo_(*plot_) {}

void PlotDocument::Record(std::string_view what) {
  undo_.Record(*plot_, what, static_cast<std::size_t>(std::max(0, settings_.Integer("undolevels"))));
}

bool PlotDocument::Become(const PlotPage* state) {
  if (state == nullptr) return false;
  plot_->Assign(*state);
  plot_->CreateGraph({.Regenerate = true}, user_);
  return true;
}

bool PlotDocument::FileSave() {
  if (!HasFile) return FileSaveAs();
  const bool saved = SaveTo(FileName);
  if (saved) undo_.Saved();
  return saved;
}

bool PlotDocument::SaveTo(const std::string& fileName) {
  if (!SavePlot(*plot_, fileName, user_)) return false;
  Remember(kRecentPlots, fileName);
  return true;
}

bool PlotDocument::SaveUnder(const char* title, bool rename) {
  if (!CanBe("saved", *plot_, user_)) return false;
  const auto file = user_.ChooseFileToSave(title, "Plot files (*.plt);;" + PictureFilters(), "plt", FileName);
  if (!file) return false;
  if (PictureFormatOf(*file) != nullptr) {
    WritePicture(*file);
    return false;
  }
  // A name without any ending is what the user typed where the dialog adds none.
  if (std::filesystem::path(*file).has_extension() && PlotEnding(*file).empty()) {
    user_.Refuse(UnknownEndingText(*file));
    return false;
  }
  if (!SaveTo(*file)) return false;
  if (rename) {
    FileName = Absolute(*file);
    HasFile = true;
    undo_.Saved();
  }
  return true;
}

bool PlotDocument::MayClose() {
  if (!Changed()) return true;
  const auto save = user_.AskOrCancel("Save changes to plot '" + FileName + "'?");
  return save && (!*save || FileSave());
}

bool PlotDocument::Import() {
  const auto file = user_.ChooseFileToOpen("Import", kImportFilter);
  if (!file || !ImportPlotData(*plot_, *file, settings_, user_)) return false;
  ShowAll(kImportChange);
  return true;
}

void PlotDocument::Add(std::vector<PlotSeries> series) {
  std::ranges::move(series, std::back_inserter(plot_->PlotData));
  ShowAll(kAddChange);
}

void PlotDocument::ShowAll(std::string_view change) {
  plot_->CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = plot_->AutoFormatted()}, user_);
  Record(change);
}

bool PlotDocument::Export(ExportDelimiter delimiter) { return ExportPlotData(*plot_, delimiter, user_); }

bool PlotDocument::ApplyTemplate() {
  const auto file = user_.ChooseFileToOpen("Apply Template", TemplateFormatOf(*plot_).Filter);
  return file && ApplyTemplate(*file);
}

bool PlotDocument::ApplyTemplate(const std::string& fileName) {
  if (!ApplyPlotTemplate(*plot_, fileName, true, user_)) return false;
  plot_->CreateGraph({.Regenerate = true}, user_);
  Record(kTemplateChange);
  Remember(kRecentTemplates, fileName);
  return true;
}

bool PlotDocument::SaveTemplate(const TemplateSelection& selection) {
  return UpdatePlotTemplate(*plot_, selection, settings_, user_);
}

void PlotDocument::ShowCalculator() { user_.Refuse("Only the 2D Data Calculator is currently implemented."); }

void PlotDocument::Remember(std::string_view section, const std::string& fileName) {
  AddRecentFile(settings_, section, Absolute(fileName));
}

std::optional<PlotDocument> NewPlotDocument(std::unique_ptr<PlotPage> plot, Settings& settings, Prompter& user,
                                            const std::string& templateFile) {
  if (!plot->CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, user)) return std::nullopt;
  // After the scales: a template has some of its own, or leaves those of the data.
  if (!templateFile.empty()) {
    if (!ApplyPlotTemplate(*plot, templateFile, true, user)) return std::nullopt;
    if (!plot->CreateGraph({.Regenerate = true}, user)) return std::nullopt;
    AddRecentFile(settings, kRecentTemplates, Absolute(templateFile));
  } else if (!settings.Text(TemplateFormatOf(*plot).Setting).empty()) {
    ApplyDefaultTemplate(*plot, settings, user);
    plot->CreateGraph({.Regenerate = true}, user);
  }
  return PlotDocument(std::move(plot), settings, user);
}

std::optional<PlotDocument> OpenPlotDocument(const std::string& fileName, Settings& settings, const LocaleText& locale,
                                             Prompter& user) {
  Result<std::unique_ptr<PlotPage>> plot = OpenPlotFile(fileName, settings, locale);
  if (!plot) {
    user.Refuse(plot.error());
    return std::nullopt;
  }
  const std::optional<FileType> type = DetectFileType(fileName);
  const bool isPlot = type && type->Kind == "plot";
  if (QuietPrompter nobody; !(*plot)->CreateGraph({.Auto = !isPlot, .Regenerate = true}, nobody)) {
    user.Refuse("Error creating plot from '" + fileName + "'." + std::string(NL) + "The file appears to be corrupted.");
    return std::nullopt;
  }
  if (!isPlot) return NewPlotDocument(std::move(*plot), settings, user);
  PlotDocument document(std::move(*plot), settings, user);
  document.FileName = Absolute(fileName);
  document.HasFile = true;
  AddRecentFile(settings, kRecentPlots, document.FileName);
  return document;
}

}  // namespace quorvex
