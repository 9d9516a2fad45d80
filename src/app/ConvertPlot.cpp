#include "app/ConvertPlot.h"

#include <cstdlib>
#include <optional>
#include <utility>

#include "app/DesktopDrawer.h"
#include "app/SettingsStore.h"
#include "app/StartUp.h"
#include "batch/NamedOutputs.h"
#include "batch/WritePlot.h"
#include "core/Files.h"
#include "core/NotingPrompter.h"
#include "core/Session.h"
#include "files/PlotDocument.h"
#include "files/PlotFile.h"
#include "plot/PictureMessages.h"

namespace quorvex {
namespace {

// The text of the file, as it is written today. Nothing, and told, where it holds no plot.
std::optional<std::string> ReadPlot(const std::string& name) {
  WholeFile file;
  if (const int error = file.Read(name)) {
    Complain("The plot file '" + name + "' cannot be read. " + FileErrorText(error));
    return std::nullopt;
  }
  Session session{LoadSettings(), ReadUserLocale()};
  NotingPrompter user;
  const std::optional<PlotDocument> document = OpenPlotDocument(name, session.Preferences, session.Locale, user);
  for (const std::string& note : user.Notes()) Complain(note);
  if (!document) return std::nullopt;
  return PlotFileText(document->Plot());
}

// The names that can be written; why others can't is told, a sentence each.
std::vector<std::string> GoodNames(const std::string& plot, const std::vector<std::string>& names,
                                   const PlotDrawer& drawer) {
  const auto input = IdentityOfFile(ResolvePath(plot));
  const std::string whyNoPictures = drawer.WhyNone();
  bool told = whyNoPictures.empty();
  std::vector<std::string> good;
  for (const std::string& name : names) {
    if (PlotEnding(name).empty())
      Complain(UnknownEndingText(name));
    else if (input && input == IdentityOfFile(ResolveNewPath(name)))
      Complain("The file '" + name + "' is the plot itself and is not overwritten.");
    else if (PictureFormatOf(name) == nullptr || whyNoPictures.empty())
      good.push_back(name);
    else if (!std::exchange(told, true))
      Complain(whyNoPictures);
  }
  return good;
}

// Writes the plot as what the name asks for, and returns why it couldn't, a sentence.
std::string WritePlot(const std::string& text, const std::string& name, PlotDrawer& drawer, ReplacementFile& file) {
  std::string fault;
  if (kPlotOutputs.NameError(name, ResolveNewPath(name), fault) != 0) return fault;
  const Result<std::string> content = PlotContent(text, name, drawer, [] { return EndSignal() == 0; });
  if (!content) return content.error();
  kPlotOutputs.WriteFile(name, *content, file, fault);
  return fault;
}

}  // namespace

int ConvertPlot(const std::vector<std::string>& arguments) {
  if (arguments.size() < 3) {
    Complain(
        "A plot file and at least one picture to be made of it must be named, as in: quorvex -plot FILE.plt OUT.svg");
    return EXIT_FAILURE;
  }
  const std::string& plot = arguments[1];
  const std::vector<std::string> names(arguments.begin() + 2, arguments.end());
  DesktopDrawer drawer;
  const std::vector<std::string> good = GoodNames(plot, names, drawer);
  if (good.empty()) return EXIT_FAILURE;
  const std::optional<std::string> text = ReadPlot(plot);
  if (!text) return EXIT_FAILURE;

  // A signal ends the drawing, too, and leaves nothing behind.
  WatchForEnd();
  ReplacementFile file(FileCare::Answer);
  int status = good.size() == names.size() ? EXIT_SUCCESS : EXIT_FAILURE;
  for (const std::string& name : good) {
    const std::string fault = WritePlot(*text, name, drawer, file);
    if (fault.empty()) continue;
    Complain(fault);
    status = EXIT_FAILURE;
    if (EndSignal() != 0) break;
  }
  return status;
}

}  // namespace quorvex
