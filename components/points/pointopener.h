// PointOpener: reads a point file and adds it to the document as an object of its own.
//
// A file that is not read whole adds nothing; the error report names the file and the line. Main
// thread only.
#pragma once

#include "interfaces/IOroOpenDoc.h"
#include "orobasictypes/orooffers.h"

class PointOpener : public IOroOpenDoc {
 public:
  static constexpr const char* className() { return "PointOpener"; }
  using Offers = OroOffers<PointOpener, IOroOpenDoc>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  bool open(const OroPath& path, IOroOpenOptions* options, int32_t quiet) override;
  // Files are added to the document unless the mode is 0. No text is shown.
  void setMode(int32_t mode) override { mode_ = mode; }
  void setText(int32_t, const OroString&) override {}

  int32_t unusedSlot1() override { return 0; }
  int32_t unusedSlot3() override { return 0; }
  int32_t unusedSlot4() override { return 0; }
  int32_t unusedSlot5() override { return 0; }
  int32_t unusedSlot7() override { return 0; }
  int32_t unusedSlot8() override { return 0; }
  int32_t unusedSlot9() override { return 0; }

 private:
  int32_t mode_ = 1;
};
