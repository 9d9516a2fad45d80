#include "import/spreadsheet/SpreadsheetArchive.h"

#include <zlib.h>

#include <algorithm>
#include <array>

namespace quorvex {
namespace {

// The inflater of an entry, closed at the end.
struct Inflater {
  Inflater() : Ready(inflateInit2(&Stream, -MAX_WBITS) == Z_OK) {}  // negative: no header in front of the data
  ~Inflater() {
    if (Ready) inflateEnd(&Stream);
  }
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;

  z_stream Stream{};
  bool Ready;
};

}  // namespace

// Offsets and signatures: PKWARE's APPNOTE.TXT, sections 4.3.7 (an entry's header), 4.3.12 (the directory) and 4.3.16
// (its end).
SpreadsheetArchive::SpreadsheetArchive(std::string_view bytes, const LongWork& work) : bytes_(bytes), work_(work) {
  constexpr std::string_view kEnd = "PK\5\6", kEntry = "PK\1\2";
  constexpr std::size_t kEntrySize = 46;
  // From behind, as nothing but a comment follows the end of the directory.
  const auto end = bytes.rfind(kEnd);
  if (end == std::string_view::npos) return;
  std::size_t at = NumberAt(end + 16, 4);
  for (std::size_t left = NumberAt(end + 10, 2); left > 0; --left) {
    if (at > bytes.size() || bytes.size() - at < kEntrySize || bytes.substr(at, 4) != kEntry) break;
    const std::size_t nameSize = NumberAt(at + 28, 2);
    entries_.push_back({.Name = bytes.substr(at + kEntrySize, nameSize),
                        .Encrypted = (NumberAt(at + 8, 2) & 1) != 0,
                        .Method = static_cast<unsigned>(NumberAt(at + 10, 2)),
                        .Checksum = NumberAt(at + 16, 4),
                        .PackedSize = NumberAt(at + 20, 4),
                        .HeaderAt = NumberAt(at + 42, 4)});
    at += kEntrySize + nameSize + NumberAt(at + 30, 2) + NumberAt(at + 32, 2);
  }
}

bool SpreadsheetArchive::Encrypted() const {
  return std::any_of(entries_.begin(), entries_.end(), [](const Entry& entry) { return entry.Encrypted; });
}

SpreadsheetFault SpreadsheetArchive::Unpack(std::string_view name, const std::function<bool(std::string_view)>& take) {
  // A small file can be made to unpack to any size.
  constexpr std::size_t kMostUnpacked = std::size_t{512} << 20, kHeaderSize = 30;
  constexpr unsigned kStored = 0, kDeflated = 8;
  const Entry* const entry = Find(name);
  if (entry == nullptr || (entry->Method != kStored && entry->Method != kDeflated)) return SpreadsheetFault::Damaged;
  // The entry's own header may have an extra field of another length than the directory's.
  const std::size_t begin =
      entry->HeaderAt + kHeaderSize + NumberAt(entry->HeaderAt + 26, 2) + NumberAt(entry->HeaderAt + 28, 2);
  if (begin > bytes_.size()) return SpreadsheetFault::Damaged;
  const std::string_view packed = bytes_.substr(begin, entry->PackedSize);

  uLong checksum = crc32(0, nullptr, 0);
  const auto deliver = [&](std::string_view piece, std::size_t left) {
    work_.ShowProgress(packed.size() - left, packed.size());
    checksum = crc32(checksum, reinterpret_cast<const Bytef*>(piece.data()), static_cast<uInt>(piece.size()));
    unpacked_ += piece.size();
    return take(piece);
  };
  if (entry->Method == kStored) {
    constexpr std::size_t kPiece = 1 << 16;
    for (std::size_t at = 0; at < packed.size(); at += kPiece) {
      if (work_.Cancelled()) return SpreadsheetFault::Cancelled;
      // The taker needs no more, or has a fault of its own to tell.
      if (!deliver(packed.substr(at, kPiece), packed.size() - at)) return SpreadsheetFault::None;
      if (unpacked_ > kMostUnpacked) return SpreadsheetFault::TooLarge;
    }
  } else {
    Inflater inflater;
    z_stream& stream = inflater.Stream;
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    for (int state = inflater.Ready ? Z_OK : Z_MEM_ERROR; state != Z_STREAM_END;) {
      if (work_.Cancelled()) return SpreadsheetFault::Cancelled;
      std::array<char, 1 << 16> piece;
      stream.next_out = reinterpret_cast<Bytef*>(piece.data());
      stream.avail_out = static_cast<uInt>(piece.size());
      if (state == Z_OK) state = inflate(&stream, Z_NO_FLUSH);
      if (state != Z_OK && state != Z_STREAM_END) return SpreadsheetFault::Damaged;
      const std::string_view unpacked(piece.data(), piece.size() - stream.avail_out);
      if (!deliver(unpacked, stream.avail_in)) return SpreadsheetFault::None;
      if (unpacked_ > kMostUnpacked) return SpreadsheetFault::TooLarge;
    }
  }
  return checksum == entry->Checksum ? SpreadsheetFault::None : SpreadsheetFault::Damaged;
}

const SpreadsheetArchive::Entry* SpreadsheetArchive::Find(std::string_view name) const {
  const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.Name == name; });
  return found == entries_.end() ? nullptr : &*found;
}

std::size_t SpreadsheetArchive::NumberAt(std::size_t at, std::size_t size) const {
  if (at > bytes_.size() || bytes_.size() - at < size) return 0;
  std::size_t number = 0;
  while (size-- > 0) number = number << 8 | static_cast<unsigned char>(bytes_[at + size]);
  return number;
}

}  // namespace quorvex
