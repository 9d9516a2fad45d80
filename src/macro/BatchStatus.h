#pragma once

namespace quorvex {

// The exit status of an unattended run.
enum BatchStatus : int {
  kSuccess = 0,
  kNoMacroStatement = 20,  // the macro file has no B_MACRO
  kMacroFile = 30,         // file errors of the macro file begin here
  kParameterFile = 80,     // the parameter file could not be read
  kDataFile = 110,         // file errors of the data source begin here
  kDataUnreadable = 150,   // the data source: any other failure
  kDatabase = 160,         // ODBC connection or query failed
  kOutputFile = 200,       // file errors of the output file begin here
  kLogFile = 300,          // file errors of the log file begin here
  kNoSolution = 400,       // no valid model, or the solve could not run
  kNothingSolved = 410,    // no model was solved, where the macro requires one
  kModelFailed = 420,      // of a strict status: the answers are there, but not those of every model
  kModelAtLimit = 430,     // the same: a search ended at the limit of iterations
  kAborted = 450,          // the user aborted from the progress form
  kOtherFailure = 500,
};

// The file error of what may not be written to.
inline constexpr int kAccessError = 75;

// The status of a file error (52 bad name, 53 not found, 57 device, 61 disk full, 68 device unavailable, 75 access,
// 76 path not found, anything else) within the family that begins at kMacroFile, kDataFile, kOutputFile or kLogFile.
// A full disk has a place of its own only in the families of files that are written.
inline int FileErrorStatus(BatchStatus family, int errorNumber) {
  const bool written = family == kOutputFile || family == kLogFile;
  switch (errorNumber) {
    case 52:
    case 53:
    case 76:
      return family;
    case 57:
      return family + 10;
    case 75:
      return family + 20;
    case 61:
      return family + (written ? 30 : 40);
    case 68:
      return family + (written ? 40 : 30);
    default:
      return family + (written ? 50 : 40);
  }
}

}  // namespace quorvex
