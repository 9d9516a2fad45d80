#include "app/DesktopDrawer.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <utility>

#include "app/StartUp.h"
#include "core/Files.h"
#include "core/SaveFile.h"

namespace quorvex {
namespace {

constexpr std::chrono::minutes kLongest{2};  // for a plot of some millions of points

constexpr const char* kEnded = "The desktop program ended before the picture was drawn.";
constexpr const char* kNoMemory = "There is not enough memory for a picture.";

constexpr std::size_t kLongestAnswer = 500;

// To this program as to the other one, which inherits the descriptors.
std::string NameOf(const FreshFile& file) { return "/proc/self/fd/" + std::to_string(file.Descriptor()); }

// What a log can take of an answer that is none.
std::string FirstWords(std::string_view answer) {
  std::string line(answer.substr(0, std::min(answer.find_first_of("\r\n"), kLongestAnswer)));
  return "The desktop program said what is no answer: '" + line + "'.";
}

}  // namespace

DesktopDrawer::DesktopDrawer() : DesktopDrawer(ProgramBeside(kDesktopProgram), kLongest) {}

DesktopDrawer::DesktopDrawer(std::filesystem::path program, std::chrono::milliseconds limit)
    : program_(std::move(program)), limit_(limit) {}

std::string DesktopDrawer::WhyNone() const {
  return access(program_.c_str(), X_OK) == 0
             ? ""
             : "The desktop program quorvex-desktop is not installed, so no pictures are drawn, only plot files (.plt) "
               "are written.";
}

Result<std::string> DesktopDrawer::Draw(const std::string& plotText, const std::string& ending,
                                        const std::function<bool()>& goOn) {
  if (hung_) return Failure{"The desktop program took too long before and is not asked again."};
  for (FreshFile* const file : {&plot_, &picture_})
    if (file->Descriptor() < 0 && file->CreateInMemory() != 0) return Failure{kNoMemory};
  // One that says something unasked, or is gone, would answer something else.
  if (process_ >= 0 && HasMore(0)) End();
  if (process_ < 0 && !Start()) return Failure{"The desktop program cannot be started."};
  if (SaveFile(NameOf(plot_), plotText, FileCare::Answer) != 0 || ftruncate(picture_.Descriptor(), 0) != 0)
    return Failure{kNoMemory};
  const std::string line = ending + '\n';
  // A line always has room on the way to a program that waits for one.
  const bool asked = send(connection_, line.data(), line.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(line.size());
  std::string answer = asked ? Await(goOn) : kEnded;
  // Whatever it still has to say would be taken for the next answer.
  if (!answer.ends_with('\n')) {
    End();
    return Failure{answer};
  }
  answer.pop_back();
  if (!answer.empty()) return Failure{answer};
  WholeFile picture;
  if (const int error = picture.Read(NameOf(picture_))) return Failure{"There is no picture. " + FileErrorText(error)};
  if (picture.Text().empty()) return Failure{"The desktop program says that it has drawn, but there is no picture."};
  return std::string(picture.Text());
}

// Whether it says something, or ended, within so many milliseconds.
bool DesktopDrawer::HasMore(int patience) const {
  pollfd waiting{connection_, POLLIN, 0};
  return poll(&waiting, 1, patience) > 0;
}

// The line that the other program answers, or, without an end of line, why there is none.
std::string DesktopDrawer::Await(const std::function<bool()>& goOn) {
  const auto end = std::chrono::steady_clock::now() + limit_;
  for (std::string line;;) {
    if (!goOn()) return "The run was aborted.";
    if (std::chrono::steady_clock::now() >= end) {
      hung_ = true;
      return "The desktop program takes too long.";
    }
    constexpr int kPatience = 50;  // milliseconds
    if (!HasMore(kPatience)) continue;
    char buffer[1024];
    const ssize_t count = read(connection_, buffer, sizeof buffer);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return kEnded;
    line.append(buffer, static_cast<std::size_t>(count));
    const std::size_t stop = line.find('\n');
    if (stop + 1 == line.size() && stop <= kLongestAnswer) return line;
    // Whoever talks on is another program than the one that is meant.
    if (stop != std::string::npos || line.size() > kLongestAnswer) return FirstWords(line);
  }
}

bool DesktopDrawer::Start() {
  // Not a pipe, for a write to a program that is gone would be a signal.
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return false;
  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  const std::string plot = NameOf(plot_), picture = NameOf(picture_);
  const char* const arguments[] = {kDesktopProgram, kSwitch, plot.c_str(), picture.c_str(), nullptr};
  process_ = fork();
  if (process_ == 0) {
    // A signal of the terminal reaches this program alone, which then ends the other one; and so does its own death.
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (dup2(ends[1], 0) >= 0 && dup2(ends[1], 1) >= 0 && dup2(nowhere, 2) >= 0 &&
        fcntl(plot_.Descriptor(), F_SETFD, 0) == 0 && fcntl(picture_.Descriptor(), F_SETFD, 0) == 0)
      execv(program_.c_str(), const_cast<char* const*>(arguments));
    _exit(127);
  }
  if (nowhere >= 0) close(nowhere);
  close(ends[1]);
  connection_ = ends[0];
  if (process_ < 0) End();
  if (process_ > 0) setpgid(process_, process_);  // for End, which may come first
  return process_ > 0;
}

// It has nothing that would be lost, nor has what it may have started.
void DesktopDrawer::End() {
  if (process_ >= 0) {
    kill(-process_, SIGKILL);
    while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
    }
  }
  process_ = -1;
  if (connection_ >= 0) close(connection_);
  connection_ = -1;
}

}  // namespace quorvex
