// Runs a program and prints its peak memory in kilobytes. The system includes the memory of the process before exec, so
// this program must be small.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const pid_t program = fork();
  if (program == 0) {
    if (std::freopen("/dev/null", "w", stdout) == nullptr) _exit(126);
    execv(argv[1], argv + 1);
    _exit(127);
  }
  int status = 0;
  rusage usage{};
  if (wait4(program, &status, 0, &usage) != program || status != 0) return 1;
  std::printf("%ld\n", usage.ru_maxrss);
  return 0;
}
