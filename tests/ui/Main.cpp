// Tests of the windows. They need no display; QT_QPA_PLATFORM=xcb shows them on one.

#include <gtest/gtest.h>

#include <cstdlib>
#include <string_view>

#include "PictureOfPlotFile.h"
#include "app/ui/DesktopApplication.h"

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  testing::InitGoogleTest(&argc, argv);
  const quorvex::DesktopApplication application(argc, argv);
  if (argc == 4 && std::string_view(argv[1]) == quorvex::kPictureOfPlotFile)
    return quorvex::PictureOfPlotFile(argv[2], argv[3]);
  return RUN_ALL_TESTS();
}
