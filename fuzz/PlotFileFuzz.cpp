#include "PlotFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return quorvex::FuzzPlotFile(data, size);
}
