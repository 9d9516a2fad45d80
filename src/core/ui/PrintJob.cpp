#include "core/ui/PrintJob.h"

#include <QFileInfo>
#include <QLibrary>
#include <QPrinter>

#include "core/Files.h"

namespace quorvex {
namespace {

constexpr int kNoSuchFolder = 76, kNoAccess = 75, kNoDevice = 68;

std::string WithoutFullStop(std::string sentence) {
  while (!sentence.empty() && (sentence.back() == '.' || sentence.back() == '\n')) sentence.pop_back();
  return sentence;
}

PrinterError FileError(int number) { return {number, WithoutFullStop(FileErrorText(number))}; }

// The print server's library keeps the outcome of a thread's last call. Qt has loaded it, where there is one.
std::optional<PrinterError> ErrorOfServer() {
  QLibrary cups("cups", 2);
  const auto lastError = reinterpret_cast<int (*)()>(cups.resolve("cupsLastError"));
  const auto lastErrorString = reinterpret_cast<const char* (*)()>(cups.resolve("cupsLastErrorString"));
  constexpr int kFirstError = 0x0400;  // of the status codes of the Internet Printing Protocol (RFC 8011, appendix B)
  if (lastError == nullptr || lastErrorString == nullptr || lastError() < kFirstError) return std::nullopt;
  const char* text = lastErrorString();
  return PrinterError{lastError(), WithoutFullStop(text == nullptr ? "" : text)};
}

}  // namespace

std::optional<PrinterError> ErrorOfLastJob(const QPrinter& printer) {
  const QString file = printer.outputFileName();
  if (printer.printerState() == QPrinter::Error)
    return FileError(file.isEmpty()                              ? kNoDevice
                     : QFileInfo(QFileInfo(file).path()).isDir() ? kNoAccess
                                                                 : kNoSuchFolder);
  return file.isEmpty() ? ErrorOfServer() : std::nullopt;
}

}  // namespace quorvex
