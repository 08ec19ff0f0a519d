#include "bench/child.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <stdexcept>

namespace bench {

namespace {

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

/// Starts the program with a pipe as its standard output. Returns the pipe's read end.
int start(const std::vector<std::string>& words, const std::string& inputFile, pid_t& process) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  process = vfork();
  if (process == 0) {
    const int input = open(inputFile.empty() ? "/dev/null" : inputFile.c_str(), O_RDONLY);
    dup2(input, STDIN_FILENO);
    dup2(ends[1], STDOUT_FILENO);
    execv(arguments[0], arguments.data());
    _exit(127);
  }
  close(ends[1]);
  return ends[0];
}

}  // namespace

Cost runChild(const std::vector<std::string>& words, const std::string& inputFile, std::size_t enough) {
  static std::array<char, std::size_t{1} << 16> bytes;
  Cost cost;
  pid_t process = 0;
  const auto begin = std::chrono::steady_clock::now();
  const int output = start(words, inputFile, process);
  for (ssize_t count = 1; count > 0;) {
    count = read(output, bytes.data(), bytes.size());
    if (count <= 0) break;
    if (cost.outputBytes == 0) cost.firstOutput.assign(bytes.data(), static_cast<std::size_t>(count));
    cost.outputBytes += static_cast<std::size_t>(count);
    if (enough > 0 && cost.outputBytes >= enough) kill(process, SIGTERM);
  }
  close(output);
  int status = 0;
  rusage usage{};
  wait4(process, &status, 0, &usage);
  cost.wallSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  cost.cpuSeconds = seconds(usage.ru_utime) + seconds(usage.ru_stime);
  if (enough == 0 && status != 0) throw std::runtime_error(words[0] + " failed");
  return cost;
}

double peakMegabytes(std::vector<std::string> words) {
  words.insert(words.begin(), PEAK_PATH);
  return std::stod(runChild(words).firstOutput) / 1024;
}

Simulator::Simulator() {
  const int output = start({ZEPHSIM_PATH, "--port", "0"}, {}, process);
  std::string line;
  char byte = 0;
  while (read(output, &byte, 1) == 1 && byte != '\n') line += byte;
  const std::size_t colon = line.rfind(':');
  if (colon == std::string::npos) throw std::runtime_error("the simulator does not start");
  portText = line.substr(colon + 1);
}

Simulator::~Simulator() {
  kill(process, SIGTERM);
  waitpid(process, nullptr, 0);
}

}  // namespace bench
