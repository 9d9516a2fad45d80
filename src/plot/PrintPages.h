#pragma once

#include <functional>
#include <string>

#include "core/Prompter.h"

namespace quorvex {

// What is seen of pages on their way to a printer.
class PrintProgress {
 public:
  virtual ~PrintProgress() = default;

  // Shows the text, and lets the user cancel. False once they have.
  virtual bool Show(const std::string& text) = 0;
};

// Draws so many pages, one by one, on the printer of that name. False, with a message, where the user cancels, which
// stops before a page, or a page cannot be drawn.
bool PrintPages(int pages, const std::string& printer, PrintProgress& progress, const std::function<bool()>& drawPage,
                Prompter& user);

// What is said of a printer that failed, to a plot's window and to any other.
std::string PlotPrinterErrorText(int code, const std::string& description);
std::string PrintErrorText(int code, const std::string& description);

}  // namespace quorvex
