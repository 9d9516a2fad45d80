#pragma once

#include <sys/types.h>
#include <time.h>

#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/Result.h"

namespace quorvex {

// The line end of every text file that is written, and of logs and multi-line texts.
inline constexpr std::string_view NL = "\r\n";

// File errors by the number that statuses and messages are told in: 52 bad file name, 53 file not found, 57 device
// error, 61 disk full, 62 shortened while it was read, 68 device unavailable, 75 path or file access error, 76 path not
// found; 0 is no error.
// Anything else keeps its own errno, as a negative number so that the two never meet.
int FileErrorNumber(int errnoValue);

// A file error in words, as a sentence; "" for 0.
std::string FileErrorText(int number);

// What folders hold, each listed once: for a great many names, looked for at one time.
class FolderListings {
 public:
  // The entries of a folder, "" for the one we are in, whose names are `component` in another case; in order.
  std::vector<std::string> Others(const std::string& folder, const std::string& component);

 private:
  // By folder, and there by name in lower case.
  std::unordered_map<std::string, std::unordered_map<std::string, std::vector<std::string>>> folders_;
};

// The file that `name` means to a reader: `name` as it stands when it exists; else looked up once more with "\" read as
// "/" and each component matched without regard to case, since some names arrive lower-cased. Every folder that matches
// is tried, the one as written first, then by name. A name that is found neither way comes back with as many leading
// components as were found, the rest as written.
std::string ResolvePath(const std::string& name, FolderListings* listings = nullptr);

// The file that `name` means to a writer: in the folder that a reader would find, by the name as written, so that it
// never falls on a file whose name differs in case.
std::string ResolveNewPath(const std::string& name);

// The same for many files, one after the other: the folder that was found last is kept as long as it is there, so that
// nobody looks through the folders above it again.
class NewPaths {
 public:
  explicit NewPaths(FolderListings* listings = nullptr) : listings_(listings) {}

  std::string Resolve(const std::string& name);

 private:
  FolderListings* listings_;
  std::string folder_, found_;  // as written, and as it is; both with what separates it from the name
};

// The file that a name means which is used in lower case: to a reader the name as typed where that exists, else the one
// in lower case, resolved; to a writer the name in lower case, in the folder as typed where that exists.
std::string ResolveFoldedPath(const std::string& typed);
std::string ResolveNewFoldedPath(const std::string& typed);

// The number of the error that reading `name`, which is resolved, would fail with at its start, and writing it, anew or
// in its place; 0 where it would not. Nothing is opened that somebody could tell, and nothing is made.
int ReadingError(const std::string& name);
int WritingError(const std::string& name);

// What tells a regular file from every other, whatever it is called.
struct FileIdentity {
  dev_t Device;
  ino_t Inode;
  auto operator<=>(const FileIdentity&) const = default;
};

// That of the file behind `name` as it stands; nothing where there is no regular file.
std::optional<FileIdentity> IdentityOfFile(const std::string& name);

// A file that is read from its beginning to its end. It is read and not mapped, for a mapped file that somebody
// shortens is the reader's death.
class InputFile {
 public:
  InputFile() = default;
  ~InputFile() { Close(); }
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  // Opens `name`, which is resolved first. Returns 0 or the file error's number: 75 for a folder, 76 in place of 53
  // where the folder is missing, 68 for a device that is no terminal, since such a one is no data and may never end.
  // Closes what was open before.
  int Open(const std::string& name);
  void Close();
  // Where there is one, it is asked before each piece that is read, and again and again while one is waited for: false
  // ends the reading with the number of ECANCELED. To be set before the file is opened.
  std::function<bool()> KeepGoing;
  // The size of a regular file when it was opened; what is behind it is not read. 0 where none is told, as by a pipe.
  std::size_t ToldSize() const { return told_; }
  // Reads the next `size` bytes, fewer only at the end. Returns 0 or the file error's number: 62 for a file that was
  // shortened meanwhile.
  int Read(char* to, std::size_t size, std::size_t& count);

 private:
  int ErrorOfEarlyEnd() const;
  bool MayGoOn() const;

  int descriptor_ = -1;
  std::size_t told_ = 0, read_ = 0;
  timespec modified_{};
};

// Bytes that become more while a file is read.
class ReadBuffer {
 public:
  // Makes room for so many; those that are there stay. False where there is no memory.
  bool Reserve(std::size_t capacity);
  void Free() { bytes_.reset(); }
  char* Data() const { return bytes_.get(); }

 private:
  struct Release {
    void operator()(char* bytes) const { std::free(bytes); }
  };
  std::unique_ptr<char, Release> bytes_;
};

// A whole file in memory. One of UTF-16 that bears its mark is held as UTF-8, so whatever reads text reads it, too.
class WholeFile {
 public:
  WholeFile() = default;
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  // Reads `name`, or its first `limit` bytes. Returns 0 or the number of InputFile's error, and the text is then empty.
  int Read(const std::string& name, std::size_t limit = SIZE_MAX);

  std::string_view Text() const { return {bytes_.Data(), size_}; }

 private:
  int ReadOpen(InputFile& file, std::size_t limit);

  ReadBuffer bytes_;
  std::size_t size_ = 0;
};

// The text of a file piece by piece, as WholeFile would have it, each piece ending with a line: so a long file is never
// in memory as a whole. That is left to one of UTF-16 alone.
class FileLines {
 public:
  // A piece stays in the processor's own memory until it is parsed.
  static constexpr std::size_t kPiece = 1 << 20;
  // Pieces have some `piece` bytes, and more where a line has. `keepGoing` is InputFile's.
  explicit FileLines(std::size_t piece = kPiece, std::function<bool()> keepGoing = {}) : piece_(piece) {
    file_.KeepGoing = std::move(keepGoing);
  }

  int Open(const std::string& name);  // as InputFile does
  // The lines that follow, valid until the next call; none at the end. Returns 0 or the file error's number.
  int Next(std::string_view& lines);
  // How many bytes there are behind those lines, as far as the file tells.
  std::size_t BytesBehind() const;
  // Whether there was no text at all, once there are no lines any more.
  bool IsEmpty() const { return isEmpty_; }

 private:
  int ReadMore();
  int DecodeRest();

  InputFile file_;
  ReadBuffer bytes_;
  std::size_t piece_, capacity_ = 0;
  std::size_t size_ = 0, taken_ = 0;  // of the bytes in the buffer, and of those among them that were handed out
  std::size_t total_ = 0;             // bytes read
  bool ended_ = false, isEmpty_ = true;
};

// A text file being written, buffered, every error kept by number.
class TextFile {
 public:
  TextFile() = default;
  ~TextFile();
  TextFile(const TextFile&) = delete;
  TextFile& operator=(const TextFile&) = delete;

  // Opens the file anew and overwrites what was there, as a log does that grows while it is written. The program's
  // output and messages, such as /dev/stdout, go on where they stand. Returns 0 or the file error's number. Closes what
  // was open before.
  int Create(const std::string& name);
  // The same, going on behind the first `size` bytes of what was there, or behind all of it, and alone: 55 where
  // another program does the same. What is no regular file has nothing to be kept.
  int Continue(const std::string& name, std::optional<std::size_t> size = std::nullopt);
  // The same on a descriptor, which becomes this file's.
  void Attach(int descriptor);
  bool IsOpen() const { return descriptor_ >= 0; }

  void Write(std::string_view text);      // as it stands
  void WriteLine(std::string_view text);  // followed by NL
  // Hands a text to the system as a whole: where that fails, a file that can be cut is as it was before, and what comes
  // next is tried anew. Returns 0 or the file error's number.
  int Append(std::string_view text);
  int Flush();  // hands the buffer to the system; the first error's number since Create, or 0
  int Sync();   // the same, and waits until the disk has it
  int Close();  // flushes and closes; the first error's number since Create, or 0

 private:
  int descriptor_ = -1;
  int error_ = 0;
  std::string buffer_;
};

}  // namespace quorvex
