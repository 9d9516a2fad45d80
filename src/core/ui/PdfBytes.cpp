#include "core/ui/PdfBytes.h"

#include <algorithm>

namespace quorvex {
namespace {

// Blanks in its place, for the document tells where each of its parts begins.
void BlankOut(QByteArray& pdf, const char* from, const char* to, qsizetype after) {
  const qsizetype start = pdf.indexOf(from, after), end = start < 0 ? -1 : pdf.indexOf(to, start);
  if (end >= 0) std::fill(pdf.begin() + start, pdf.begin() + end + 1, ' ');
}

}  // namespace

std::string PdfBytes(QByteArray pdf) {
  BlankOut(pdf, "/CreationDate (", ")", 0);
  BlankOut(pdf, "/ID [", "]", pdf.lastIndexOf("trailer"));
  return pdf.toStdString();
}

}  // namespace quorvex
