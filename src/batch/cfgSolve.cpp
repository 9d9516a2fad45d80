#include "batch/cfgSolve.h"

#include <cstdio>

#include "core/NumberText.h"

namespace quorvex {

void cfgSolve::DDEText(std::string_view text) {
  std::printf("%.*s\n", static_cast<int>(text.size()), text.data());
  // Through a pipe the lines would otherwise all arrive at the end.
  std::fflush(stdout);
}

void cfgSolve::ShowStatus(const std::string& text) {
  const std::string first = FirstCharacters(text, 50);
  SetStatusLabel(first == text ? text : first + "...");
}

void cfgSolve::ShowWork(const std::string& what, std::size_t done, std::size_t of) {
  ShowStatus(what);
  SetProgress(static_cast<int>(done), static_cast<int>(of));
}

}  // namespace quorvex
