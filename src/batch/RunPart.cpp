#include "batch/RunPart.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <fstream>
#include <functional>

#include "core/Files.h"
#include "core/NumberText.h"
#include "macro/BatchStatus.h"

namespace quorvex {
namespace {

std::size_t HashOf(std::string_view text) { return std::max<std::size_t>(std::hash<std::string_view>()(text), 1); }

// A whole number at the front of a text, which is taken off; 0 where there is none.
std::size_t TakeCount(std::string_view& text) {
  std::size_t count = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return error == std::errc() ? count : 0;
}

}  // namespace

Result<RunPart> ParseRunPart(std::string_view text) {
  constexpr std::size_t kMost = 1'000'000'000;
  std::string_view rest = Trim(text);
  RunPart part;
  part.Number = TakeCount(rest);
  const bool hasSlash = rest.starts_with('/');
  if (hasSlash) rest.remove_prefix(1);
  part.Count = TakeCount(rest);
  if (hasSlash && rest.empty() && part.Number >= 1 && part.Number <= part.Count && part.Count <= kMost) return part;
  return Failure{"The part '" + std::string(Trim(text)) + "' is none: it reads i/n, with i from 1 to n, as in 2/4."};
}

std::string NameOfPart(std::string_view name, std::size_t part) {
  if (name.starts_with("/dev/")) return std::string(name);
  const std::size_t base = name.find_last_of("/\\") + 1;  // 0 without a folder
  std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || dot <= base) dot = name.size();
  return std::string(name.substr(0, dot)) + '.' + std::to_string(part) + std::string(name.substr(dot));
}

int AnsweredRuns::Read(const std::string& path, std::size_t rows) {
  beginnings_.assign(rows + 1, 0);
  wholeSize_ = 0;
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) return errno == ENOENT ? 0 : FileErrorNumber(errno != 0 ? errno : EIO);
  for (std::string line; std::getline(file, line) && !file.eof();) {
    wholeSize_ += line.size() + 1;
    Take(line);
  }
  return file.bad() ? FileErrorNumber(EIO) : 0;
}

// Quotes within texts of JSON have a backslash in front, so that what is looked for here is no part of any text.
void AnsweredRuns::Take(std::string_view line) {
  constexpr std::string_view kRun = "{\"run\":", kData = "},\"data\":", kStatus = ",\"status\":";
  const auto data = line.find(kData), ended = line.find(kStatus, data);
  if (!line.starts_with(kRun) || ended == std::string_view::npos || !line.ends_with("]}")) return;
  std::string_view number = line.substr(kRun.size()), code = line.substr(ended + kStatus.size());
  const std::size_t run = TakeCount(number);
  if (run < 1 || run >= beginnings_.size()) return;
  const bool isSuccess = code.starts_with("0,");
  const std::size_t status = TakeCount(code);
  const bool answered = isSuccess || status == kModelFailed || status == kModelAtLimit;
  beginnings_[run] = answered ? HashOf(line.substr(0, data + 1)) : 0;
}

bool AnsweredRuns::Has(std::size_t number, std::string_view beginning) const {
  return number < beginnings_.size() && beginnings_[number] == HashOf(beginning);
}

}  // namespace quorvex
