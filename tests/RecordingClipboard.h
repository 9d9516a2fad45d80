#pragma once

#include <string>

#include "core/Clipboard.h"

namespace quorvex {

// A clipboard of its own, so that tests neither read nor change that of the desktop.
class RecordingClipboard : public Clipboard {
 public:
  std::string Held;

  std::string Text() const override { return Held; }
  void SetText(const std::string& text) override { Held = text; }
};

}  // namespace quorvex
