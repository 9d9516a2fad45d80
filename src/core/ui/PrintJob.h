#pragma once

#include <optional>
#include <string>

class QPrinter;

namespace quorvex {

// Why a print job came to nothing.
struct PrinterError {
  int Code = 0;
  std::string Description;  // without a full stop
};

// Asks about the job that this thread printed last, once its painter has ended: Qt hands a job to the print server and
// says nothing when that refuses it. Nothing where the job was taken, or written to its file.
std::optional<PrinterError> ErrorOfLastJob(const QPrinter& printer);

}  // namespace quorvex
