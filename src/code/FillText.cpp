#include "code/FillText.h"

namespace quorvex {

std::string FillText(std::string_view text, std::initializer_list<std::string_view> parts) {
  std::string filled;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isMark = text[i] == '$' && i + 1 < text.size() && text[i + 1] >= '1' &&
                        static_cast<std::size_t>(text[i + 1] - '1') < parts.size();
    if (isMark)
      filled += parts.begin()[text[++i] - '1'];
    else
      filled += text[i];
  }
  return filled;
}

}  // namespace quorvex
