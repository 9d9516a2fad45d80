#include "core/FileCalls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>

namespace {

bool Fails(const char* call) {
  if (!quorvex::FileCalls::Current) return false;
  const int error = quorvex::FileCalls::Current(call);
  if (error != 0) errno = error;
  return error != 0;
}

}  // namespace

// These stand in the place of the C library's own for all that is linked into this program.
extern "C" {

int open(const char* name, int flags, ...) {
  mode_t mode = 0;
  if ((flags & O_CREAT) != 0) {
    va_list rest;
    va_start(rest, flags);
    mode = va_arg(rest, mode_t);
    va_end(rest);
  }
  return Fails("open") ? -1 : static_cast<int>(syscall(SYS_openat, AT_FDCWD, name, flags, mode));
}
ssize_t read(int descriptor, void* bytes, size_t count) {
  return Fails("read") ? -1 : syscall(SYS_read, descriptor, bytes, count);
}
// Hands on at most a few bytes while it is looked at.
ssize_t write(int descriptor, const void* bytes, size_t count) {
  constexpr size_t kFew = 1000;
  if (quorvex::FileCalls::Current && count > kFew) count = kFew;
  return Fails("write") ? -1 : syscall(SYS_write, descriptor, bytes, count);
}
// Nobody waits for the disk while the calls are looked at.
int fsync(int descriptor) {
  if (quorvex::FileCalls::Current) return Fails("fsync") ? -1 : 0;
  return static_cast<int>(syscall(SYS_fsync, descriptor));
}
// A close that fails has closed all the same.
int close(int descriptor) {
  const bool fails = Fails("close");
  const int error = errno, result = static_cast<int>(syscall(SYS_close, descriptor));
  if (fails) errno = error;
  return fails ? -1 : result;
}
int ftruncate(int descriptor, off_t size) noexcept {
  return Fails("ftruncate") ? -1 : static_cast<int>(syscall(SYS_ftruncate, descriptor, size));
}
int fchmod(int descriptor, mode_t mode) noexcept {
  return Fails("fchmod") ? -1 : static_cast<int>(syscall(SYS_fchmod, descriptor, mode));
}
int link(const char* from, const char* to) noexcept {
  return Fails("link") ? -1 : static_cast<int>(syscall(SYS_linkat, AT_FDCWD, from, AT_FDCWD, to, 0));
}
int unlink(const char* name) noexcept {
  return Fails("unlink") ? -1 : static_cast<int>(syscall(SYS_unlinkat, AT_FDCWD, name, 0));
}
int rename(const char* from, const char* to) noexcept {
  return Fails("rename") ? -1 : static_cast<int>(syscall(SYS_renameat, AT_FDCWD, from, AT_FDCWD, to));
}

}  // extern "C"
