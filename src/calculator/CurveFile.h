#pragma once

#include <string>

#include "calculator/Stackclass.h"
#include "core/Result.h"

namespace quorvex {

// An entry as a text file: a line with X and Y, a tab between them, for each point of a curve, or the one number. With
// decimal points in every locale, and exact to the last bit.
std::string EntryText(const StackEntry& entry);

// The entry that a file holds, under its name as the legend: the number of a file that has just one, else the points
// that an import finds in it. Fails where it finds none.
Result<StackEntry> ReadEntry(const std::string& fileName, const LocaleText& locale);

}  // namespace quorvex
