#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/Files.h"
#include "core/FreshFile.h"

namespace quorvex {

// How much depends on a file. Answers can be computed again, and a table of parameters makes thousands of them;
// settings are waited for until the disk has them; and so are documents, whose old content also stays, as the name with
// "~" behind.
enum class FileCare { Answer, Settings, Document };

// A file that takes the place of what was there when it is complete: until then the old content stands under its name,
// whatever fails or ends the program. It has the old one's permissions from its first byte. Links are followed, to
// nowhere as well. Written as they stand are what is no regular file and a file whose folder cannot be written; a file
// that cannot be written is refused. What programs that were killed left behind in the folder is cleaned away.
class ReplacementFile {
 public:
  explicit ReplacementFile(FileCare care) : care_(care) {}
  ~ReplacementFile() { Abandon(); }
  ReplacementFile(const ReplacementFile&) = delete;
  ReplacementFile& operator=(const ReplacementFile&) = delete;

  // Begins anew; what was not committed is forgotten. Returns 0 or the file error's number.
  int Create(const std::string& name);
  TextFile& Text() { return text_; }
  // Returns 0 or the number of the first file error since Create, after which the old content stands.
  int Commit();
  // Forgets what was not committed.
  void Abandon();

 private:
  int Begin(const std::string& name);
  int Replace();
  int GiveName() const;
  int KeepOld(FreshFile& kept) const;
  int WriteInPlace();

  const FileCare care_;
  int error_ = 0;
  std::string target_, folder_;
  std::optional<std::string> cleaned_;  // the folder looked through last: a table of parameters may fill one
  FreshFile fresh_;                     // none for what is no regular file
  TextFile text_;
  int old_ = -1;  // the file to be replaced, open for writing
};

// The name by which the old content of a document stays. One of 255 bytes, the longest there is, gives its last
// character away for the "~".
std::string KeptName(const std::string& name);

// Replaces a file's content as a whole. Returns 0, or the file error's number where the old content stands.
int SaveFile(const std::string& name, std::string_view content, FileCare care = FileCare::Document);

}  // namespace quorvex
