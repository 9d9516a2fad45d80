#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex {

struct MacroStatement;

// What a check of a macro finds.
struct MacroFault {
  std::size_t Line = 0;      // of the macro, from 1; 0 for what no line tells
  std::size_t Row = 0;       // of its table, the first one that has this, from 1; 0 for what no row tells
  std::size_t MoreRows = 0;  // that have it, too
  int Status = 0;            // of a run that comes to it; 0 where the run goes on
  std::string Text;          // a sentence
};

// "Line 4, row 17: the data file 'a.txt' cannot be read. The file does not exist." In one line, and not too long.
std::string ShownFault(const MacroFault& fault);

// What a reader finds, and where each line stands that was read.
struct MacroNotes {
  struct Line {
    std::size_t Number;               // from 1
    const MacroStatement* Statement;  // null for a line of a model
    std::string Keyword, Value;       // as written
  };

  std::vector<MacroFault> Faults;
  std::vector<Line> Lines;

  // The last line with that statement, which is the one that counts; 0 where there is none.
  std::size_t LineOf(std::string_view keyword) const;
};

}  // namespace quorvex
