#include "app/RecoveryStore.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <new>
#include <optional>

#include "app/UserFolder.h"
#include "core/DateText.h"
#include "core/NumberText.h"
#include "core/QuietPrompter.h"
#include "core/SaveFile.h"
#include "files/PlotFile.h"
#include "files/ProjectFile.h"

namespace quorvex {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPrefix = "session-", kProject = ".qvx", kPlot = ".plt";

std::string CopyName(const std::string& session, std::size_t window, std::string_view extension) {
  return session + '/' + std::to_string(window) + std::string(extension);
}

// Beside each copy stands the name of what it is of: the whole path of its file, or what it is called without one; in a
// line behind the name of a plot stands its project.
std::string NameFile(const std::string& copy) { return copy + ".name"; }

// The copies in the folder of a run; nothing where it can't be read to its end.
std::optional<std::vector<std::string>> Copies(const std::string& session) {
  std::vector<std::string> copies;
  std::error_code error;
  for (fs::directory_iterator file(session, error), end; !error && file != end; file.increment(error))
    if (file->path().extension() == kProject || file->path().extension() == kPlot)
      copies.push_back(file->path().string());
  return error ? std::nullopt : std::optional(std::move(copies));
}

void RemoveCopy(const std::string& copy) {
  std::error_code ignored;
  for (const std::string& file : {copy, copy + '~', NameFile(copy), NameFile(copy) + '~'}) fs::remove(file, ignored);
}

}  // namespace

std::string StateFolder() { return UserFolder("XDG_STATE_HOME", "/.local/state"); }

RecoveryStore::~RecoveryStore() {
  std::error_code ignored;
  if (own_.Lock >= 0) {
    fs::remove_all(own_.Folder, ignored);
    close(own_.Lock);
  }
  for (const Session& session : claimed_) close(session.Lock);
}

bool RecoveryStore::LockSession(Session& session) {
  session.Lock = open((session.Folder + "/lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  // A lock ends with its process, however that ends: a folder that can be locked was left behind.
  if (session.Lock >= 0 && flock(session.Lock, LOCK_EX | LOCK_NB) == 0) return true;
  if (session.Lock >= 0) close(session.Lock);
  session.Lock = -1;
  return false;
}

int RecoveryStore::Begin() {
  if (own_.Lock >= 0) return 0;
  if (folder_.empty()) return FileErrorNumber(ENOENT);
  std::error_code error;
  fs::create_directories(folder_, error);
  if (error) return FileErrorNumber(error.value());
  std::string name = folder_ + '/' + std::string(kPrefix) + "XXXXXX";
  if (mkdtemp(name.data()) == nullptr) return FileErrorNumber(errno);
  own_.Folder = name;
  return LockSession(own_) ? 0 : FileErrorNumber(errno);
}

int RecoveryStore::Keep(std::size_t window, const Project& project) {
  return Keep(window, kProject, project.FileName, [&](const std::string& copy) { return WriteProject(project, copy); });
}

int RecoveryStore::Keep(std::size_t window, const PlotDocument& plot) {
  return Keep(window, kPlot, plot.HasFile || plot.Project.empty() ? plot.FileName : plot.FileName + '\n' + plot.Project,
              [&](const std::string& copy) { return SaveFile(copy, PlotFileText(plot.Plot())); });
}

int RecoveryStore::Keep(std::size_t window, std::string_view extension, const std::string& name,
                        const std::function<int(const std::string& copy)>& write) try {
  // Only now: a run that has never had anything unsaved leaves no folder.
  if (const int error = Begin()) return error;
  const std::string copy = CopyName(own_.Folder, window, extension);
  // The name goes first: a copy is complete once it is there.
  if (const int error = SaveFile(NameFile(copy), name)) return error;
  if (const int error = write(copy)) return error;
  DiscardAdopted(window);
  return 0;
} catch (const std::bad_alloc&) {
  return FileErrorNumber(ENOMEM);
}

void RecoveryStore::Forget(std::size_t window) {
  if (own_.Lock >= 0)
    for (const std::string_view extension : {kProject, kPlot}) RemoveCopy(CopyName(own_.Folder, window, extension));
  DiscardAdopted(window);
}

void RecoveryStore::Adopt(std::size_t window, const LeftBehind& left) { adopted_.insert_or_assign(window, left); }

void RecoveryStore::DiscardAdopted(std::size_t window) {
  const auto adopted = adopted_.find(window);
  if (adopted == adopted_.end()) return;
  Discard(adopted->second);
  adopted_.erase(adopted);
}

RecoveryStore::LeftBehind RecoveryStore::Describe(const std::string& copy) {
  LeftBehind left{copy, "", "", ""};
  WholeFile name;
  if (name.Read(NameFile(copy)) == 0) left.FileName = name.Text();
  if (const std::size_t end = left.FileName.find('\n'); end != std::string::npos && !left.HasFile()) {
    left.Project = left.FileName.substr(end + 1);
    left.FileName.resize(end);
  }
  if (left.FileName.empty()) left.FileName = "Recovered";
  struct stat status {};
  stat(copy.c_str(), &status);
  left.Made = DateText(status.st_mtime);
  return left;
}

bool RecoveryStore::LeftBehind::IsPlot() const { return Copy.ends_with(kPlot); }
bool RecoveryStore::LeftBehind::HasFile() const { return fs::path(FileName).is_absolute(); }

Result<Project> RecoveryStore::Read(const LeftBehind& project, const LocaleText& locale) {
  Result<Project> read = ReadProject(project.Copy, locale);
  if (!read) return read;
  read->FileName = project.FileName;
  read->HasFile = project.HasFile();
  read->Changed = true;
  return read;
}

Result<PlotDocument> RecoveryStore::ReadPlot(const LeftBehind& plot, Settings& settings, const LocaleText& locale,
                                             Prompter& user) {
  Result<std::unique_ptr<PlotPage>> read = OpenPlotFile(plot.Copy, settings, locale);
  if (!read) return Failure{read.error()};
  QuietPrompter nobody;
  (*read)->CreateGraph({.Regenerate = true}, nobody);
  PlotDocument document(std::move(*read), settings, user);
  document.FileName = plot.FileName;
  document.HasFile = plot.HasFile();
  document.Project = plot.Project;
  document.NeverSaved();
  return document;
}

std::vector<RecoveryStore::LeftBehind> RecoveryStore::Claim() {
  std::vector<LeftBehind> found;
  std::error_code error;
  for (fs::directory_iterator entry(folder_, error), end; !error && entry != end; entry.increment(error)) {
    Session session{entry->path().string()};
    if (!entry->path().filename().string().starts_with(kPrefix) || !LockSession(session)) continue;
    claimed_.push_back(session);
    const auto copies = Copies(session.Folder);
    if (!copies) continue;
    for (const std::string& copy : *copies) found.push_back(Describe(copy));
    // A run that crashed before it kept anything leaves no more than its folder.
    std::error_code ignored;
    if (copies->empty()) fs::remove_all(session.Folder, ignored);
  }
  std::ranges::sort(found, {}, &LeftBehind::Copy);
  return found;
}

void RecoveryStore::Discard(const LeftBehind& left) {
  RemoveCopy(left.Copy);
  const fs::path session = fs::path(left.Copy).parent_path();
  const auto others = Copies(session.string());
  std::error_code ignored;
  if (others && others->empty()) fs::remove_all(session, ignored);
}

}  // namespace quorvex
