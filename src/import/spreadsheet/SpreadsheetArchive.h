#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

#include "core/LongWork.h"

namespace quorvex {

// Why a spreadsheet cannot be read.
enum class SpreadsheetFault { None, Damaged, Protected, TooLarge, Cancelled };

// The zip archive that a spreadsheet is: files of XML, packed. Entries are unpacked piece by piece and never held
// whole, so a few bytes that stand for gigabytes cost time up to a limit and no memory.
class SpreadsheetArchive {
 public:
  // `bytes` must outlive the archive. What is no archive has no entries.
  SpreadsheetArchive(std::string_view bytes, const LongWork& work);

  bool Has(std::string_view name) const { return Find(name) != nullptr; }
  // Whether an entry is locked by the archive itself.
  bool Encrypted() const;

  // Hands an entry's content to `take` until that returns false. Damaged where the entry is missing, breaks off, or
  // does not fit its checksum; TooLarge where more than 512 MiB was unpacked from this archive. How much of a packed
  // entry is done is the progress of the work, and Cancelled where that was.
  SpreadsheetFault Unpack(std::string_view name, const std::function<bool(std::string_view)>& take);

 private:
  struct Entry {
    std::string_view Name;
    bool Encrypted;
    unsigned Method;
    std::size_t Checksum, PackedSize, HeaderAt;
  };
  const Entry* Find(std::string_view name) const;
  // The little-endian number of `size` bytes at `at`; 0 behind the end.
  std::size_t NumberAt(std::size_t at, std::size_t size) const;

  std::string_view bytes_;
  const LongWork& work_;
  std::vector<Entry> entries_;
  std::size_t unpacked_ = 0;
};

}  // namespace quorvex
