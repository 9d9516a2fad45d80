#pragma once

#include <functional>
#include <string>

#include "core/Result.h"

namespace quorvex {

// Makes pictures of plots, for a program that draws none itself.
class PlotDrawer {
 public:
  virtual ~PlotDrawer() = default;

  // Why there are no pictures at all, in a sentence; empty where there are.
  virtual std::string WhyNone() const = 0;

  // The bytes of a picture of the plot that has `plotText` as its file, in the form that the ending of a name tells,
  // such as ".png"; or the PDF document of a printed report, by kPrintedReport (report/ReportFormat.h). `goOn` is asked
  // all the while; false calls the drawing off. Fails with a sentence.
  virtual Result<std::string> Draw(const std::string& plotText, const std::string& ending,
                                   const std::function<bool()>& goOn) = 0;
};

}  // namespace quorvex
