#include "app/CommandLine.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr std::string_view kSwitch = "-runcfg", kCheckSwitch = "-check";

std::string Unquoted(std::string_view text) {
  if (text.starts_with('"')) text.remove_prefix(1);
  if (text.ends_with('"')) text.remove_suffix(1);
  return std::string(text);
}

// Takes the last word off a text that has others in front of it; empty where there is but one.
std::string TakeLastWord(std::string_view& text) {
  const auto blank = text.rfind(' ');
  if (blank == std::string_view::npos) return "";
  const std::string word(text.substr(blank + 1));
  text = Trim(text.substr(0, blank));
  return word;
}

// A name, which may hold blanks, with the options behind it.
MacroRequest ParseMacroRequest(std::string_view text) {
  std::optional<std::string> part;
  bool missing = false;
  std::error_code error;
  while (!std::filesystem::exists(Unquoted(text), error)) {
    std::string_view rest = text;
    const std::string last = TakeLastWord(rest);
    if (EqualNoCase(last, "-missing")) {
      missing = true;
    } else if (EqualNoCase(last, "-part")) {
      part = "";
    } else if (EqualNoCase(TakeLastWord(rest), "-part")) {
      part = last;
    } else {
      break;
    }
    text = rest;
  }
  MacroRequest request(Unquoted(text));
  request.Part = part;
  request.Missing = missing;
  return request;
}

}  // namespace

std::string JoinedByBlanks(const std::vector<std::string>& arguments) {
  std::string line;
  for (const std::string& argument : arguments) {
    if (!line.empty()) line += ' ';
    line += argument;
  }
  return line;
}

CommandRequest ParseCommandLine(const std::string& commandLine) {
  const std::string_view line = Trim(commandLine);
  if (line.empty()) return {};
  if (IsMacroSwitch(commandLine)) {
    const MacroRequest macro = ParseMacroRequest(Trim(line.substr(kSwitch.size())));
    return macro.FileName.empty() ? CommandRequest() : CommandRequest{CommandMode::RunMacro, macro.FileName, macro};
  }
  const std::string name = Unquoted(line);
  std::error_code error;
  return std::filesystem::exists(name, error) ? CommandRequest{CommandMode::OpenFile, name} : CommandRequest();
}

bool IsMacroSwitch(const std::string& argument) {
  return EqualNoCase(Trim(argument).substr(0, kSwitch.size()), kSwitch);
}

bool IsPlotSwitch(const std::vector<std::string>& arguments) {
  return !arguments.empty() && EqualNoCase(arguments[0], "-plot");
}

bool IsCheckSwitch(const std::vector<std::string>& arguments) {
  return !arguments.empty() && EqualNoCase(arguments[0], kCheckSwitch);
}

MacroRequest ParseCheck(const std::vector<std::string>& arguments) {
  return ParseMacroRequest(Trim(JoinedByBlanks({arguments.begin() + 1, arguments.end()})));
}

std::vector<std::string> StartCommands(const std::vector<std::string>& arguments) {
  const std::string whole = JoinedByBlanks(arguments);
  const bool several = ParseCommandLine(whole).Mode == CommandMode::Nothing &&
                       std::ranges::any_of(arguments, [](const std::string& argument) {
                         return ParseCommandLine(argument).Mode == CommandMode::OpenFile;
                       });
  return several ? arguments : std::vector{whole};
}

std::string StartFileName(const std::string& commandLine) {
  const std::string_view line = Trim(commandLine);
  return line.empty() ? "Untitled" : Unquoted(line);
}

}  // namespace quorvex
