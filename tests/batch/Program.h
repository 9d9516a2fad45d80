#pragma once

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "Paths.h"
#include "TemporaryFolder.h"

namespace quorvex {

// One run of the real program in a folder of its own, where data.txt may be waiting for it.
class Program {
 public:
  explicit Program(const std::string& data = "") {
    if (!data.empty()) Folder.Write("data.txt", data);
  }

  // Writes `text` as macro.cfg, with "@" standing for the folder, and runs it. `environment` is put in front of the
  // command, as in "LC_ALL=de_DE.UTF-8".
  int RunMacro(const std::string& text, const std::string& environment = "LC_ALL=C") {
    Folder.Write("macro.cfg", InFolder(text));
    return Run("-runcfg " + Folder.Path("macro.cfg"), environment);
  }

  // "@" becomes the folder.
  std::string InFolder(std::string text) const {
    for (std::size_t at = 0; (at = text.find('@', at)) != std::string::npos;) text.replace(at, 1, Folder.Path(""));
    return text;
  }

  // The folder, whose name comes in two spellings, becomes "@", and line ends are bare.
  std::string WithoutFolder(std::string text) const {
    std::erase(text, '\r');
    std::string folder = Folder.Path("");
    for (int spelling = 0; spelling < 2; ++spelling) {
      for (std::size_t at = 0; (at = text.find(folder, at)) != std::string::npos;) text.replace(at, folder.size(), "@");
      std::transform(folder.begin(), folder.end(), folder.begin(), ::tolower);
    }
    return text;
  }
  std::string Log() const { return WithoutFolder(Folder.Read("run.log")); }

  // The same without the rights of root, to whom no file is closed: where the tests run as root, a copy of the program
  // runs as "nobody".
  int RunMacroAsUser(const std::string& text) {
    if (geteuid() != 0) return RunMacro(text);
    MoveAway();
    chmod(Folder.Path("").c_str(), 0777);
    for (const char* name : {"out", "err"}) chmod(Folder.Write(name, "").c_str(), 0666);
    return RunMacro(text, "LC_ALL=C setpriv --reuid=65534 --regid=65534 --clear-groups env");
  }

  int Run(const std::string& arguments, const std::string& environment = "LC_ALL=C") {
    const std::string command = "DISPLAY= WAYLAND_DISPLAY= QUORVEX_SETTINGS=" + Folder.Path("none.ini") + " " +
                                environment + " " + Executable + " " + arguments + " >" + Folder.Path("out") + " 2>" +
                                Folder.Path("err");
    const int status = std::system(command.c_str());
    Out = Folder.Read("out");
    Err = Folder.Read("err");
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  // Runs a copy from now on, with no other program beside it.
  void MoveAway() {
    std::filesystem::copy_file(Executable, Folder.Path("program"));
    Executable = Folder.Path("program");
  }

  TemporaryFolder Folder;
  std::string Executable = ConsoleProgram();
  std::string Out, Err;
};

// What a structured output says of one model, by the names in it; a coefficient has several numbers.
struct ModelAnswer {
  std::string ID;
  std::map<std::string, std::vector<std::string>> Values;

  double Number(const std::string& name, std::size_t field = 0) const { return std::stod(Values.at(name).at(field)); }
};

// The models of a structured output, in order of rank.
inline std::vector<ModelAnswer> ReadAnswers(const std::string& output) {
  std::vector<ModelAnswer> answers;
  for (std::size_t at = 0; at < output.size();) {
    const std::size_t end = std::min(output.find("\r\n", at), output.size());
    std::string line = output.substr(at, end - at);
    at = end + 2;
    line.erase(0, line.find_first_not_of(' '));
    if (line.starts_with("Model_ID = ")) answers.push_back({line.substr(11), {}});
    const std::size_t equals = line.find(" = ");
    if (equals == std::string::npos || answers.empty()) continue;
    std::vector<std::string>& fields = answers.back().Values[line.substr(0, equals)];
    for (std::size_t from = equals + 3; from <= line.size();) {
      const std::size_t tab = std::min(line.find('\t', from), line.size());
      fields.push_back(line.substr(from, tab - from));
      from = tab + 1;
    }
  }
  return answers;
}

}  // namespace quorvex
