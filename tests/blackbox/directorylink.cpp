#include "tests/blackbox/directorylink.h"

#include <chrono>
#include <system_error>
#include <thread>

#include "tests/blackbox/childprocess.h"

namespace tests {
namespace {

// A path of Wine as the system below it has it; absolute, since what is started there has a working
// directory of its own.
std::string pathBelowWine(const std::filesystem::path& path) {
  const ChildResult answer =
      runChild({"C:\\windows\\system32\\winepath.exe", {"-u", path.string()}});
  return answer.output.substr(0, answer.output.find_first_of("\r\n"));
}

ChildResult runBelowWine(std::vector<std::string> command) {
  command.insert(command.begin(), {"/wait", "/unix"});
  return runChild({"C:\\windows\\system32\\start.exe", command});
}

// Wine may not wait for a program of the system below it.
template <class Condition>
void waitUntil(Condition condition) {
  for (int i = 0; i < 1000 && !condition(); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

}  // namespace

DirectoryLink::DirectoryLink(const std::filesystem::path& target, const std::filesystem::path& link)
    : link_(link) {
  std::error_code refused;
  std::filesystem::create_directory_symlink(target, link, refused);
  if (!isThere()) {
    runChild(
        {"C:\\windows\\system32\\cmd.exe", {"/c", "mklink", "/J", link.string(), target.string()}});
  }
  if (!isThere()) linkBelowWine(target);
}

DirectoryLink::~DirectoryLink() {
  if (!isThere()) return;
  if (linkBelowWine_.empty()) {
    std::error_code refused;
    std::filesystem::remove(link_, refused);
    return;
  }
  runBelowWine({"/bin/rm", linkBelowWine_});
  waitUntil([this] { return !isThere(); });
}

bool DirectoryLink::isThere() const {
  std::error_code unknown;
  return std::filesystem::exists(link_, unknown);
}

// Wine's own programs make no links; those of the system below it do.
void DirectoryLink::linkBelowWine(const std::filesystem::path& target) {
  const std::string to = pathBelowWine(target);
  const std::string from = pathBelowWine(link_);
  if (!to.starts_with('/') || !from.starts_with('/')) return;
  linkBelowWine_ = from;
  runBelowWine({"/bin/ln", "-s", to, from});
  waitUntil([this] { return isThere(); });
}

}  // namespace tests
