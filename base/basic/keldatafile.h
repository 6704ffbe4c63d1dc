// KelDataFile: a binary settings file of fixed-size records, what its reader and writer share.
//
// IDataStore::CreateFileReader and CreateFileWriter make one; run it with Accept or AcceptPath. The
// file holds the persistent items that were written, by full path, and knows no directories.
// docs/formats/settings-binary.md tells its bytes. The file is open from Begin to End. One thread
// at a time.
#pragma once

#include <cstdint>
#include <cstdio>

#include "base/basic/keldatavisitor.h"
#include "orobasictypes/orostring.h"

class KelDataFile : public KelDataVisitor {
 public:
  static constexpr const char* className() { return "KelDataFile"; }
  using Offers = OroOffersOver<KelDataFile, KelDataVisitor>;

  // An empty path stands for "user.dat" in the directory "options", looked up at the first Begin.
  KelDataFile(int32_t mode, const OroString& path) : KelDataVisitor(mode), path_(path) {}
  ~KelDataFile() override;
  KelDataFile(const KelDataFile&) = delete;
  KelDataFile& operator=(const KelDataFile&) = delete;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // False if the file does not open; a writer makes one that is missing.
  bool Begin() override;
  bool End() override;

  // Whether the item is read or written at all: it is persistent, and the filter, if there is one,
  // accepts it. A visit of any other item does nothing and succeeds.
  virtual bool Participates(IKelDataItem* item);

 protected:
  // The size of a blob's value in the file, whatever the size of the blob.
  static constexpr int64_t kBlobArea = 4098;
  static constexpr int64_t kBlobRoom = 4096;

  // Puts the stream at the value of the first record of that name. False if there is none or its
  // value has fewer bytes than required; a later record of the name is not looked for, as readers
  // of the file have always done.
  bool findRecord(const char* name, int64_t required);

  std::FILE* stream() const { return stream_; }  // null while not open
  bool isNewFile() const { return newFile_; }

 private:
  bool findAmongRecords(const char* name, int64_t nameLength, int64_t required);

  std::FILE* stream_ = nullptr;
  bool newFile_ = false;  // made by this Begin
  OroString path_;
};
