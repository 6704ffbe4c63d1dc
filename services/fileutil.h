// FileUtil: the service through which libraries ask the file system and change it, without calls of
// a system of their own.
//
// Take it where a component must not know the platform layer; the host itself calls platform/. It
// holds nothing, so one object serves all, on any thread. The application main makes and publishes
// it.
//
//   const SPtr<IFileUtil> files;
//   if (files && files->isFile(path)) ...
#pragma once

#include "interfaces/IFileUtil.h"
#include "orobasictypes/orooffers.h"

class FileUtil : public IFileUtil {
 public:
  static constexpr const char* className() { return "FileUtil"; }

  bool isFile(const OroPath& path) override;
  // Never a directory, whatever the system would do.
  bool removeFile(const OroPath& path) override;
  // False is success. A target that exists is a failure on every system.
  bool renameFile(const OroPath& from, const OroPath& to) override;
  bool fileDate(const OroPath& path, IFileDate& out) override;
  // A link counts as what it leads to, and nobody goes into it. What is neither file nor directory
  // is listed with mode 4 alone; nothing is with modes other than 1 to 4.
  void listFiles(const OroPath& directory, OroArray<OroPath>& out, const OroString& pattern,
                 int32_t recurse, int32_t mode) override;
  bool isDirectory(const OroPath& path) override;
  bool makeDirectories(const OroPath& path) override;
  // As platform::removeTree when recursive.
  bool removeDirectory(const OroPath& path, bool recursive) override;

  using Offers = OroOffers<FileUtil, IFileUtil>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
};
