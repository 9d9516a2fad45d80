#include "core/RecentFiles.h"

namespace quorvex {
namespace {

constexpr std::size_t kMost = 8;

std::string Key(std::size_t place) { return "RecentFile" + std::to_string(place + 1); }

void Keep(Settings& settings, std::string_view section, std::vector<std::string> files) {
  files.resize(kMost);  // the places behind the last are emptied
  for (std::size_t place = 0; place < kMost; ++place) settings.Set(Key(place), files[place], section);
}

}  // namespace

std::vector<std::string> RecentFiles(const Settings& settings, std::string_view section) {
  std::vector<std::string> files;
  for (std::size_t place = 0; place < kMost; ++place)
    if (std::string file = settings.Text(Key(place), section); !file.empty()) files.push_back(std::move(file));
  return files;
}

void AddRecentFile(Settings& settings, std::string_view section, const std::string& fileName) {
  std::vector<std::string> files = RecentFiles(settings, section);
  std::erase(files, fileName);
  files.insert(files.begin(), fileName);
  Keep(settings, section, std::move(files));
}

void RemoveRecentFile(Settings& settings, std::string_view section, const std::string& fileName) {
  std::vector<std::string> files = RecentFiles(settings, section);
  std::erase(files, fileName);
  Keep(settings, section, std::move(files));
}

}  // namespace quorvex
