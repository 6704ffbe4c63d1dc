#include "tests/blackbox/childprocess.h"

#include <sys/wait.h>

#include <chrono>
#include <map>
#include <thread>

#include "platform/posix/posixgate.h"

namespace tests {
namespace {

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> out;
  for (std::string& text : texts) out.push_back(text.data());
  out.push_back(nullptr);
  return out;
}

std::vector<std::string> environmentOf(const Child& child) {
  std::map<std::string, std::string> values;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string text = *entry;
    const std::size_t equals = text.find('=');
    if (equals != text.npos) values[text.substr(0, equals)] = text.substr(equals + 1);
  }
  for (const auto& [name, value] : child.environment) {
    values.erase(name);
    if (value) values[name] = *value;
  }
  std::vector<std::string> out;
  for (const auto& [name, value] : values) out.push_back(name + "=" + value);
  return out;
}

void redirect(const char* file, int flags, int descriptor) {
  const int opened = ::open(file, flags, 0600);
  if (opened >= 0 && opened != descriptor) {
    dup2(opened, descriptor);
    ::close(opened);
  }
}

void directOutput(ChildOutput where, const char* file, int descriptor) {
  int ends[2] = {};
  switch (where) {
    case ChildOutput::captured:
      redirect(file, O_WRONLY | O_CREAT | O_TRUNC, descriptor);
      break;
    case ChildOutput::unread:
      if (pipe(ends) != 0) break;
      dup2(ends[1], descriptor);
      ::close(ends[0]);
      ::close(ends[1]);
      break;
    case ChildOutput::none:
      ::close(descriptor);
      break;
  }
}

// Until the process has ended or its time is over; then it is killed with all it started.
int waitWithLimit(pid_t process, int seconds, bool& timedOut) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::seconds(seconds);
  int status = 0;
  while (waitpid(process, &status, WNOHANG) == 0) {
    if (Clock::now() > end) {
      timedOut = true;
      kill(-process, SIGKILL);
      waitpid(process, &status, 0);
      break;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return status;
}

}  // namespace

void runToFiles(const Child& child, const std::filesystem::path& output,
                const std::filesystem::path& errors, ChildResult& result) {
  std::vector<std::string> arguments = {child.program.string()};
  arguments.insert(arguments.end(), child.arguments.begin(), child.arguments.end());
  std::vector<std::string> environment = environmentOf(child);
  const std::vector<char*> argumentPointers = pointers(arguments);
  const std::vector<char*> environmentPointers = pointers(environment);
  constexpr int notStarted = 127;
  const pid_t process = fork();
  if (process == 0) {
    setpgid(0, 0);
    redirect("/dev/null", O_RDONLY, 0);
    directOutput(child.outputTo, output.c_str(), 1);
    directOutput(child.errorsTo, errors.c_str(), 2);
    if (child.directory.empty() || chdir(child.directory.c_str()) == 0) {
      execve(arguments[0].c_str(), argumentPointers.data(), environmentPointers.data());
    }
    _exit(notStarted);
  }
  if (process < 0) return;
  setpgid(process, process);
  const int status = waitWithLimit(process, child.seconds, result.timedOut);
  result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  result.started = result.exitCode != notStarted;
}

std::filesystem::path programFileName(std::string_view stem) { return stem; }

}  // namespace tests
