#include "files/GroupFile.h"

#include "core/NumberText.h"
#include "core/SaveFile.h"
#include "core/TextEncoding.h"
#include "files/FileVersion.h"

namespace quorvex {
namespace {

constexpr std::string_view kBegin = "B_Equations", kEnd = "E_Equations";

}  // namespace

std::string GroupFileName(std::size_t numIV) { return "user" + std::to_string(numIV) + ".grp"; }

int WriteGroupFile(const std::vector<std::string>& models, std::size_t numIV) {
  std::string text;
  const auto line = [&](std::string_view content) { text.append(content).append(NL); };
  line(kFileVersion);
  line(kBegin);
  for (const std::string& id : models) line(id);
  line(kEnd);
  return SaveFile(GroupFileName(numIV), text);
}

std::optional<std::vector<std::string>> ReadGroupFile(std::size_t numIV) {
  WholeFile file;
  if (file.Read(GroupFileName(numIV)) != 0) return std::nullopt;
  const std::string text = DecodeText(file.Text());
  std::string_view rest = text;
  if (!TakeLine(rest).starts_with(kVersionPrefix) || TakeLine(rest) != kBegin) return std::nullopt;
  std::vector<std::string> models;
  while (!rest.empty()) {
    const std::string_view id = TakeLine(rest);
    if (id == kEnd) return models;
    models.emplace_back(id);
  }
  return std::nullopt;
}

}  // namespace quorvex
