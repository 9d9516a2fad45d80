#pragma once

#include "code/CodeLanguage.h"

namespace quorvex {

// Each in a file of its own name.
extern const CodeLanguage kPython;

}  // namespace quorvex
