#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "batch/MacroFiles.h"
#include "batch/cfgSolve.h"
#include "core/Result.h"
#include "core/SaveFile.h"
#include "macro/MacroLog.h"
#include "macro/MacroSetup.h"

namespace quorvex {

// What stands in the place of a file error's number where what is to be written cannot be made.
inline constexpr int kNotDrawn = -1;

// A statement that names files to be written, one a line, beside the answers of a run.
struct NamedOutputs {
  std::string_view Keyword;
  std::string MacroSetup::*Names;
  Writing Kind;
  std::string_view Noun;                                  // such as "plot"
  std::string (*UnknownEnding)(const std::string& name);  // why the ending of a name is none; empty where it is one

  // Why a name that leads to `path` can't be written to, whatever the macro reads and writes: its ending is none, or
  // it is a pipe or a device, which nobody may be there to read. Returns 0 or the number of the file error, and a
  // sentence in `fault`.
  int NameError(const std::string& name, const std::string& path, std::string& fault) const;
  // The same, and why it may not be written over what the macro reads or writes.
  int Error(const std::string& name, MacroFiles& files, std::string& fault) const;
  // Writes a file of that name. Returns 0 or the number of the file error, and a sentence in `fault`.
  int WriteFile(const std::string& name, const std::string& content, ReplacementFile& file, std::string& fault) const;
  std::string NotWrittenText(const std::string& name, const std::string& why) const;
};

extern const NamedOutputs kPlotOutputs, kCodeOutputs, kReportOutputs;
// In the order in which they are written.
std::span<const NamedOutputs* const> AllNamedOutputs();

// Writes what one of these statements names.
class NamedWriter {
 public:
  NamedWriter(const NamedOutputs& outputs, cfgSolve& form, MacroFiles& files, MacroLog& log)
      : outputs_(outputs), form_(form), files_(files), log_(log) {}

  // Writes each file with what `content` makes for its name, which fails with a sentence; names that `wants` is false
  // for are passed over. Returns 0, or the number of the file error of the last one that could not be written, or
  // kNotDrawn; the others are there. An abort ends it between the files.
  int Write(const MacroSetup& setup, const std::function<Result<std::string>(const std::string& name)>& content,
            const std::function<bool(const std::string& name)>& wants = nullptr);

  // Gives the form its turn: false once the run is to end.
  bool GoOn();
  // What an end that was asked for comes to, of which the log speaks once, whatever was still to be written.
  int Abort();

 private:
  int WriteOne(const std::string& name, const std::function<Result<std::string>(const std::string& name)>& content,
               std::string& fault);

  const NamedOutputs& outputs_;
  cfgSolve& form_;
  MacroFiles& files_;
  MacroLog& log_;
  ReplacementFile file_{FileCare::Answer};
};

}  // namespace quorvex
