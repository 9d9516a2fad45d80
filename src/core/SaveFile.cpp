#include "core/SaveFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

namespace quorvex {
namespace {

// Links that lead to open files and not to names: a file that took the name's place would not be the open one.
bool IsOpenFile(const std::string& name) { return name.starts_with("/proc/") || name.starts_with("/dev/fd/"); }

// The name that links lead to, be there a file or not.
std::string FollowLinks(std::string name) {
  constexpr int kMostLinks = 40;
  for (int links = 0; links < kMostLinks && !IsOpenFile(name); ++links) {
    std::error_code error;
    const std::filesystem::path next = std::filesystem::read_symlink(name, error);
    if (error) break;
    name = std::filesystem::path(name).parent_path() / next;
  }
  return name;
}

// Of a folder that takes no new file, or does not let go of the old one: that of somebody else in a shared folder, or
// one mounted alone.
bool FolderRefuses(int code) { return code == EACCES || code == EPERM || code == EROFS || code == EBUSY; }

// Owner and permissions of the old file, as far as they may be given away. The owner first, for a new owner takes
// special permissions away. What was one owner's or one group's is not given to another.
void TakeOver(int descriptor, const struct stat& old) {
  constexpr mode_t kSpecial = 07000, kGroup = 070;
  mode_t mode = old.st_mode & 07777;
  if (fchown(descriptor, old.st_uid, old.st_gid) != 0) {
    mode &= ~kSpecial;
    if (fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) != 0) mode &= ~kGroup;
  }
  fchmod(descriptor, mode);
}

// Makes the content of `target` that of `source`. Returns 0 or the file error's number.
int CopyContent(int source, int target) {
  const int copy = fcntl(target, F_DUPFD_CLOEXEC, 0);
  if (copy < 0) return FileErrorNumber(errno);
  TextFile out;
  out.Attach(copy);
  if (lseek(source, 0, SEEK_SET) != 0 || lseek(target, 0, SEEK_SET) != 0) return FileErrorNumber(errno);
  off_t size = 0;
  char buffer[1 << 16];
  for (;;) {
    const ssize_t count = read(source, buffer, sizeof buffer);
    if (count < 0 && errno != EINTR) return FileErrorNumber(errno);
    if (count == 0) break;
    if (count < 0) continue;
    out.Write({buffer, static_cast<std::size_t>(count)});
    size += count;
  }
  if (const int error = out.Close()) return error;
  return ftruncate(target, size) == 0 ? 0 : FileErrorNumber(errno);
}

// The same from a file with a name.
int CopyContent(const std::string& source, int target) {
  const int descriptor = open(source.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return FileErrorNumber(errno);
  const int error = CopyContent(descriptor, target);
  close(descriptor);
  return error;
}

}  // namespace

int ReplacementFile::Create(const std::string& name) {
  Abandon();
  error_ = Begin(name);
  if (error_ != 0) Abandon();
  return error_;
}

int ReplacementFile::Begin(const std::string& name) {
  constexpr int kBadFileName = 52, kPathNotFound = 76;
  if (name.empty() || name.find('\0') != std::string::npos) return kBadFileName;
  target_ = ResolveNewPath(name);
  struct stat info {};
  // A pipe or a device has no content to keep, and a file cannot take its place.
  if (stat(target_.c_str(), &info) == 0 && !S_ISREG(info.st_mode)) return text_.Create(target_);
  target_ = FollowLinks(target_);
  folder_ = target_.substr(0, target_.rfind('/') + 1);
  const bool exists = stat(target_.c_str(), &info) == 0;
  if (!exists && errno != ENOENT) return FileErrorNumber(errno);
  if (exists && IsOpenFile(target_)) return text_.Create(target_);

  if (folder_ != cleaned_) RemoveLeftovers(folder_);
  cleaned_ = folder_;
  if (exists) {
    old_ = open(target_.c_str(), O_WRONLY | O_CLOEXEC);
    if (old_ < 0) return FileErrorNumber(errno);
    flock(old_, LOCK_EX | LOCK_NB);  // for its second name, which is a fresh file
  }
  // Closed to others until TakeOver gives it the rights of the old file, which may be private.
  // The first answer under a name needs no second one. Not every file system has files without names.
  const bool isUnnamed = !exists && care_ == FileCare::Answer && fresh_.CreateUnnamed(folder_, 0666) == 0;
  int code = isUnnamed ? 0 : fresh_.Create(folder_, exists ? 0600 : 0666);
  if (exists && FolderRefuses(code)) code = fresh_.CreateInMemory();
  if (code == ENOENT) return kPathNotFound;
  if (code != 0) return FileErrorNumber(code);
  if (exists) TakeOver(fresh_.Descriptor(), info);
  const int descriptor = fcntl(fresh_.Descriptor(), F_DUPFD_CLOEXEC, 0);  // the lock stays when the text is closed
  if (descriptor < 0) return FileErrorNumber(errno);
  text_.Attach(descriptor);
  return 0;
}

int ReplacementFile::Commit() {
  if (error_ != 0) return error_;
  // Before the renaming: after a power failure the name might else lead to a file without its content.
  if (care_ != FileCare::Answer) text_.Sync();
  error_ = text_.Close();
  if (error_ == 0 && fresh_.Descriptor() >= 0) error_ = Replace();
  Abandon();
  return error_;
}

int ReplacementFile::Replace() {
  if (!fresh_.HasName()) return old_ >= 0 ? WriteInPlace() : GiveName();
  FreshFile kept;
  if (care_ == FileCare::Document && old_ >= 0)
    if (const int error = KeepOld(kept)) return error;
  if (const int code = fresh_.RenameTo(target_))
    return old_ >= 0 && FolderRefuses(code) ? WriteInPlace() : FileErrorNumber(code);
  // The new content stands, so nothing fails any more: not even where a folder has the name of the old one.
  if (kept.HasName()) static_cast<void>(kept.RenameTo(KeptName(target_)));
  if (care_ == FileCare::Answer) return 0;
  // The renaming is on the disk when the folder is.
  const int descriptor = open(folder_.empty() ? "." : folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor >= 0) {
    fsync(descriptor);
    close(descriptor);
  }
  return 0;
}

// Where there is a file by now, or links to open files are not to be had, the content goes to one that has a name.
int ReplacementFile::GiveName() const {
  if (fresh_.LinkAs(target_) == 0) return 0;
  FreshFile named;
  if (const int code = named.Create(folder_, 0666)) return FileErrorNumber(code);
  if (const int error = CopyContent(fresh_.Descriptor(), named.Descriptor())) return error;
  const int code = named.RenameTo(target_);
  return code == 0 ? 0 : FileErrorNumber(code);
}

// Gives the old content a second name, so that its own is there at every moment, or copies it: where the file system
// has no second names, and where the file is somebody else's, whose second name could not be removed from a shared
// folder.
int ReplacementFile::KeepOld(FreshFile& kept) const {
  struct stat info;
  if (fstat(old_, &info) != 0) return FileErrorNumber(errno);
  if (info.st_uid == geteuid() && kept.Link(folder_, target_) == 0) return 0;
  if (const int code = kept.Create(folder_, 0600)) return FileErrorNumber(code);
  TakeOver(kept.Descriptor(), info);
  return CopyContent(target_, kept.Descriptor());
}

// The only way that can leave half a file, and only where the program is killed in the middle.
int ReplacementFile::WriteInPlace() {
  FreshFile before;
  if (const int code = before.CreateInMemory()) return FileErrorNumber(code);
  const bool readable = CopyContent(target_, before.Descriptor()) == 0;
  int error = CopyContent(fresh_.Descriptor(), old_);
  if (error == 0 && fsync(old_) != 0) error = FileErrorNumber(errno);
  if (error != 0 && readable) CopyContent(before.Descriptor(), old_);
  return error;
}

void ReplacementFile::Abandon() {
  text_.Close();
  fresh_.Remove();
  if (old_ >= 0) close(old_);
  old_ = -1;
}

std::string KeptName(const std::string& name) {
  constexpr std::size_t kLongest = 255;
  const std::size_t begin = name.rfind('/') + 1;
  std::size_t end = std::min(name.size(), begin + kLongest - 1);
  while (end < name.size() && (name[end] & 0xC0) == 0x80) --end;  // between two characters of UTF-8
  return name.substr(0, end) + '~';
}

int SaveFile(const std::string& name, std::string_view content, FileCare care) {
  ReplacementFile file(care);
  if (const int error = file.Create(name)) return error;
  file.Text().Write(content);
  return file.Commit();
}

}  // namespace quorvex
