#pragma once

#include <QApplication>
#include <QImage>
#include <QTest>
#include <cstdlib>

#include "app/SettingsStore.h"
#include "app/ui/parentfrm.h"
#include "core/LocaleText.h"
#include "files/ui/Dataplot.h"

namespace quorvex {

// Tells the test program to be the process that opens a plot's file: the file and the picture to be written follow.
inline constexpr const char* kPictureOfPlotFile = "--picture-of-plot";

// What the window of a plot shows.
inline QImage ShownBy(Dataplot& window) {
  window.resize(720, 560);
  QTest::qWait(20);
  return window.View().Picture().convertToFormat(QImage::Format_RGB32);
}

// Opens the file under a frame, as the program does with a file named to it, and saves what is seen as an image.
// Returns the process's status.
inline int PictureOfPlotFile(const char* file, const char* picture) {
  Session session{LoadSettings(), ReadUserLocale()};
  session.Preferences.Set("Show Tips at Startup", "0");
  session.Preferences.Set("hideplotinfo", "1");
  parentfrm frame(session, file, file + std::string(".state"));
  frame.show();
  QTest::qWait(50);
  auto* window = frame.findChild<Dataplot*>();
  const bool saved = window != nullptr && ShownBy(*window).save(picture);
  return saved ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace quorvex
