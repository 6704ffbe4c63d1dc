// KelDataHashRemover: takes what it is shown out of the path indexes of a store, before a subtree
// is deleted.
//
// A directory leaves the index under its own name, which is one segment: only a directory right
// below the root goes, and a deeper one of the same name as such a directory makes that one
// unknown. Kept; callers rely on DirectoryExists for removed paths.
#pragma once

#include "base/basic/keldatavisitor.h"

class KelDataStore;

class KelDataHashRemover final : public KelDataVisitor {
 public:
  static constexpr const char* className() { return "KelDataHashRemover"; }
  using Offers = OroOffersOver<KelDataHashRemover, KelDataVisitor>;

  // The store must outlive the visitor.
  explicit KelDataHashRemover(KelDataStore& store) : KelDataVisitor(kReading), store_(store) {}

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // False if the index did not have the item; the walk goes on.
  bool VisitItem(IKelDataItem* item) override;
  bool LeaveDirectory(IKelDataDirectory* directory) override;

 private:
  KelDataStore& store_;
};
