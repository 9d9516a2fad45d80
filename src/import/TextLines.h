#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex {

// The lines of a text file as an import takes them, before they are split into cells.

// A line that tells something to readers and is no data.
struct CommentLine {
  std::size_t Line;  // counted from 1
  std::string Text;  // as it stands there
};

// Takes a cell between double quotes that has line ends in it as one line: each of those becomes a blank. A quote holds
// as it does for DelimitedFormat::QuotesHold, where a cell begins; one that no other ends soon holds nothing.
void JoinQuotedLines(std::string& text);

// The comments of a text: lines that begin with "#", "%", "//", ";" or "!", wherever they stand, and in a text of
// several columns those that are but one quoted text. There are none where no other line has a number; ";" is no sign
// in a text with semicolons between its cells, and "#N/A" is a cell.
std::vector<CommentLine> FindComments(std::string_view text);

// What a comment says, without the sign in front of it, quotes and blanks.
std::string_view CommentText(std::string_view line);

// The text with blanks in the place of these lines.
std::string BlankLines(std::string text, const std::vector<CommentLine>& lines);

}  // namespace quorvex
