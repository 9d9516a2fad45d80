#pragma once

#include <memory>
#include <string>

#include "core/Prompter.h"
#include "results/TextTable.h"

namespace quorvex {

// Ask for a file, whose name the dialog begins with as `name`, and write it. False where that failed, which the user is
// told, or was called off.

// The text of the evaluation panel as it stands.
bool SaveEvaluation(const std::string& text, Prompter& user);

// A table, in the form that the name of the file asks for: comma-separated values, an
// OpenDocument spreadsheet, Markdown, an HTML document or text
// with tabs.
bool SaveTable(const TextTable& table, const std::string& name, Prompter& user, const std::string& title = "Save As");

// The same of a table that may be long, for which the user waits. Nobody changes it meanwhile.
bool SaveTable(std::shared_ptr<const TextTable> table, const std::string& name, Prompter& user,
               const std::string& title = "Save As");

}  // namespace quorvex
