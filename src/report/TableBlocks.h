#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "core/LocaleText.h"
#include "report/FitReport.h"
#include "results/TextTable.h"

namespace quorvex {

// The rows of a report of the results window as blocks of a document: labels and values as a table of two columns, and
// what stands under a heading as a table of its own. Lines and headings that begin a text of `without` are left out, a
// heading with all that stands under it.
std::vector<ReportBlock> BlocksOf(const Report& report, const LocaleText& locale,
                                  std::initializer_list<std::string_view> without);

}  // namespace quorvex
