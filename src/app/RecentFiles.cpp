#include "app/RecentFiles.h"

#include <algorithm>

#include "app/SettingsStore.h"

namespace quorvex {
namespace {

constexpr std::size_t kMost = 8;

std::string Key(std::size_t place) { return "RecentFile" + std::to_string(place + 1); }

int Store(Settings& settings, std::string_view section, std::vector<std::string> files) {
  files.resize(kMost);  // the places behind the last are emptied
  std::vector<std::string> keys;
  for (std::size_t place = 0; place < kMost; ++place) {
    keys.push_back(Key(place));
    settings.Set(keys.back(), files[place], section);
  }
  return SaveSettings(settings, section, std::vector<std::string_view>(keys.begin(), keys.end()));
}

}  // namespace

std::vector<std::string> RecentFiles(const Settings& settings, std::string_view section) {
  std::vector<std::string> files;
  for (std::size_t place = 0; place < kMost; ++place)
    if (std::string file = settings.Text(Key(place), section); !file.empty()) files.push_back(std::move(file));
  return files;
}

int AddRecentFile(Settings& settings, std::string_view section, const std::string& fileName) {
  std::vector<std::string> files = RecentFiles(settings, section);
  std::erase(files, fileName);
  files.insert(files.begin(), fileName);
  return Store(settings, section, std::move(files));
}

int RemoveRecentFile(Settings& settings, std::string_view section, const std::string& fileName) {
  std::vector<std::string> files = RecentFiles(settings, section);
  std::erase(files, fileName);
  return Store(settings, section, std::move(files));
}

}  // namespace quorvex
