// Runs a command once and prints its wall time in seconds, its peak memory in bytes and its exit
// status on one line. A program of its own, since the peak that the system reports for a child
// includes what its parent held when it was started: a scripting language would hide small figures.

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: measure COMMAND [ARGUMENT...]\n");
    return 2;
  }
  // Whatever the command prints is none of the measurement.
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);

  const auto start = std::chrono::steady_clock::now();
  pid_t child = 0;
  const int failure = posix_spawnp(&child, argv[1], &actions, nullptr, argv + 1, environ);
  if (failure != 0) {
    std::fprintf(stderr, "measure: %s: %s\n", argv[1], std::strerror(failure));
    return 2;
  }
  int state = 0;
  rusage usage{};
  while (wait4(child, &state, 0, &usage) != child) {
  }
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
  posix_spawn_file_actions_destroy(&actions);

  const int status = WIFEXITED(state) ? WEXITSTATUS(state) : 128 + WTERMSIG(state);
  std::printf("%.6f %lld %d\n", seconds.count(), static_cast<long long>(usage.ru_maxrss) * 1024,
              status);
  return 0;
}
