#include "core/DateText.h"

namespace quorvex {

std::string DateText(std::time_t moment) {
  std::tm local{};
  localtime_r(&moment, &local);
  char text[32];
  return std::string(text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local));
}

}  // namespace quorvex
