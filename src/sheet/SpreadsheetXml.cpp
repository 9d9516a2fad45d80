#include "sheet/SpreadsheetXml.h"

#include <expat.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <memory>

namespace quorvex {

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
    static void DocumentType(void* self, const char*, const char*, const char*, int) {
      Self(self).Stop(SpreadsheetFault::Damaged);
    }
  };
  const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreateNS(nullptr, '|'),
                                                                            XML_ParserFree);
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
    constexpr std::size_t kLongestTag = 4 << 20;
    quiet_ += piece.size();
    if (quiet_ > kLongestTag) Stop(SpreadsheetFault::TooLarge);
    wellFormed = XML_Parse(parser.get(), piece.data(), static_cast<int>(piece.size()), last) == XML_STATUS_OK;
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
