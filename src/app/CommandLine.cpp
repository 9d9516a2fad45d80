#include "app/CommandLine.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

#include "core/NumberText.h"

namespace quorvex {
namespace {

constexpr std::string_view kSwitch = "-runcfg";

std::string Unquoted(std::string_view text) {
  if (text.starts_with('"')) text.remove_prefix(1);
  if (text.ends_with('"')) text.remove_suffix(1);
  return std::string(text);
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
    const std::string name = Unquoted(Trim(line.substr(kSwitch.size())));
    return name.empty() ? CommandRequest() : CommandRequest{CommandMode::RunMacro, ToLower(name), name};
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
