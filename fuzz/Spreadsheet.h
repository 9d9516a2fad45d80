#pragma once

#include <sys/mman.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Require.h"
#include "import/spreadsheet/SpreadsheetCells.h"
#include "import/spreadsheet/SpreadsheetFile.h"

namespace quorvex {

// Whole numbers as archives hold them, the lowest byte first.
inline std::string LittleEndian(std::size_t number, int size) {
  std::string bytes;
  for (; size-- > 0; number >>= 8) bytes += static_cast<char>(number & 0xFF);
  return bytes;
}

// An archive of the entries in a text: a name, a line end and the content of each, a NUL between them. What is packed
// and has a checksum no fuzzer would ever change into something that is read.
inline std::string ArchiveOf(std::string_view text) {
  std::string entries, directory;
  std::size_t count = 0;
  while (!text.empty() && count < 100) {
    const std::string_view entry = text.substr(0, text.find('\0'));
    text.remove_prefix(std::min(entry.size() + 1, text.size()));
    const std::string_view name = entry.substr(0, std::min<std::size_t>(entry.find('\n'), 255));
    const std::string_view content = entry.substr(std::min(name.size() + 1, entry.size()));
    const auto checksum = crc32(0, reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size()));
    // Version, flags, method (stored), time, checksum, both sizes, the name's length and that of nothing behind it.
    const std::string about = LittleEndian(20, 2) + LittleEndian(0, 8) + LittleEndian(checksum, 4) +
                              LittleEndian(content.size(), 4) + LittleEndian(content.size(), 4) +
                              LittleEndian(name.size(), 2) + LittleEndian(0, 2);
    directory += "PK\1\2" + LittleEndian(20, 2) + about + LittleEndian(0, 10) + LittleEndian(entries.size(), 4);
    directory += name;
    entries += "PK\3\4" + about;
    entries += name;
    entries += content;
    ++count;
  }
  return entries + directory + "PK\5\6" + LittleEndian(0, 4) + LittleEndian(count, 2) + LittleEndian(count, 2) +
         LittleEndian(directory.size(), 4) + LittleEndian(entries.size(), 4) + LittleEndian(0, 2);
}

// A file in memory, and its name.
class MemoryFile {
 public:
  explicit MemoryFile(const std::string& bytes) : handle_(memfd_create("spreadsheet", 0)) {
    Require(handle_ >= 0 && write(handle_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
            "no file in memory");
  }
  ~MemoryFile() { close(handle_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  std::string Name() const { return "/proc/self/fd/" + std::to_string(handle_); }

 private:
  int handle_;
};

// Reads the bytes as a spreadsheet: as they are where they are an archive, else as the entries of one.
inline int FuzzSpreadsheet(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const MemoryFile file(bytes.starts_with("PK") ? std::string(bytes) : ArchiveOf(bytes));
  const std::string failed = "Error importing data from '" + file.Name() + "'. ";
  const auto sheets = ListSheets(file.Name());
  if (!sheets) {
    Require(sheets.error().starts_with(failed), "a refusal without words");
    return 0;
  }
  Require(!sheets->empty(), "a spreadsheet without sheets");
  for (const std::string& name : {sheets->front(), sheets->back()}) {
    const auto cells = ReadSheet(file.Name(), name);
    if (!cells) {
      Require(cells.error().starts_with(failed) && cells.error() != failed + "There is no sheet '" + name + "'.",
              "a sheet that is listed and not there");
      continue;
    }
    Require(cells->GridLastRow() <= SpreadsheetCells::kMostRows, "too many rows");
    Require(cells->GridLastCol() <= kMostColumnsRead, "too many columns");
  }
  return 0;
}

}  // namespace quorvex
