#include "tests/blackbox/childprocess.h"

#include <fstream>
#include <iterator>

#include "tests/tempfolder.h"
#include "tests/testpaths.h"

namespace tests {
namespace {

std::string readIfThere(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// What the machine's user has set must not show in a test, nor a test in the user's profile.
decltype(Child::environment) ownEnvironment(const std::string& home) {
  return {{"DISPLAY", std::nullopt},
          {"HOME", home},
          {"LC_ALL", "C.UTF-8"},  // the user's language is nobody's
          {"XDG_CACHE_HOME", home},
          {"XDG_CONFIG_HOME", home},
          {"XDG_DOCUMENTS_DIR", home},
          {"CREATE_ERROR_LOG_AT_STARTUP", std::nullopt},
          {"OroObjectBrokerLog", std::nullopt}};
}

}  // namespace

ChildResult runChild(const Child& child) {
  const TempFolder folder;
  ChildResult result;
  Child alone = child;
  alone.environment = ownEnvironment(folder.path().string());
  alone.environment.insert(alone.environment.end(), child.environment.begin(),
                           child.environment.end());
  runToFiles(alone, folder.file("output"), folder.file("errors"), result);
  result.output = readIfThere(folder.file("output"));
  result.errors = readIfThere(folder.file("errors"));
  return result;
}

std::string plainLines(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r' || i + 1 == text.size() || text[i + 1] != '\n') plain += text[i];
  }
  return plain;
}

std::filesystem::path cowlProgram() { return stageDir() / programFileName("cowl"); }

}  // namespace tests
