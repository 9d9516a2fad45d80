#pragma once

#include <string>

namespace quorvex {

// What a search tells of its progress and asks: its window, maybe on another thread, or a test. By itself it shows
// nothing and never ends a search.
class SelectionForm {
 public:
  virtual ~SelectionForm() = default;

  virtual void SetStatus(const std::string& /*text*/) {}
  // Combination `i` of `total`, whole numbers that may lie beyond those of an integer.
  virtual void SetCounter(double /*i*/, double /*total*/) {}
  // Steps of what the status says.
  virtual void SetProgress(std::size_t /*done*/, std::size_t /*of*/) {}
  // Whether the user wants it to end. Asked often.
  virtual bool Aborted() const { return false; }
};

}  // namespace quorvex
