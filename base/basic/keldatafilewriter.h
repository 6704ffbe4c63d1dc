// KelDataFileWriter: writes settings into a binary settings file, in place where they have a record
// and at its end where they have none.
//
// In a file that existed before it touches only what changed. What does not fit its record is
// written all the same and runs over what follows: a text of one character more than its capacity,
// a blob of more than 4096 bytes. One thread at a time.
#pragma once

#include <string>

#include "base/basic/keldatafile.h"

class KelDataFileWriter final : public KelDataFile {
 public:
  static constexpr const char* className() { return "KelDataFileWriter"; }
  using Offers = OroOffersOver<KelDataFileWriter, KelDataFile>;

  explicit KelDataFileWriter(const OroString& path) : KelDataFile(kWriting, path) {}

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool VisitBlob(IKelDataBlob* item) override;
  bool VisitOroString(IKelDataOroString* item) override;
  bool VisitString(IKelDataString* item) override;
  bool VisitFloat(IKelDataFloat* item) override;
  bool VisitInt(IKelDataInt* item) override;

  // Of the base's items those that differ from layer 1 or are marked to be written always; in a
  // new file all of them.
  bool Participates(IKelDataItem* item) override;

 private:
  bool write(const IKelDataItem& item, int64_t area, const std::string& value, int64_t zeros);
  bool appendHeader(const char* name, int64_t area);
  bool turnToWriting();
};
