#pragma once

// A link that leads to a directory, made by the constructor and removed by the destructor: a
// symbolic link, or a junction where the user may make no other. It must go before the folder that
// it lies in: Wine and some libraries take a link for the directory and empty that.
//
//   tests::DirectoryLink link(folder.file("target"), folder.file("link"));
//   ASSERT_TRUE(link.isThere());

#include <filesystem>
#include <string>

namespace tests {

class DirectoryLink {
 public:
  DirectoryLink(const std::filesystem::path& target, const std::filesystem::path& link);
  ~DirectoryLink();
  DirectoryLink(const DirectoryLink&) = delete;
  DirectoryLink& operator=(const DirectoryLink&) = delete;

  /// False if the system can make no link, or when somebody has removed it.
  bool isThere() const;

 private:
  void linkBelowWine(const std::filesystem::path& target);

  std::filesystem::path link_;
  std::string linkBelowWine_;  ///< its path for the system below Wine; empty elsewhere
};

}  // namespace tests
