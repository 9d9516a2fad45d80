// measure RUNS COMMAND...: runs the command so many times and prints the median of its wall times in milliseconds and
// the largest of its peak memories in kB. A shell's clock is too coarse for processes of a millisecond.

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

extern char** environ;

int main(int argc, char** argv) {
  if (argc < 3) return std::fputs("Usage: measure RUNS COMMAND...\n", stderr), EXIT_FAILURE;
  std::vector<double> milliseconds(std::stoul(argv[1]));
  long peak = 0;
  for (double& time : milliseconds) {
    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    int status = 0;
    rusage usage{};
    if (posix_spawnp(&child, argv[2], nullptr, nullptr, argv + 2, environ) != 0 ||
        wait4(child, &status, 0, &usage) != child || status != 0) {
      std::fprintf(stderr, "%s failed\n", argv[2]);
      return EXIT_FAILURE;
    }
    time = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    peak = std::max(peak, usage.ru_maxrss);
  }
  std::sort(milliseconds.begin(), milliseconds.end());
  std::printf("%.3f %ld\n", milliseconds[milliseconds.size() / 2], peak);
}
