#pragma once

#include <map>
#include <optional>
#include <string>

#include "core/Files.h"

namespace quorvex {

// What a run writes. One kind may overwrite what an earlier run has written of it, but never another kind.
enum class Writing { Answers, Plot, Code, Report };

// The files that a macro reads and those that its runs have written, by which an output is refused that would fall on
// one of them.
class MacroFiles {
 public:
  // `listings` are for what looks at all of its files at one time; they outlive this.
  explicit MacroFiles(FolderListings* listings = nullptr) : listings_(listings), places_(listings) {}

  // What no output may fall on, and what it is, such as "data file"; nothing where there is no such file.
  void NoteInput(const std::string& name, const char* what);
  // Whether `name`, as it stands, is one of these. No output falls on it, so it stays what it is.
  bool IsInput(const std::string& name) const {
    const auto file = IdentityOfFile(name);
    return file && inputs_.contains(*file);
  }
  // Notes what a run makes before any output, too, by the path that it will have.
  void NoteToCome(const std::string& path, const char* what) { toCome_.emplace(FullName(path), what); }
  // Written files are kept only where there is more than one kind of them.
  void WatchKinds(bool watch) { watchesKinds_ = watch; }
  void NoteWritten(Writing kind, const std::string& file);

  // Why an output or a log may not be written to `file`; nothing where it may.
  std::optional<std::string> RefuseInput(const std::string& role, const std::string& file) {
    return RefuseInput(role, file, Place(file));
  }
  // The same for one whose path is known.
  std::optional<std::string> RefuseInput(const std::string& role, const std::string& file, const std::string& path);
  // The same for what an earlier run, or this one, has written of another kind.
  std::optional<std::string> RefuseOther(Writing kind, const std::string& file);

  // Where `file` is written, its folder looked for once.
  std::string Place(const std::string& file) { return places_.Resolve(file); }
  // By which a file is known, whatever name leads to it, there or to be made; empty where its folder is not there.
  std::string FullName(const std::string& file);

 private:
  std::map<FileIdentity, const char*> inputs_;
  std::map<std::string, Writing> written_;     // by full name
  std::map<std::string, const char*> toCome_;  // the same
  bool watchesKinds_ = false;
  FolderListings* listings_;
  NewPaths places_;
  std::string folder_, fullFolder_;  // the last one, as a place names it, and in full
};

}  // namespace quorvex
