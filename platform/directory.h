#pragma once

// The entries of a directory, one after the other in the system's order, without "." and "..".
// An iterator keeps the directory open; one thread at a time.
//
//   for (platform::DirectoryIterator entry(path); entry.isPresent(); entry.next()) {
//     if (entry.kind() == platform::EntryKind::file) use(entry.name());
//   }

#include <string>
#include <string_view>

namespace platform {

/// What an entry is by itself: a link is a link, whatever it leads to.
enum class EntryKind { file, directory, link, other };

class DirectoryIterator {
 public:
  /// Stands on the first entry. Nothing is present in what is no directory.
  explicit DirectoryIterator(std::u16string_view path);
  ~DirectoryIterator();
  DirectoryIterator(const DirectoryIterator&) = delete;
  DirectoryIterator& operator=(const DirectoryIterator&) = delete;

  /// True while it stands on an entry.
  bool isPresent() const { return present_; }
  const std::u16string& name() const { return name_; }
  EntryKind kind() const { return kind_; }
  /// Goes to the next entry. Requires: isPresent().
  void next();
  /// True if the directory could not be opened or not be read to its end.
  bool failed() const { return failed_; }

 private:
  void* handle_ = nullptr;  // the system's search, null when there is none
  std::u16string name_;     // without a folder
  EntryKind kind_ = EntryKind::other;
  bool present_ = false;
  bool failed_ = false;
};

}  // namespace platform
