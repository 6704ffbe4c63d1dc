// PointDocument: the one document of the process, a list of named objects.
//
// It is made empty but for its "World"; opening a file adds an object. The object that was added
// last is the active one. Main thread only.
#pragma once

#include <vector>

#include "components/points/pointobject.h"
#include "interfaces/IOroDoc.h"

class PointCloudData;

class PointDocument : public IOroDoc {
 public:
  static constexpr const char* className() { return "PointDocument"; }
  using Offers = OroOffers<PointDocument, IOroDoc>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void makeDocument() override;
  IOroDocObjectItr* objectIterator(int32_t kind, int32_t first, int32_t last,
                                   int32_t flags) override;

  // Adds an object at the end; the document takes a reference.
  void add(PointObject* object);
  // Takes the object out; its last reference may go.
  void remove(PointObject* object);
  // Takes all objects out but the world.
  void removeAll();

  // The objects in their order, borrowed.
  std::vector<PointObject*> objects() const;

  int32_t unusedSlot1() override { return 0; }
  int32_t unusedSlot3() override { return 0; }
  int32_t unusedSlot4() override { return 0; }
  int32_t unusedSlot5() override { return 0; }
  int32_t unusedSlot6() override { return 0; }
  int32_t unusedSlot7() override { return 0; }
  int32_t unusedSlot8() override { return 0; }
  int32_t unusedSlot9() override { return 0; }
  int32_t unusedSlot10() override { return 0; }
  int32_t unusedSlot11() override { return 0; }
  int32_t unusedSlot12() override { return 0; }
  int32_t unusedSlot13() override { return 0; }
  int32_t unusedSlot14() override { return 0; }
  int32_t unusedSlot15() override { return 0; }
  int32_t unusedSlot16() override { return 0; }
  int32_t unusedSlot17() override { return 0; }
  int32_t unusedSlot18() override { return 0; }
  int32_t unusedSlot19() override { return 0; }
  int32_t unusedSlot20() override { return 0; }
  int32_t unusedSlot21() override { return 0; }
  int32_t unusedSlot22() override { return 0; }
  int32_t unusedSlot23() override { return 0; }
  int32_t unusedSlot24() override { return 0; }
  int32_t unusedSlot25() override { return 0; }
  int32_t unusedSlot26() override { return 0; }
  int32_t unusedSlot27() override { return 0; }
  int32_t unusedSlot28() override { return 0; }
  int32_t unusedSlot29() override { return 0; }
  int32_t unusedSlot30() override { return 0; }
  int32_t unusedSlot31() override { return 0; }
  int32_t unusedSlot32() override { return 0; }
  int32_t unusedSlot33() override { return 0; }
  int32_t unusedSlot34() override { return 0; }
  int32_t unusedSlot35() override { return 0; }
  int32_t unusedSlot36() override { return 0; }
  int32_t unusedSlot37() override { return 0; }

 private:
  bool made_ = false;
  std::vector<IPtr<PointObject>> objects_;
};

// The points of an object, borrowed, or null when it holds none.
PointCloudData* pointsOf(IOroDocObject* object);
