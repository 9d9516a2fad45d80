#include "app/SettingsStore.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

#include "app/UserFolder.h"
#include "core/NumberText.h"
#include "core/SaveFile.h"
#include "core/TextEncoding.h"

namespace quorvex {
namespace {

std::string_view TrimTabsToo(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// "[section]", or nothing.
std::optional<std::string_view> SectionOfLine(std::string_view line) {
  line = TrimTabsToo(line);
  if (!line.starts_with('[') || !line.ends_with(']')) return std::nullopt;
  return TrimTabsToo(line.substr(1, line.size() - 2));
}

struct KeyAndText {
  std::string_view Key, Text;
};

// "key = text", or nothing; ";" and "#" begin a comment line.
std::optional<KeyAndText> KeyOfLine(std::string_view line) {
  line = TrimTabsToo(line);
  const auto equals = line.find('=');
  if (line.empty() || line[0] == ';' || line[0] == '#' || equals == std::string_view::npos) return std::nullopt;
  return KeyAndText{TrimTabsToo(line.substr(0, equals)), TrimTabsToo(line.substr(equals + 1))};
}

// The text of the file; nothing with an error number when it is there and cannot be read. A pipe or a file without end
// is no store, and would keep the program from starting; /dev/null is one that forgets, for who wants nobody's
// settings.
std::optional<std::string> ReadStore(const std::string& name, int& error) {
  constexpr int kFileNotFound = 53, kAccess = 75, kPathNotFound = 76;
  constexpr std::size_t kMostBytes = 1 << 24;
  WholeFile file;
  std::error_code failure;
  error = 0;
  if (std::filesystem::canonical(name, failure) == "/dev/null") return "";
  error = std::filesystem::is_other(name, failure) ? kAccess : file.Read(name, kMostBytes + 1);
  if (file.Text().size() > kMostBytes) error = kAccess;
  if (error == kFileNotFound || error == kPathNotFound) {
    error = 0;
    return "";
  }
  if (error != 0) return std::nullopt;
  return DecodeText(file.Text());
}

std::vector<std::string> Lines(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) lines.emplace_back(TakeLine(text));
  return lines;
}

// Puts one value where its key stands, else at the end of its section, else into a new section at the end.
void PutLine(std::vector<std::string>& lines, std::string_view section, std::string_view key, std::string_view text) {
  std::string line = std::string(key) + '=' + std::string(text);
  std::replace_if(
      line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');

  std::string current;
  std::optional<std::size_t> behindSection;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (const auto name = SectionOfLine(lines[i])) current = *name;
    if (!EqualNoCase(current, section)) continue;
    const auto entry = KeyOfLine(lines[i]);
    if (entry && EqualNoCase(entry->Key, key)) {
      lines[i] = line;
      return;
    }
    // Behind its last line that is not blank, so that blank lines still part the sections.
    if (!TrimTabsToo(lines[i]).empty()) behindSection = i + 1;
  }
  if (!behindSection) {
    if (!lines.empty()) lines.emplace_back();
    lines.push_back('[' + std::string(section) + ']');
    behindSection = lines.size();
  }
  lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(*behindSection), line);
}

int WriteStore(const std::string& name, const std::vector<std::string>& lines) {
  std::error_code failure;
  if (const std::filesystem::path folder = std::filesystem::path(name).parent_path(); !folder.empty())
    std::filesystem::create_directories(folder, failure);
  std::string text;
  for (const std::string& line : lines) text.append(line).append(NL);
  return SaveFile(name, text, FileCare::Settings);
}

using Place = std::pair<std::string, std::string>;  // section and key

int SavePlaces(const Settings& settings, const std::vector<Place>& places) {
  const std::string name = SettingsFileName();
  int error = 0;
  const auto text = ReadStore(name, error);
  if (!text) return error;
  // The lines as they are now, since another instance may have stored keys of its own.
  const std::vector<std::string> before = Lines(*text);
  std::vector<std::string> lines = before;
  for (const auto& [section, key] : places) PutLine(lines, section, key, settings.Text(key, section));
  return lines == before ? 0 : WriteStore(name, lines);
}

// The keys of the frame's place and size.
template <typename Io, typename Frame>
void ListFrame(const Io& io, Frame& frame) {
  io("default_x", frame.Left);
  io("default_y", frame.Top);
  io("screenheight", frame.Height);
  io("screenwidth", frame.Width);
}

std::string SinglePrecisionText(double value) { return GeneralNumber(static_cast<float>(value), 7); }

}  // namespace

std::string SettingsFileName() {
  if (const std::string name = EnvironmentText("QUORVEX_SETTINGS"); !name.empty()) return name;
  const std::string folder = UserFolder("XDG_CONFIG_HOME", "/.config");
  return folder.empty() ? "" : folder + "/quorvex.ini";
}

Settings LoadSettings() {
  Settings settings;
  int error = 0;
  const auto text = ReadStore(SettingsFileName(), error);
  if (!text) return settings;
  std::string section;
  for (const std::string& line : Lines(*text)) {
    if (const auto name = SectionOfLine(line)) {
      section = *name;
    } else if (const auto entry = KeyOfLine(line); entry && !settings.Has(entry->Key, section)) {
      // Of a key that stands twice the first one counts, which is also the one that is written.
      settings.Set(entry->Key, entry->Text, section);
    }
  }
  settings.ForgetChanges();
  return settings;
}

int SaveSettings(const Settings& settings, std::string_view section, std::span<const std::string_view> keys) {
  std::vector<Place> places;
  for (const std::string_view key : keys) places.emplace_back(section, key);
  return SavePlaces(settings, places);
}

int SaveChanges(Settings& settings) {
  const int error = SavePlaces(settings, {settings.Changes().begin(), settings.Changes().end()});
  if (error == 0) settings.ForgetChanges();
  return error;
}

FrameGeometry StartupGeometry(const Settings& settings, double screenHeight, double screenWidth) {
  const auto fitted = [](double stored, double screen) {
    return stored > 0 ? std::min(stored, screen) : 0.75 * screen;
  };
  FrameGeometry frame;
  ListFrame([&](const char* key, double& place) { place = settings.Number(key); }, frame);
  frame.Height = fitted(frame.Height, screenHeight);
  frame.Width = fitted(frame.Width, screenWidth);
  return frame;
}

int SaveStartupSettings(Settings& settings, const FrameGeometry& frame) {
  std::vector<std::string_view> keys;
  const auto store = [&](const char* key, double place) {
    settings.Set(key, SinglePrecisionText(place));
    keys.push_back(key);
  };
  ListFrame(store, frame);
  keys.insert(keys.end(), {"projectdir", "promptforsetup", "defaultsolvesetup", "defaultsolver"});
  return SaveSettings(settings, "startup", keys);
}

}  // namespace quorvex
