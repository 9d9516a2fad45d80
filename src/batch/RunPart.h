#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/Result.h"

namespace quorvex {

// One of the equal parts that a table of parameters is run in, by a process each. Parts differ by one row at most, and
// each row is in one of them.
struct RunPart {
  std::size_t Number = 1, Count = 1;  // Number from 1 to Count

  std::size_t First(std::size_t rows) const { return Before(Number - 1, rows); }  // from 0
  std::size_t End(std::size_t rows) const { return Before(Number, rows); }        // behind the last

 private:
  std::size_t Before(std::size_t part, std::size_t rows) const {
    // In this order nothing gets too large: part * rows / Count, rounded down.
    return part * (rows / Count) + part * (rows % Count) / Count;
  }
};

// "2/4" is the second of four. Fails with a sentence.
Result<RunPart> ParseRunPart(std::string_view text);

// The file of a part, beside those of the others: its number stands in front of the extension, as in "run.2.log".
// A device, such as /dev/stdout, is all the parts' own.
std::string NameOfPart(std::string_view name, std::size_t part);

// The runs that a result file has whole lines of whose answers stand (status 0, or one of a strict status), by what
// each line begins with: number and parameters, so that rows of another table don't count.
class AnsweredRuns {
 public:
  // Reads the file of a table of so many rows; it may be missing. Returns 0 or the number of the file error.
  int Read(const std::string& path, std::size_t rows);

  bool Has(std::size_t number, std::string_view beginning) const;
  // Where its last whole line ends; what follows was broken off.
  std::size_t WholeSize() const { return wholeSize_; }

 private:
  void Take(std::string_view line);

  std::vector<std::size_t> beginnings_;  // a hash for each number of a run, 0 for none
  std::size_t wholeSize_ = 0;
};

}  // namespace quorvex
