// KelRegIter: walks the entries below one registry node, level by level as far as the depth allows.
//
// Made by KelRegistry::newIterator with a count of 0; dies with its last reference. The node must
// outlive it and must not change meanwhile. It is made for walks of one or two levels: deeper ones
// meet the second level again, and a level that runs out within a step ends the walk.
#pragma once

#include <cstdint>

#include "interfaces/IOroRegIter.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/orooffers.h"

class KelRegistry;
class SubIter;

class KelRegIter : public Velmora::IOroRegIter {
 public:
  static constexpr const char* className() { return "KelRegIter"; }
  using Offers = OroOffers<KelRegIter, Velmora::IOroRegIter>;

  // Takes the first level over.
  KelRegIter(KelRegistry& registry, SubIter* firstLevel);
  ~KelRegIter() override;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void rewind() override;
  void first() override;
  void next() override;
  bool atEnd() override;
  void value(KelCString& out) override;
  void key(KelCString& out) override;
  void setDepth(int32_t levels) override { maxDepth_ = levels; }

 private:
  static constexpr int32_t kFirstCapacity = 21;

  SubIter& top() { return *levels_.last(); }
  void pop();
  void descend();
  void settle();

  KelRegistry* registry_;                      // the node that the iterator was made on
  OroArray<SubIter*> levels_{kFirstCapacity};  // owned; the last one is the top, at least one
  int32_t maxDepth_ = 1;                       // 0: no limit
};
