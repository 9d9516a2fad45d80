#include "files/DetectFileType.h"

#include <algorithm>

#include "core/Files.h"
#include "core/NumberText.h"
#include "core/TextEncoding.h"
#include "files/FieldReader.h"
#include "files/FieldText.h"

namespace quorvex {

std::optional<FileType> DetectFileType(const std::string& path) {
  constexpr std::size_t kHead = 1 << 16;  // what the first fields of any file of ours take, many times over
  WholeFile file;
  if (file.Read(path, kHead) != 0) return std::nullopt;
  FieldReader in(DecodeText(file.Text()));

  FileType type;
  if (!ContainsNoCase(in.Text(), "b_header")) return type;
  type.Version = Trim(in.Text());
  const auto contains = [&](std::string_view part) { return type.Version.find(part) != std::string::npos; };
  const bool old = contains("3.0") || contains("2.") || contains("3.1");  // told no more in those days
  type.Subtype = 1;
  if (ContainsNoCase(type.Version, "plot")) {
    type.Kind = "plot";
    type.Version.resize(type.Version.size() - 4);
    type.Version = Trim(type.Version);
    if (!old && !ContainsNoCase(in.Text(), "2d")) type.Subtype = 2;
  } else {
    type.Kind = "regression";
    in.Next();
    type.Weighted = ContainsNoCase(in.Text(), "true");
    if (!old) {
      const std::optional<int> columns = CountBehindEquals(in.Text());
      if (!columns) return std::nullopt;
      type.Subtype = *columns - (type.Weighted ? 2 : 1);
    }
  }
  if (!in.Good()) return std::nullopt;
  return type;
}

}  // namespace quorvex
