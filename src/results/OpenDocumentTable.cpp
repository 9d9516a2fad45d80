#include "results/OpenDocumentTable.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "core/NumberText.h"
#include "core/SerialDate.h"
#include "core/XmlText.h"

namespace quorvex {
namespace {

constexpr std::string_view kMimeType = "application/vnd.oasis.opendocument.spreadsheet";
constexpr std::string_view kManifest =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<manifest:manifest "
    "xmlns:manifest=\"urn:oasis:names:tc:opendocument:xmlns:manifest:1.0\" manifest:version=\"1.2\">"
    "<manifest:file-entry manifest:full-path=\"/\" manifest:version=\"1.2\" "
    "manifest:media-type=\"application/vnd.oasis.opendocument.spreadsheet\"/>"
    "<manifest:file-entry manifest:full-path=\"content.xml\" manifest:media-type=\"text/xml\"/></manifest:manifest>\n";
constexpr std::string_view kBegin =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<office:document-content "
    "xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\" "
    "xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\" "
    "xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\" office:version=\"1.2\">"
    "<office:body><office:spreadsheet><table:table table:name=\"Table\">\n";
constexpr std::string_view kEnd = "</table:table></office:spreadsheet></office:body></office:document-content>\n";

// Type and value of a cell with a date as 2026-11-22T10:30:00, with a time as PT10H30M00S.
std::string DateXml(const SerialDate& date) {
  if (!date.Form.HasDate) {
    std::string time = FormatDate(std::abs(date.Days), "[h]:mm:ss.000000");
    time.replace(time.rfind(':'), 1, "M");
    time.replace(time.find(':'), 1, "H");
    return std::string("time\" office:time-value=\"") + (date.Days < 0 ? "-" : "") + "PT" + time + 'S';
  }
  DateForm form = date.Form;
  form.HasSeconds = form.HasTime;
  std::string moment = FormatDate(date.Days, form.Pattern());
  std::replace(moment.begin(), moment.end(), ' ', 'T');
  return "date\" office:date-value=\"" + moment;
}

std::string CellXml(const std::string& text, char decimalSeparator, bool maybeDate) {
  if (text.empty()) return "<table:table-cell/>";
  std::string xml = "<table:table-cell office:value-type=\"";
  if (const auto number = NumericText(text, decimalSeparator))
    xml += "float\" office:value=\"" + ShortestNumber(*number);
  else if (const auto date = maybeDate ? ReadDate(text, kIsoDates) : std::nullopt)
    xml += DateXml(*date);
  else
    xml += "string";
  return xml + "\"><text:p>" + XmlText(text) + "</text:p></table:table-cell>";
}

template <typename CellOf>
std::string RowXml(const TextTable& table, CellOf cellOf) {
  std::string xml = "<table:table-row>";
  for (std::size_t c = 0; c < std::max<std::size_t>(table.ColumnCount(), 1); ++c)
    xml += c < table.ColumnCount() ? CellXml(cellOf(c), table.DecimalSeparator(), table.HasDates(c))
                                   : CellXml("", table.DecimalSeparator(), false);
  return xml + "</table:table-row>\n";
}

void WriteContent(const TextTable& table, const TableSink& write) {
  if (!write(kBegin)) return;
  bool headed = false;
  for (std::size_t c = 0; c < table.ColumnCount(); ++c) headed = headed || !table.ColumnHeading(c).empty();
  if (headed && !write(RowXml(table, [&](std::size_t c) { return table.ColumnHeading(c); }))) return;
  for (std::size_t row = 0; row < table.RowCount(); ++row)
    if (!write(RowXml(table, [&](std::size_t c) { return table.Cell(row, c); }))) return;
  write(kEnd);
}

// The checksum of archives: CRC-32, polynomial 0x04C11DB7 with its bits reversed.
class Checksum {
 public:
  void Add(std::string_view bytes) {
    for (const char byte : bytes) {
      rest_ ^= static_cast<unsigned char>(byte);
      for (int bit = 0; bit < 8; ++bit) rest_ = (rest_ >> 1) ^ (rest_ & 1 ? 0xEDB88320U : 0U);
    }
    size_ += bytes.size();
  }
  std::uint32_t Value() const { return ~rest_; }
  std::size_t Size() const { return size_; }

 private:
  std::uint32_t rest_ = 0xFFFFFFFFU;
  std::size_t size_ = 0;
};

std::string Little(std::size_t value, int bytes) {
  std::string text;
  for (; bytes > 0; --bytes, value >>= 8) text += static_cast<char>(value & 0xFF);
  return text;
}

using Part = std::function<void(const TableSink& write)>;

// Writes entries as they are, without packing. Layout: PKWARE's APPNOTE.TXT, sections 4.3.7, 4.3.12 and 4.3.16.
class Archive {
 public:
  explicit Archive(const TableSink& write) : write_(write) {}

  void Add(std::string_view name, const Part& part) {
    Checksum sum;
    part([&](std::string_view bytes) {
      sum.Add(bytes);
      return true;
    });
    constexpr std::size_t kVersion = 20, kFirstDay = 0x21;  // 1 January 1980, where the time of archives begins
    const std::string entry = Little(kVersion, 2) + Little(0, 2) + Little(0, 2) + Little(0, 2) + Little(kFirstDay, 2) +
                              Little(sum.Value(), 4) + Little(sum.Size(), 4) + Little(sum.Size(), 4) +
                              Little(name.size(), 2) + Little(0, 2);
    directory_ += "PK\1\2" + Little(kVersion, 2) + entry + Little(0, 2 + 2 + 2 + 4) + Little(at_, 4);
    directory_ += name;
    ++entries_;
    Write("PK\3\4" + entry + std::string(name));
    if (more_) part([&](std::string_view bytes) { return Write(bytes); });
  }

  void Finish() {
    Write(directory_ + "PK\5\6" + Little(0, 4) + Little(entries_, 2) + Little(entries_, 2) +
          Little(directory_.size(), 4) + Little(at_, 4) + Little(0, 2));
  }

 private:
  bool Write(std::string_view bytes) {
    at_ += bytes.size();
    return more_ = more_ && write_(bytes);
  }

  const TableSink& write_;
  std::string directory_;
  std::size_t at_ = 0, entries_ = 0;
  bool more_ = true;
};

Part Text(std::string_view text) {
  return [text](const TableSink& write) { write(text); };
}

}  // namespace

void WriteOpenDocument(const TextTable& table, const TableSink& write) {
  Archive archive(write);
  archive.Add("mimetype", Text(kMimeType));  // first, where programs look for it
  archive.Add("META-INF/manifest.xml", Text(kManifest));
  archive.Add("content.xml", [&](const TableSink& sink) { WriteContent(table, sink); });
  archive.Finish();
}

}  // namespace quorvex
