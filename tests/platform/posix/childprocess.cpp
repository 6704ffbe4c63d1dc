#include "tests/platform/childprocess.h"

#include <spawn.h>
#include <sys/wait.h>

#include "platform/posix/posixgate.h"
#include "platform/text.h"
#include "tests/tempfolder.h"

namespace tests {

EchoResult runChild(const std::filesystem::path& program,
                    const std::vector<std::u16string>& arguments) {
  const TempFolder folder;
  const std::string outputFile = folder.file("output").string();
  std::vector<std::string> texts{program.string()};
  for (const auto& argument : arguments) texts.push_back(platform::toSystem(argument));
  std::vector<char*> pointers;
  for (auto& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, outputFile.c_str(), O_WRONLY | O_CREAT, 0600);
  pid_t child = -1;
  const int failed = posix_spawn(&child, pointers[0], &actions, nullptr, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  if (failed != 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status)) return {-1, {}};
  return {WEXITSTATUS(status), folder.read("output")};
}

}  // namespace tests
