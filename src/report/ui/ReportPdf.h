#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/LocaleText.h"
#include "core/Result.h"
#include "core/Settings.h"

namespace quorvex {

// A report as a PDF document on sheets of A4: text that can be selected, formula and plots as lines and letters. The
// same report gives the same bytes.
//
// `printed` is what PrintedReport (report/ReportFormat.h) writes. Fails with a sentence where a plot can't be drawn.
Result<std::string> PdfOfReport(std::string_view printed, const Settings& settings, const LocaleText& locale);

}  // namespace quorvex
