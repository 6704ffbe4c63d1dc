#pragma once

// The entries of a directory, one after the other in the system's order, without "." and "..", and
// the removal of a directory with all that is in it. On Linux an entry with a "\" in its name is
// passed over: no path leads to it.
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

/// Removes the directory, everything in it first. A link is removed and what it leads to is left
/// alone; so it is when the path itself is a link to a directory. False if anything stays, or if
/// there is no such directory; what can be removed goes all the same. Trees of more than 1000
/// levels, and on Windows links of a kind that the system does not tell, are not removed.
bool removeTree(std::u16string_view path);

}  // namespace platform
