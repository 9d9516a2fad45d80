#pragma once

#include <string>
#include <string_view>

#include "import/spreadsheet/SpreadsheetArchive.h"

namespace quorvex {

// Reads a file of XML in an archive from its begin to its end. Names are "namespace|local", or "local" alone where
// there is no namespace.
class SpreadsheetXml {
 public:
  // The attributes of an element. Valid during Begin.
  class Attributes {
   public:
    explicit Attributes(const char* const* list) : list_(list) {}
    // The value of an attribute, "" where it is missing. A name with "|" is matched by its end, since namespaces are
    // long and come in editions: "office:1.0|value".
    std::string_view operator[](std::string_view name) const;

   private:
    const char* const* list_;  // name, value, name, value, ..., nullptr
  };

  virtual ~SpreadsheetXml() = default;
  // Damaged also where the XML is not well-formed or has a document type, which no spreadsheet has.
  SpreadsheetFault Read(SpreadsheetArchive& archive, std::string_view entry);

 protected:
  virtual void Begin(std::string_view name, const Attributes& attributes) = 0;
  virtual void End(std::string_view name) { static_cast<void>(name); }
  virtual void Text(std::string_view text) { static_cast<void>(text); }

  // Ends the reading: enough was read, or `fault`.
  void Stop(SpreadsheetFault fault);

 private:
  bool stopped_ = false;
  SpreadsheetFault fault_ = SpreadsheetFault::None;
  std::size_t quiet_ = 0;  // bytes since the parser last told something; it holds a tag whole, however long
};

// A whole number of `text`, or `missing` where it has none. At most 2^31 - 1.
std::size_t WholeNumber(std::string_view text, std::size_t missing);

}  // namespace quorvex
