#include "core/FreshFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string_view>
#include <system_error>

namespace quorvex {
namespace {

constexpr std::string_view kPrefix = ".quorvex-", kDigits = "0123456789abcdef";
constexpr std::size_t kRandomDigits = 16;

// Short, so that it fits wherever a name of the user's own fits.
std::string FreshName() {
  // The device may be slow, so each of its words gives as many digits as it holds.
  constexpr int kDigitsOfWord = 8;
  std::random_device random;
  std::string name(kPrefix);
  for (std::size_t i = 0; i < kRandomDigits / kDigitsOfWord; ++i) {
    std::uint32_t word = random();
    for (int digit = 0; digit < kDigitsOfWord; ++digit, word >>= 4) name += kDigits[word % kDigits.size()];
  }
  return name + '~';
}

bool IsFreshName(std::string_view name) {
  if (name.size() != kPrefix.size() + kRandomDigits + 1 || !name.starts_with(kPrefix) || !name.ends_with('~'))
    return false;
  const std::string_view digits = name.substr(kPrefix.size(), kRandomDigits);
  return digits.find_first_not_of(kDigits) == std::string_view::npos;
}

// False where somebody else has the file. A file system without locks lets everybody have it.
bool Lock(int descriptor) { return flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK; }

}  // namespace

int FreshFile::Create(const std::string& folder, mode_t mode) {
  constexpr int kAttempts = 100;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    Remove();
    const std::string name = folder + FreshName();
    const int descriptor = open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (descriptor < 0 && errno != EEXIST) return errno;
    if (descriptor < 0) continue;
    name_ = name;
    descriptor_ = descriptor;
    // Before the lock another program could take it for a leftover.
    struct stat info;
    if (Lock(descriptor) && (fstat(descriptor, &info) != 0 || info.st_nlink > 0)) return 0;
  }
  return EEXIST;
}

int FreshFile::CreateUnnamed(const std::string& folder, mode_t mode) {
  Remove();
  descriptor_ = open(folder.empty() ? "." : folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, mode);
  return descriptor_ < 0 ? errno : 0;
}

int FreshFile::LinkAs(const std::string& name) const {
  const std::string open = "/proc/self/fd/" + std::to_string(descriptor_);
  return linkat(AT_FDCWD, open.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0 ? 0 : errno;
}

int FreshFile::Link(const std::string& folder, const std::string& file) {
  Remove();
  const std::string name = folder + FreshName();
  if (link(file.c_str(), name.c_str()) != 0) return errno;
  name_ = name;
  return 0;
}

int FreshFile::CreateInMemory() {
  Remove();
  descriptor_ = memfd_create("quorvex", MFD_CLOEXEC);
  return descriptor_ < 0 ? errno : 0;
}

// The own name is not forgotten: between two names of one file the system renames nothing and says that all is well.
int FreshFile::RenameTo(const std::string& name) const {
  return std::rename(name_.c_str(), name.c_str()) == 0 ? 0 : errno;
}

void FreshFile::Remove() {
  if (!name_.empty()) unlink(name_.c_str());
  if (descriptor_ >= 0) close(descriptor_);
  name_.clear();
  descriptor_ = -1;
}

void RemoveLeftovers(const std::string& folder) {
  std::error_code error;
  for (std::filesystem::directory_iterator entry(folder.empty() ? "." : folder, error), end; !error && entry != end;
       entry.increment(error)) {
    if (!IsFreshName(entry->path().filename().native())) continue;
    // Others may have put a link or a pipe of such a name here: the one is not followed, the other not waited for.
    const int descriptor = open(entry->path().c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) continue;
    // Where nothing can be locked nobody can tell what is in use.
    if (flock(descriptor, LOCK_EX | LOCK_NB) == 0) unlink(entry->path().c_str());
    close(descriptor);
  }
}

}  // namespace quorvex
