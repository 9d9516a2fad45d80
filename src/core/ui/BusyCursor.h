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

// The arrow while a command at work waits for an answer.
class ArrowCursor {
 public:
  ArrowCursor() { QGuiApplication::setOverrideCursor(Qt::ArrowCursor); }
  ~ArrowCursor() { QGuiApplication::restoreOverrideCursor(); }
  ArrowCursor(const ArrowCursor&) = delete;
  ArrowCursor& operator=(const ArrowCursor&) = delete;
};

}  // namespace quorvex
