#include "core/Files.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "core/NumberText.h"
#include "core/TextEncoding.h"

namespace quorvex {
namespace {

constexpr int kBadFileName = 52, kFileNotFound = 53, kPathNotFound = 76;

bool Exists(const std::string& name) {
  struct stat info;
  return stat(name.c_str(), &info) == 0;
}

// The entry of a folder that equals `component` without regard to case, the first one by name where there are several.
std::optional<std::string> FindEntry(const std::string& folder, std::string_view component) {
  std::optional<std::string> found;
  std::error_code error;
  for (std::filesystem::directory_iterator entry(folder.empty() ? "." : folder, error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string name = entry->path().filename();
    if (EqualNoCase(name, component) && (!found || name < *found)) found = name;
  }
  return found;
}

// Opens a resolved name. Returns the descriptor, or -1 with the file error's number in `error`.
int OpenDescriptor(const std::string& name, int flags, int& error) {
  error = 0;
  if (name.empty() || name.find('\0') != std::string::npos) {
    error = kBadFileName;
    return -1;
  }
  const int descriptor = open(name.c_str(), flags | O_CLOEXEC, 0666);
  if (descriptor >= 0) return descriptor;
  error = FileErrorNumber(errno);
  const auto slash = name.rfind('/');
  if (error == kFileNotFound && slash != std::string::npos && slash > 0 && !Exists(name.substr(0, slash)))
    error = kPathNotFound;
  return -1;
}

// All that a descriptor still delivers. Returns 0 or the file error's number.
int ReadAll(int descriptor, std::string& content) {
  char buffer[1 << 16];
  for (;;) {
    const ssize_t count = read(descriptor, buffer, sizeof buffer);
    if (count == 0) return 0;
    if (count > 0) {
      content.append(buffer, static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      return FileErrorNumber(errno);
    }
  }
}

}  // namespace

int FileErrorNumber(int errnoValue) {
  switch (errnoValue) {
    case 0:
      return 0;
    case ENOENT:
      return kFileNotFound;
    case ENOTDIR:
      return kPathNotFound;
    case EACCES:
    case EPERM:
    case EISDIR:
    case EROFS:
      return 75;
    case ENAMETOOLONG:
    case EINVAL:
    case EILSEQ:
      return kBadFileName;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return 61;
    case EIO:
      return 57;
    case ENODEV:
    case ENXIO:
      return 68;
    default:
      return -errnoValue;
  }
}

std::string FileErrorText(int number) {
  constexpr std::pair<int, const char*> kTexts[] = {
      {0, ""},
      {kBadFileName, "The file name is not valid."},
      {kFileNotFound, "The file does not exist."},
      {57, "The device reports an error."},
      {61, "The disk is full."},
      {68, "The device is not available."},
      {75, "The file cannot be accessed."},
      {kPathNotFound, "The folder does not exist."},
  };
  for (const auto& [known, text] : kTexts)
    if (known == number) return text;
  return std::generic_category().message(-number) + ".";
}

std::string ResolvePath(const std::string& name) {
  if (name.empty() || name.find('\0') != std::string::npos || Exists(name)) return name;
  std::string rest = name;
  std::replace(rest.begin(), rest.end(), '\\', '/');

  std::string found = rest.front() == '/' ? "/" : "";  // what was found so far, with its closing slash
  std::size_t at = 0;
  while (at < rest.size()) {
    const auto slash = std::min(rest.find('/', at), rest.size());
    std::string component = rest.substr(at, slash - at);
    if (!component.empty()) {
      if (!Exists(found + component)) {
        const auto entry = FindEntry(found, component);
        if (!entry) return found + rest.substr(at);
        component = *entry;
      }
      found += component;
      if (slash < rest.size()) found += '/';
    }
    at = slash + 1;
  }
  return found;
}

MappedFile::~MappedFile() { Close(); }

MappedFile::MappedFile(MappedFile&& other) noexcept { *this = std::move(other); }

MappedFile& MappedFile::operator=(MappedFile&& other) noexcept {
  if (this != &other) {
    Close();
    copy_ = std::move(other.copy_);
    data_ = std::exchange(other.data_, nullptr);
    size_ = std::exchange(other.size_, 0);
    mapped_ = std::exchange(other.mapped_, false);
    other.copy_.clear();
  }
  return *this;
}

void MappedFile::Close() {
  if (mapped_) munmap(const_cast<char*>(data_), size_);
  data_ = nullptr;
  size_ = 0;
  mapped_ = false;
  copy_.clear();
}

int MappedFile::Open(const std::string& name) {
  Close();
  int error = 0;
  const int descriptor = OpenDescriptor(ResolvePath(name), O_RDONLY, error);
  if (descriptor < 0) return error;

  struct stat info;
  if (fstat(descriptor, &info) != 0) {
    error = FileErrorNumber(errno);
  } else if (S_ISDIR(info.st_mode)) {
    error = FileErrorNumber(EISDIR);
  } else if (S_ISREG(info.st_mode) && info.st_size > 0) {
    const auto size = static_cast<std::size_t>(info.st_size);
    void* const address = mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, descriptor, 0);
    if (address != MAP_FAILED) {
      data_ = static_cast<const char*>(address);
      size_ = size;
      mapped_ = true;
    }
  }
  // A pipe, a file that tells no size (as under /proc), or a file system that cannot map.
  if (error == 0 && !mapped_) error = ReadAll(descriptor, copy_);
  close(descriptor);
  if (std::optional<std::string> decoded = DecodeUtf16(Text())) {
    Close();
    copy_ = std::move(*decoded);
  }
  return error;
}

std::string_view MappedFile::Text() const { return mapped_ ? std::string_view(data_, size_) : std::string_view(copy_); }

TextFile::~TextFile() { Close(); }

int TextFile::Create(const std::string& name) {
  Close();
  error_ = 0;
  descriptor_ = OpenDescriptor(ResolvePath(name), O_WRONLY | O_CREAT | O_TRUNC, error_);
  return error_;
}

void TextFile::Write(std::string_view text) {
  constexpr std::size_t kBufferSize = 1 << 16;
  buffer_ += text;
  if (buffer_.size() >= kBufferSize) Flush();
}

void TextFile::WriteLine(std::string_view text) {
  Write(text);
  Write(NL);
}

int TextFile::Flush() {
  std::string_view rest = descriptor_ >= 0 && error_ == 0 ? std::string_view(buffer_) : std::string_view();
  while (!rest.empty()) {
    const ssize_t count = write(descriptor_, rest.data(), rest.size());
    if (count >= 0) {
      rest.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      error_ = FileErrorNumber(errno);
      break;
    }
  }
  buffer_.clear();
  return error_;
}

int TextFile::Sync() {
  Flush();
  const bool failed = descriptor_ >= 0 && error_ == 0 && fsync(descriptor_) != 0;
  if (failed && errno != EINVAL) error_ = FileErrorNumber(errno);  // EINVAL: nothing there to synchronise
  return error_;
}

int TextFile::Close() {
  Flush();
  if (descriptor_ >= 0 && close(descriptor_) != 0 && error_ == 0) error_ = FileErrorNumber(errno);
  descriptor_ = -1;
  return error_;
}

int SaveFile(const std::string& name, std::string_view content) {
  std::string target = ResolvePath(name);
  struct stat info {};
  const bool exists = !target.empty() && target.find('\0') == std::string::npos && stat(target.c_str(), &info) == 0;
  TextFile file;
  if (exists && !S_ISREG(info.st_mode)) {
    file.Create(target);
    file.Write(content);
    return file.Close();
  }
  if (exists) target = std::filesystem::canonical(target);
  const std::string beside = target.empty() ? target : target + "." + std::to_string(getpid()) + "~";
  if (const int error = file.Create(beside); error != 0) return error;
  file.Write(content);
  file.Sync();
  int error = file.Close();

  const std::string kept = target + "~";
  if (error == 0 && exists) {
    chmod(beside.c_str(), info.st_mode & 07777);
    unlink(kept.c_str());
    // A second name for the old file, so that its own name is there at every moment; not all file systems have that.
    if (link(target.c_str(), kept.c_str()) != 0 && std::rename(target.c_str(), kept.c_str()) != 0)
      error = FileErrorNumber(errno);
  }
  if (error == 0 && std::rename(beside.c_str(), target.c_str()) != 0) error = FileErrorNumber(errno);
  if (error != 0) {
    unlink(beside.c_str());
    return error;
  }
  const std::filesystem::path folder = std::filesystem::path(target).parent_path();
  const int descriptor = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor >= 0) {
    fsync(descriptor);
    close(descriptor);
  }
  return 0;
}

}  // namespace quorvex
