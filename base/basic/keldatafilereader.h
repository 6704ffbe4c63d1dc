// KelDataFileReader: reads settings from a binary settings file into the items it is shown.
//
// An item without a record, or with one that does not fit it, keeps its value and fails its visit;
// the walk goes on. The kind of a record is not known: an integer reads the head of a float. One
// thread at a time.
#pragma once

#include "base/basic/keldatafile.h"

class KelDataFileReader final : public KelDataFile {
 public:
  static constexpr const char* className() { return "KelDataFileReader"; }
  using Offers = OroOffersOver<KelDataFileReader, KelDataFile>;

  // With `notify` receivers hear of what changed. Layer 1 stays as it is in any case, so a writer
  // of these files writes what was read once more.
  KelDataFileReader(const OroString& path, bool notify)
      : KelDataFile(kReading, path), notify_(notify) {}

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // An empty blob fails: it was written, and cannot be read back.
  bool VisitBlob(IKelDataBlob* item) override;
  bool VisitOroString(IKelDataOroString* item) override;
  bool VisitString(IKelDataString* item) override;
  bool VisitFloat(IKelDataFloat* item) override;
  bool VisitInt(IKelDataInt* item) override;

 private:
  template <class Item, class Value>
  bool visitNumber(Item* item);
  template <class Item, class... Values>
  bool store(Item* item, const Values&... values);
  bool readLength(int64_t most, int64_t& length);
  bool readBytes(char* to, int64_t count);

  bool notify_;
};
