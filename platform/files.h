#pragma once

// Files and directories by path. Paths are UTF-16 in the "\" form and become the system's form
// only here; on Linux a path with a drive letter names nothing.
// Streams that openFile gives are the caller's to close. Any thread; the current directory is one
// for the process.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace platform {

enum class MakeDirectory { created, exists, failed };

/// Makes one directory. "exists" also when a plain file has the name.
MakeDirectory makeDirectory(std::u16string_view path);

/// The current directory in the "\" form; empty if it has maxUnits units or more.
std::u16string currentDirectory(int maxUnits);
bool setCurrentDirectory(std::u16string_view path);

/// True for a file, a directory or anything else of that name.
bool pathExists(std::u16string_view path);
bool isDirectory(std::u16string_view path);
/// True for a plain file.
bool isFile(std::u16string_view path);

/// A stream as std::fopen gives it, null on failure. A directory does not open.
std::FILE* openFile(std::u16string_view path, const char* mode);

/// Removes a file; false if there is none or it is in use.
bool removeFile(std::u16string_view path);
/// Removes an empty directory.
bool removeDirectory(std::u16string_view path);
/// Renames a file, replacing the target in one step: at any time the target is the old or the
/// new file. Both lie on one volume.
bool renameFile(std::u16string_view from, std::u16string_view to);

/// Renames a file or a directory; false, too, if anything already has the new name. On Windows a
/// file may go to another volume.
bool renameToFreeName(std::u16string_view from, std::u16string_view to);

/// A name beside the target that no file has and that no other call of any process gives.
std::u16string temporaryNameBeside(std::u16string_view target);

/// What a chain of links ends at, whether it is there or not; the path itself where it is no link,
/// and on Windows.
std::u16string followLinks(std::u16string_view path);

/// Makes a new file ready to take the place of an older one: on Linux it gets the older one's owner
/// and rights, as far as the user may give them. True where there is no older one. False, with the
/// system's reason, if the user may not write that one.
bool prepareSuccessor(std::FILE* stream, std::u16string_view older);

/// Size in bytes, -1 if there is no such file.
std::int64_t fileSize(std::u16string_view path);

/// Flushes the stream and waits until its data is on the disk.
bool flushToDisk(std::FILE* stream);

/// A file's bytes in memory, read only, as long as the object lives.
/// Requires: nobody shortens the file meanwhile; Linux cannot prevent it.
///
///   platform::MappedFile file;
///   if (file.open(path)) parse(file.data(), file.size());
class MappedFile {
 public:
  MappedFile() = default;
  ~MappedFile() { close(); }
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;

  /// Maps a plain file, closing an earlier one. An empty file maps to size 0 and is open.
  bool open(std::u16string_view path);
  bool isOpen() const { return open_; }
  const char* data() const { return data_; }
  std::size_t size() const { return size_; }
  std::string_view bytes() const { return {data_, size_}; }
  void close();

 private:
  const char* data_ = "";  // never null
  std::size_t size_ = 0;   // bytes
  bool open_ = false;
};

}  // namespace platform
