#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/Result.h"

namespace quorvex {

// The line end of every text file that is written, and of logs and multi-line texts.
inline constexpr std::string_view NL = "\r\n";

// File errors by the number that statuses and messages are told in: 52 bad file name, 53 file not found, 57 device
// error, 61 disk full, 68 device unavailable, 75 path or file access error, 76 path not found; 0 is no error.
// Anything else keeps its own errno, as a negative number so that the two never meet.
int FileErrorNumber(int errnoValue);

// A file error in words, as a sentence; "" for 0.
std::string FileErrorText(int number);

// `name` as it stands when it exists; else looked up once more with "\" read as "/" and each component matched without
// regard to case, since some names arrive lower-cased. A name that is found neither way comes back with as many
// leading components as were found, the rest as written, so that a file to be created lands in the folder found.
std::string ResolvePath(const std::string& name);

// A whole file, mapped into memory read-only where that is possible and read otherwise (a pipe). Resolves its name. A
// file of UTF-16 that bears its mark is held as UTF-8, so whatever reads text reads it, too.
class MappedFile {
 public:
  MappedFile() = default;
  ~MappedFile();
  MappedFile(MappedFile&& other) noexcept;
  MappedFile& operator=(MappedFile&& other) noexcept;

  // Opens `name`. Returns 0, or the file error's number (75 for a folder); 53 becomes 76 where the folder is missing.
  int Open(const std::string& name);

  std::string_view Text() const;

 private:
  // Releases what is held.
  void Close();

  const char* data_ = nullptr;
  std::size_t size_ = 0;
  bool mapped_ = false;
  std::string copy_;
};

// A text file being written: opened anew (an existing file is overwritten), buffered, every error kept by number.
class TextFile {
 public:
  TextFile() = default;
  ~TextFile();
  TextFile(const TextFile&) = delete;
  TextFile& operator=(const TextFile&) = delete;

  // Creates the file. Returns 0 or the file error's number. Closes what was open before.
  int Create(const std::string& name);
  bool IsOpen() const { return descriptor_ >= 0; }

  void Write(std::string_view text);      // as it stands
  void WriteLine(std::string_view text);  // followed by NL
  int Flush();                            // hands the buffer to the system; the first error's number since Create, or 0
  int Sync();                             // the same, and waits until the disk has it
  int Close();                            // flushes and closes; the first error's number since Create, or 0

 private:
  int descriptor_ = -1;
  int error_ = 0;
  std::string buffer_;
};

// Replaces a file's content so that a failure at any moment loses nothing: the new content is written and synchronised
// beside it, the old file stays as `name` with "~" behind, and the new one takes its place. Links are followed, the
// file's permissions kept; what is no regular file is written to as it stands. Returns 0 or the file error's number.
int SaveFile(const std::string& name, std::string_view content);

}  // namespace quorvex
