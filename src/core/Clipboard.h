#pragma once

#include <string>

namespace quorvex {

// The clipboard as commands see it: a text that other programs put in, or take out. Cells are lines with a tab between
// two cells.
class Clipboard {
 public:
  virtual ~Clipboard() = default;

  virtual std::string Text() const = 0;  // "" where it holds none
  virtual void SetText(const std::string& text) = 0;
  // The same for cells, which spreadsheets may then take as such.
  virtual void SetCells(const std::string& tabSeparated) { SetText(tabSeparated); }
};

}  // namespace quorvex
