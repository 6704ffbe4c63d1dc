#include "tests/base/settings/killedprogram.h"

#include <sys/wait.h>

#include <chrono>
#include <thread>

#include "platform/posix/posixgate.h"

namespace tests {
namespace {

[[noreturn]] void start(const std::filesystem::path& program,
                        const std::vector<std::string>& arguments, int output) {
  std::vector<char*> values{const_cast<char*>(program.c_str())};
  for (const std::string& text : arguments) values.push_back(const_cast<char*>(text.c_str()));
  values.push_back(nullptr);
  dup2(output, STDOUT_FILENO);
  execv(program.c_str(), values.data());
  _exit(127);
}

bool append(int descriptor, std::string& text) {
  char block[4096];
  const ssize_t got = read(descriptor, block, sizeof block);
  if (got > 0) text.append(block, static_cast<size_t>(got));
  return got > 0;
}

}  // namespace

std::string runAndKill(const std::filesystem::path& program,
                       const std::vector<std::string>& arguments, int microseconds) {
  int ends[2] = {};
  if (pipe2(ends, O_CLOEXEC) != 0) return {};
  const pid_t process = fork();
  if (process == 0) start(program, arguments, ends[1]);
  close(ends[1]);
  std::string said;
  if (process > 0 && append(ends[0], said)) {
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
  }
  if (process > 0) {
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
  }
  while (append(ends[0], said)) {
  }
  close(ends[0]);
  return said;
}

}  // namespace tests
