#pragma once

#include <QGuiApplication>

namespace quorvex {

// The busy cursor for the length of a block.
class BusyCursor {
 public:
  BusyCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  ~BusyCursor() { QGuiApplication::restoreOverrideCursor(); }
  BusyCursor(const BusyCursor&) = delete;
  BusyCursor& operator=(const BusyCursor&) = delete;
};

}  // namespace quorvex
