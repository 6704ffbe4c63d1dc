#pragma once

// A folder of a test's own below the system's temporary folder, made empty by the constructor and
// removed with all it holds by the destructor. One owner; any thread.
//
//   tests::TempFolder folder;
//   auto file = folder.write("in.xyz", "1 2 3\n");
//   EXPECT_EQ(folder.read("out.xyz"), "1 2 3\n");

#include <filesystem>
#include <string>
#include <string_view>

namespace tests {

class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

  /// The path of a name in the folder; nothing is made.
  std::filesystem::path file(const std::filesystem::path& name) const { return path_ / name; }

  /// Writes the bytes as they are and returns the file's path. Throws when that fails.
  std::filesystem::path write(const std::filesystem::path& name, std::string_view bytes) const;

  /// All bytes of the file. Throws when it cannot be read.
  std::string read(const std::filesystem::path& name) const;

 private:
  std::filesystem::path path_;  ///< absolute
};

}  // namespace tests
