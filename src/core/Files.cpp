#include "core/Files.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <set>
#include <system_error>
#include <utility>
#include <vector>

#include "core/LargePages.h"
#include "core/NumberText.h"
#include "core/TextEncoding.h"

namespace quorvex {
namespace {

constexpr int kBadFileName = 52, kFileNotFound = 53, kFileInUse = 55, kShortened = 62, kPathNotFound = 76;

bool Exists(const std::string& name) {
  struct stat info;
  return stat(name.c_str(), &info) == 0;
}

// Of no name that the system could open.
bool IsNoName(const std::string& name) { return name.empty() || name.find('\0') != std::string::npos; }

// Has `take` take the name of each entry of a folder.
template <typename Take>
void ForEachEntry(const std::string& folder, const Take& take) {
  std::error_code error;
  for (std::filesystem::directory_iterator entry(folder.empty() ? "." : folder, error), end; !error && entry != end;
       entry.increment(error))
    take(entry->path().filename().string());
}

// Puts behind `paths` what `component` may be in `folder`: the entry of that very name, then those that differ in case.
void AddMatches(const std::string& folder, const std::string& component, FolderListings* listings,
                std::vector<std::string>& paths) {
  if (Exists(folder + component)) paths.push_back(folder + component);
  std::vector<std::string> others;
  if (listings != nullptr)
    others = listings->Others(folder, component);
  else
    ForEachEntry(folder, [&](const std::string& name) {
      if (name != component && EqualNoCase(name, component)) others.push_back(name);
    });
  // A folder lists its entries in no order; sorted, a name leads to the same file every time.
  std::sort(others.begin(), others.end());
  for (const std::string& name : others) paths.push_back(folder + name);
}

// Leaves one path to each file: links from a folder to itself would double the paths with every component.
void DropRepeated(std::vector<std::string>& paths) {
  std::set<std::pair<dev_t, ino_t>> seen;
  std::erase_if(paths, [&](const std::string& path) {
    struct stat info;
    return stat(path.c_str(), &info) != 0 || !seen.emplace(info.st_dev, info.st_ino).second;
  });
}

// The number of an error about a name. The system does not tell a missing file from a missing folder.
int NumberOfError(int code, const std::string& name) {
  const int number = FileErrorNumber(code);
  const auto slash = name.rfind('/');
  const bool noFolder = slash != std::string::npos && slash > 0 && !Exists(name.substr(0, slash));
  return number == kFileNotFound && noFolder ? kPathNotFound : number;
}

// 0, or the error's number where this process may not use what is there that way.
int AccessError(const std::string& name, int how) {
  return faccessat(AT_FDCWD, name.c_str(), how, AT_EACCESS) == 0 ? 0 : NumberOfError(errno, name);
}

// Opens a resolved name. Returns the descriptor, or -1 with the file error's number in `error`.
int OpenDescriptor(const std::string& name, int flags, int& error) {
  error = 0;
  if (IsNoName(name)) {
    error = kBadFileName;
    return -1;
  }
  const int descriptor = open(name.c_str(), flags | O_CLOEXEC | O_NOCTTY, 0666);
  if (descriptor >= 0) return descriptor;
  error = NumberOfError(errno, name);
  return -1;
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
      {kFileInUse, "Another program is writing the file."},
      {57, "The device reports an error."},
      {61, "The disk is full."},
      {kShortened, "The file became shorter while it was read."},
      {68, "The device is not available."},
      {75, "The file cannot be accessed."},
      {kPathNotFound, "The folder does not exist."},
  };
  for (const auto& [known, text] : kTexts)
    if (known == number) return text;
  return std::generic_category().message(-number) + ".";
}

std::vector<std::string> FolderListings::Others(const std::string& folder, const std::string& component) {
  const auto [at, isNew] = folders_.try_emplace(folder);
  auto& known = at->second;
  if (isNew) ForEachEntry(folder, [&](const std::string& name) { known[ToLower(name)].push_back(name); });
  const auto names = known.find(ToLower(component));
  std::vector<std::string> others;
  if (names != known.end()) others = names->second;
  std::erase(others, component);
  return others;
}

std::string ResolvePath(const std::string& name, FolderListings* listings) {
  if (IsNoName(name) || Exists(name)) return name;
  std::string rest = name;
  std::replace(rest.begin(), rest.end(), '\\', '/');

  std::vector<std::string> found = {rest.front() == '/' ? "/" : ""};  // what was found so far, with the closing slash
  for (std::size_t at = 0; at < rest.size();) {
    const auto slash = std::min(rest.find('/', at), rest.size());
    if (slash > at) {
      std::vector<std::string> deeper;
      for (const std::string& folder : found) AddMatches(folder, rest.substr(at, slash - at), listings, deeper);
      DropRepeated(deeper);
      if (deeper.empty()) return found.front() + rest.substr(at);
      if (slash < rest.size())
        for (std::string& folder : deeper) folder += '/';
      found = std::move(deeper);
    }
    at = slash + 1;
  }
  return found.front();
}

std::string ResolveNewPath(const std::string& name) { return NewPaths().Resolve(name); }

std::string NewPaths::Resolve(const std::string& name) {
  struct stat info;
  if (IsNoName(name) || lstat(name.c_str(), &info) == 0) return name;  // a link to nowhere is there, too
  const auto slash = name.find_last_of("/\\");
  if (slash == std::string::npos) return name;
  const std::string folder = name.substr(0, slash + 1);
  if (folder != folder_ || !Exists(found_)) {
    folder_ = folder;
    found_ = ResolvePath(folder, listings_);
    if (!found_.ends_with('/')) found_ += '/';
  }
  return found_ + name.substr(slash + 1);
}

std::string ResolveFoldedPath(const std::string& typed) {
  return !IsNoName(typed) && Exists(typed) ? typed : ResolvePath(ToLower(typed));
}

std::string ResolveNewFoldedPath(const std::string& typed) {
  const auto slash = typed.rfind('/');
  if (IsNoName(typed) || slash == std::string::npos || !Exists(typed.substr(0, slash + 1)))
    return ResolveNewPath(ToLower(typed));
  return typed.substr(0, slash + 1) + ToLower(std::string_view(typed).substr(slash + 1));
}

int ReadingError(const std::string& name) {
  if (IsNoName(name)) return kBadFileName;
  struct stat info;
  if (stat(name.c_str(), &info) != 0) return NumberOfError(errno, name);
  if (S_ISDIR(info.st_mode)) return FileErrorNumber(EISDIR);
  if (S_ISSOCK(info.st_mode)) return FileErrorNumber(ENXIO);
  if (const int error = AccessError(name, R_OK); error != 0 || !S_ISCHR(info.st_mode)) return error;
  const int descriptor = open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
  if (descriptor < 0) return NumberOfError(errno, name);
  const bool isTerminal = isatty(descriptor) != 0;
  close(descriptor);
  return isTerminal ? 0 : FileErrorNumber(ENODEV);
}

int WritingError(const std::string& name) {
  if (IsNoName(name)) return kBadFileName;
  struct stat info;
  if (stat(name.c_str(), &info) == 0) return S_ISDIR(info.st_mode) ? FileErrorNumber(EISDIR) : AccessError(name, W_OK);
  if (errno != ENOENT) return FileErrorNumber(errno);
  // A link to nowhere makes the file that it names.
  std::error_code error;
  const std::filesystem::path path = name, target = std::filesystem::read_symlink(path, error);
  const std::string made = error ? name : (path.parent_path() / target).string();
  const auto slash = made.rfind('/');
  const std::string folder = slash == std::string::npos ? "." : made.substr(0, slash + 1);
  if (stat(folder.c_str(), &info) != 0) return errno == ENOENT ? kPathNotFound : FileErrorNumber(errno);
  return S_ISDIR(info.st_mode) ? AccessError(folder, W_OK | X_OK) : kPathNotFound;
}

std::optional<FileIdentity> IdentityOfFile(const std::string& name) {
  struct stat info;
  if (IsNoName(name) || stat(name.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return std::nullopt;
  return FileIdentity{info.st_dev, info.st_ino};
}

int InputFile::Open(const std::string& name) {
  Close();
  told_ = read_ = 0;
  int error = 0;
  // A pipe that nobody writes to yet would be waited for where nobody is asked.
  descriptor_ = OpenDescriptor(ResolvePath(name), O_RDONLY | (KeepGoing ? O_NONBLOCK : 0), error);
  if (descriptor_ < 0) return error;
  struct stat info;
  if (fstat(descriptor_, &info) != 0) return FileErrorNumber(errno);
  if (S_ISDIR(info.st_mode)) return FileErrorNumber(EISDIR);
  // A device other than a terminal may have no end, as /dev/zero has none.
  if (S_ISCHR(info.st_mode) && isatty(descriptor_) == 0) return FileErrorNumber(ENODEV);
  // A pipe tells no size, nor does a file under /proc.
  if (S_ISREG(info.st_mode)) told_ = static_cast<std::size_t>(info.st_size);
  modified_ = info.st_mtim;
  return 0;
}

void InputFile::Close() {
  if (descriptor_ >= 0) close(descriptor_);
  descriptor_ = -1;
}

int InputFile::Read(char* to, std::size_t size, std::size_t& count) {
  count = 0;
  if (told_ > 0) size = std::min(size, told_ - read_);
  while (count < size) {
    if (KeepGoing && !MayGoOn()) return FileErrorNumber(ECANCELED);
    constexpr std::size_t kAtOnce = 1 << 24;
    const ssize_t got = read(descriptor_, to + count, std::min(size - count, kAtOnce));
    if (got == 0) return told_ > 0 ? ErrorOfEarlyEnd() : 0;
    if (got > 0) {
      count += static_cast<std::size_t>(got);
      read_ += static_cast<std::size_t>(got);
    } else if (errno != EINTR && errno != EAGAIN) {
      return FileErrorNumber(errno);
    }
  }
  return 0;
}

bool InputFile::MayGoOn() const {
  constexpr int kMilliseconds = 20;
  pollfd ready{descriptor_, POLLIN, 0};
  int count = 1;
  do {
    if (!KeepGoing()) return false;
    // A signal ends no waiting: a pipe that nobody has written to yet would pass for one at its end.
    if (told_ == 0) count = poll(&ready, 1, kMilliseconds);
  } while (count == 0 || (count < 0 && errno == EINTR));
  return true;
}

// Some files of the system's own are shorter than they tell; one that changed is not what it was.
int InputFile::ErrorOfEarlyEnd() const {
  struct stat now;
  if (fstat(descriptor_, &now) != 0) return FileErrorNumber(errno);
  const bool changed = now.st_size != static_cast<off_t>(told_) || now.st_mtim.tv_sec != modified_.tv_sec ||
                       now.st_mtim.tv_nsec != modified_.tv_nsec;
  return changed ? kShortened : 0;
}

bool ReadBuffer::Reserve(std::size_t capacity) {
  char* const bytes = static_cast<char*>(std::realloc(bytes_.get(), std::max<std::size_t>(capacity, 1)));
  if (bytes == nullptr) return false;
  // The old memory is realloc's affair, whether it has moved or not.
  static_cast<void>(bytes_.release());
  bytes_.reset(bytes);
  PreferLargePages(bytes, capacity);
  return true;
}

int WholeFile::Read(const std::string& name, std::size_t limit) {
  size_ = 0;
  bytes_.Free();
  InputFile file;
  if (const int error = file.Open(name); error != 0) return error;
  int error = ReadOpen(file, limit);
  if (error != 0) size_ = 0;
  if (const std::optional<std::string> decoded = DecodeUtf16(Text())) {
    if (!bytes_.Reserve(decoded->size())) error = FileErrorNumber(ENOMEM);
    size_ = error == 0 ? decoded->copy(bytes_.Data(), decoded->size()) : 0;
  }
  return error;
}

int WholeFile::ReadOpen(InputFile& file, std::size_t limit) {
  constexpr std::size_t kStep = 1 << 16;
  const std::size_t told = file.ToldSize(), most = told > 0 ? std::min(limit, told) : limit;
  for (std::size_t capacity = std::min(limit, told > 0 ? told : kStep);; capacity = std::min(limit, 2 * capacity)) {
    if (!bytes_.Reserve(capacity)) return FileErrorNumber(ENOMEM);
    const std::size_t asked = capacity - size_;
    std::size_t count = 0;
    if (const int error = file.Read(bytes_.Data() + size_, asked, count); error != 0) return error;
    size_ += count;
    if (size_ == most || count < asked) return 0;
  }
}

int FileLines::Open(const std::string& name) {
  size_ = taken_ = total_ = 0;
  ended_ = false;
  isEmpty_ = true;
  const int error = file_.Open(name);
  // The first piece holds the mark of an encoding.
  const std::size_t told = file_.ToldSize(), least = 2;
  capacity_ = std::max(told > 0 ? std::min(piece_, told) : piece_, least);
  return error != 0 || bytes_.Reserve(capacity_) ? error : FileErrorNumber(ENOMEM);
}

int FileLines::Next(std::string_view& lines) {
  lines = {};
  size_ -= taken_;
  std::memmove(bytes_.Data(), bytes_.Data() + taken_, size_);
  taken_ = 0;
  while (taken_ == 0 && !ended_) {
    if (size_ == capacity_ && !bytes_.Reserve(capacity_ *= 2)) return FileErrorNumber(ENOMEM);
    if (const int error = ReadMore(); error != 0) return error;
  }
  if (ended_) taken_ = size_;
  lines = {bytes_.Data(), taken_};
  isEmpty_ = isEmpty_ && lines.empty();
  return 0;
}

// Fills the buffer, and counts the bytes up to the last line's end in it as taken.
int FileLines::ReadMore() {
  std::size_t count = 0;
  const std::size_t asked = capacity_ - size_;
  if (const int error = file_.Read(bytes_.Data() + size_, asked, count); error != 0) return error;
  // What was there before ends no line, but for a CR that an LF might follow.
  const std::size_t first = size_ > 0 ? size_ - 1 : 0;
  const bool isBeginning = total_ == 0;
  size_ += count;
  total_ += count;
  ended_ = count < asked;
  if (isBeginning && DecodeUtf16(std::string_view(bytes_.Data(), std::min<std::size_t>(size_, 2)))) return DecodeRest();
  for (std::size_t at = size_; at > first; --at) {
    const char c = bytes_.Data()[at - 1];
    if (c != '\n' && (c != '\r' || at == size_)) continue;
    taken_ = at;
    break;
  }
  return 0;
}

int FileLines::DecodeRest() {
  while (!ended_) {
    if (size_ == capacity_ && !bytes_.Reserve(capacity_ *= 2)) return FileErrorNumber(ENOMEM);
    std::size_t count = 0;
    const std::size_t asked = capacity_ - size_;
    if (const int error = file_.Read(bytes_.Data() + size_, asked, count); error != 0) return error;
    size_ += count;
    ended_ = count < asked;
  }
  const std::string decoded = *DecodeUtf16({bytes_.Data(), size_});
  if (!bytes_.Reserve(decoded.size())) return FileErrorNumber(ENOMEM);
  size_ = decoded.copy(bytes_.Data(), decoded.size());
  return 0;
}

std::size_t FileLines::BytesBehind() const {
  const std::size_t told = file_.ToldSize();
  return size_ - taken_ + (told > total_ && !ended_ ? told - total_ : 0);
}

namespace {

// The descriptor of the program's output or messages that a name means, as /dev/stdout does; -1 for any other name.
int StreamOf(const std::string& name) {
  std::error_code error;
  const std::string link = std::filesystem::read_symlink(name, error);
  for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
    for (const char* const folder : {"/dev/fd/", "/proc/self/fd/"})
      if (const std::string own = folder + std::to_string(stream); name == own || link == own) return stream;
  return -1;
}

// Opening such a name would begin the file anew, and lose what a shell or another program has written to it.
int OpenToWrite(const std::string& name, int flags, int& error) {
  const int stream = StreamOf(name);
  if (stream < 0) return OpenDescriptor(ResolveNewPath(name), O_WRONLY | O_CREAT | flags, error);
  const int descriptor = fcntl(stream, F_DUPFD_CLOEXEC, 0);
  if (descriptor < 0) error = FileErrorNumber(errno);
  return descriptor;
}

}  // namespace

TextFile::~TextFile() { Close(); }

int TextFile::Create(const std::string& name) {
  Close();
  error_ = 0;
  descriptor_ = OpenToWrite(name, O_TRUNC, error_);
  return error_;
}

int TextFile::Continue(const std::string& name, std::optional<std::size_t> size) {
  Close();
  error_ = 0;
  descriptor_ = OpenToWrite(name, 0, error_);
  struct stat info;
  if (error_ != 0 || fstat(descriptor_, &info) != 0 || !S_ISREG(info.st_mode)) return error_;
  // Some file systems know no locks; two writers are not told apart there.
  if (flock(descriptor_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
    Close();
    return error_ = kFileInUse;
  }
  if (StreamOf(name) >= 0) return 0;
  const bool failed =
      (size && ftruncate(descriptor_, static_cast<off_t>(*size)) != 0) || lseek(descriptor_, 0, SEEK_END) < 0;
  if (failed) error_ = FileErrorNumber(errno);
  return error_;
}

void TextFile::Attach(int descriptor) {
  Close();
  error_ = 0;
  descriptor_ = descriptor;
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

int TextFile::Append(std::string_view text) {
  if (Flush() != 0) return error_;
  const bool appends = (fcntl(descriptor_, F_GETFL) & O_APPEND) != 0;
  const off_t before = lseek(descriptor_, 0, appends ? SEEK_END : SEEK_CUR);
  buffer_ = text;
  const int error = Flush();
  // What isn't whole would spoil the next line, too.
  if (error != 0 && before >= 0 && ftruncate(descriptor_, before) == 0 &&
      lseek(descriptor_, before, SEEK_SET) == before)
    error_ = 0;
  return error;
}

int TextFile::Sync() {
  Flush();
  while (descriptor_ >= 0 && error_ == 0 && fsync(descriptor_) != 0) {
    if (errno == EINVAL) break;  // nothing there to synchronise
    if (errno != EINTR) error_ = FileErrorNumber(errno);
  }
  return error_;
}

int TextFile::Close() {
  Flush();
  // Some file systems tell only at closing that the disk is full.
  if (descriptor_ >= 0 && close(descriptor_) != 0 && error_ == 0) error_ = FileErrorNumber(errno);
  descriptor_ = -1;
  return error_;
}

}  // namespace quorvex
