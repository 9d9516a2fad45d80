#pragma once

#include <QByteArray>
#include <string>

namespace quorvex {

// A PDF document as Qt wrote it, without what no document needs and would make each another one, such as the time.
std::string PdfBytes(QByteArray pdf);

}  // namespace quorvex
