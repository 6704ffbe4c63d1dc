// KelDataHashVerifier: tells whether the path indexes of a store know what it is shown. Changes
// nothing.
//
// It looks a directory up by its own name, which is one segment: a tree with a directory inside
// another never passes. Kept; the check is for flat trees while debugging.
#pragma once

#include "base/basic/keldatavisitor.h"

class KelDataStore;

class KelDataHashVerifier final : public KelDataVisitor {
 public:
  static constexpr const char* className() { return "KelDataHashVerifier"; }
  using Offers = OroOffersOver<KelDataHashVerifier, KelDataVisitor>;

  // The store must outlive the visitor.
  explicit KelDataHashVerifier(const KelDataStore& store)
      : KelDataVisitor(kReading), store_(store) {}

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool VisitItem(IKelDataItem* item) override;
  bool LeaveDirectory(IKelDataDirectory* directory) override;

 private:
  const KelDataStore& store_;
};
