#include "import/spreadsheet/SpreadsheetXml.h"

#include <expat.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>

namespace quorvex {
namespace {

// The parser keeps every open element and every name that it has met, so a small file can make it take gigabytes. Its
// memory is counted therefore, by a size in front of each block, and ends at a limit; the calls for it carry nothing by
// which to tell parsers apart, and there is one at a time in a thread.
constexpr std::size_t kMostParserMemory = std::size_t{32} << 20, kBlockHeader = alignof(std::max_align_t);
thread_local std::size_t parserMemory = 0;

void* Reallocate(void* block, std::size_t size) {
  char* const old = block == nullptr ? nullptr : static_cast<char*>(block) - kBlockHeader;
  std::size_t oldSize = 0;
  if (old != nullptr) std::memcpy(&oldSize, old, sizeof oldSize);
  // The first condition keeps the sum in the second from wrapping.
  if (size > kMostParserMemory || parserMemory - oldSize + size > kMostParserMemory) return nullptr;
  char* const taken = static_cast<char*>(std::realloc(old, kBlockHeader + size));
  if (taken == nullptr) return nullptr;
  parserMemory += size - oldSize;
  std::memcpy(taken, &size, sizeof size);
  return taken + kBlockHeader;
}

void* Allocate(std::size_t size) { return Reallocate(nullptr, size); }

void Free(void* block) {
  if (block == nullptr) return;
  char* const taken = static_cast<char*>(block) - kBlockHeader;
  std::size_t size;
  std::memcpy(&size, taken, sizeof size);
  parserMemory -= size;
  std::free(taken);
}

}  // namespace

std::string_view SpreadsheetXml::Attributes::operator[](std::string_view name) const {
  const bool byEnd = name.find('|') != std::string_view::npos;
  for (const char* const* at = list_; *at != nullptr; at += 2)
    if (byEnd ? std::string_view(at[0]).ends_with(name) : at[0] == name) return at[1];
  return "";
}

SpreadsheetFault SpreadsheetXml::Read(SpreadsheetArchive& archive, std::string_view entry) {
  struct Calls {  // in the form in which the parser calls back
    static SpreadsheetXml& Self(void* self) {
      auto& reader = *static_cast<SpreadsheetXml*>(self);
      reader.quiet_ = 0;
      return reader;
    }
    static void Begin(void* self, const char* name, const char** attributes) {
      if (!Self(self).stopped_) Self(self).Begin(name, Attributes(attributes));
    }
    static void End(void* self, const char* name) {
      if (!Self(self).stopped_) Self(self).End(name);
    }
    static void Text(void* self, const char* text, int size) {
      if (!Self(self).stopped_) Self(self).Text({text, static_cast<std::size_t>(size)});
    }
    // A document type could define entities that unfold without end, and no spreadsheet has one.
    static void DocumentType(void* self, const char*, const char*, const char*, int) {
      Self(self).Stop(SpreadsheetFault::Damaged);
    }
  };
  constexpr XML_Memory_Handling_Suite kCountedMemory = {Allocate, Reallocate, Free};
  const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
      XML_ParserCreate_MM(nullptr, &kCountedMemory, "|"), XML_ParserFree);
  if (parser == nullptr) return SpreadsheetFault::TooLarge;  // no memory for it
  XML_SetUserData(parser.get(), this);
  XML_SetElementHandler(parser.get(), Calls::Begin, Calls::End);
  XML_SetCharacterDataHandler(parser.get(), Calls::Text);
  XML_SetStartDoctypeDeclHandler(parser.get(), Calls::DocumentType);

  stopped_ = false;
  fault_ = SpreadsheetFault::None;
  quiet_ = 0;
  bool wellFormed = true;
  const auto parse = [&](std::string_view piece, bool last) {
    constexpr std::size_t kLongestTag = 1 << 20;  // it is looked through again with each piece
    quiet_ += piece.size();
    if (quiet_ > kLongestTag) Stop(SpreadsheetFault::TooLarge);
    wellFormed = XML_Parse(parser.get(), piece.data(), static_cast<int>(piece.size()), last) == XML_STATUS_OK;
    if (!wellFormed && XML_GetErrorCode(parser.get()) == XML_ERROR_NO_MEMORY) Stop(SpreadsheetFault::TooLarge);
    return wellFormed && !stopped_;
  };
  const SpreadsheetFault unpacked = archive.Unpack(entry, [&](std::string_view piece) { return parse(piece, false); });
  if (wellFormed && !stopped_ && unpacked == SpreadsheetFault::None) parse("", true);
  if (stopped_) return fault_;
  return wellFormed ? unpacked : SpreadsheetFault::Damaged;
}

void SpreadsheetXml::Stop(SpreadsheetFault fault) {
  stopped_ = true;
  fault_ = fault;
}

std::size_t WholeNumber(std::string_view text, std::size_t missing) {
  std::uint64_t number = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error == std::errc::result_out_of_range) return std::numeric_limits<std::int32_t>::max();
  if (error != std::errc()) return missing;
  return std::min<std::uint64_t>(number, std::numeric_limits<std::int32_t>::max());
}

}  // namespace quorvex
