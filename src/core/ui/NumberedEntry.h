#pragma once

#include <QString>

namespace quorvex {

// The text of an entry in a menu that is filled at run time: the first nine are reached by their digit, and "&" stands
// for itself.
inline QString NumberedEntry(int number, QString text) {
  return (number < 10 ? QString("&%1  ") : QString("%1  ")).arg(number) + text.replace('&', "&&");
}

}  // namespace quorvex
