#include "app/RecoveryStore.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "app/UserFolder.h"
#include "core/Files.h"
#include "core/NumberText.h"
#include "files/ProjectFile.h"

namespace quorvex {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPrefix = "session-";

std::string CopyName(const std::string& session, std::size_t window) {
  return session + '/' + std::to_string(window) + ".qvx";
}

// Beside each copy stands the name of the project's own file.
std::string NameFile(const std::string& copy) { return copy + ".name"; }

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
  if (const int error = Begin()) return error;
  const std::string copy = CopyName(own_.Folder, window);
  // The name goes first: a copy is complete once it is there.
  if (const int error = SaveFile(NameFile(copy), project.FileName)) return error;
  return WriteProject(project, copy);
}

void RecoveryStore::Forget(std::size_t window) {
  if (own_.Lock >= 0) RemoveCopy(CopyName(own_.Folder, window));
}

std::vector<RecoveryStore::LeftBehind> RecoveryStore::Claim() {
  std::vector<LeftBehind> found;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder_, error)) {
    Session session{entry.path().string()};
    if (!entry.path().filename().string().starts_with(kPrefix) || !LockSession(session)) continue;
    claimed_.push_back(session);
    std::error_code unreadable;
    for (const fs::directory_entry& file : fs::directory_iterator(session.Folder, unreadable)) {
      if (file.path().extension() != ".qvx") continue;
      MappedFile name;
      if (name.Open(NameFile(file.path().string())) == 0)
        found.push_back({file.path().string(), std::string(name.Text())});
    }
  }
  std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.Copy < b.Copy; });
  // A run that crashed before it kept anything leaves no more than its folder.
  for (const Session& session : claimed_)
    if (std::none_of(found.begin(), found.end(), [&](const auto& f) { return f.Copy.starts_with(session.Folder); }))
      fs::remove_all(session.Folder, error);
  return found;
}

void RecoveryStore::Discard(const LeftBehind& project) {
  RemoveCopy(project.Copy);
  const fs::path session = fs::path(project.Copy).parent_path();
  std::error_code error;
  for (const fs::directory_entry& file : fs::directory_iterator(session, error))
    if (file.path().extension() == ".qvx") return;
  fs::remove_all(session, error);
}

}  // namespace quorvex
