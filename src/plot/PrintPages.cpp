#include "plot/PrintPages.h"

namespace quorvex {

bool PrintPages(int pages, const std::string& printer, PrintProgress& progress, const std::function<bool()>& drawPage,
                Prompter& user) {
  for (int page = 1; page <= pages; ++page) {
    const std::string of = std::to_string(page) + " of " + std::to_string(pages);
    if (!progress.Show("Printing page " + of + " on " + printer)) {
      user.Inform("Printing has been cancelled.");
      return false;
    }
    if (!drawPage()) {
      user.Refuse("An error ocurred drawing the plot to the printer.");
      return false;
    }
  }
  return true;
}

std::string PlotPrinterErrorText(int code, const std::string& description) {
  return "The following printer error occurred: Error number " + std::to_string(code) + ": " + description + ".";
}

std::string PrintErrorText(int code, const std::string& description) {
  return "The following error occurred: Error number " + std::to_string(code) + " - " + description + ".";
}

}  // namespace quorvex
