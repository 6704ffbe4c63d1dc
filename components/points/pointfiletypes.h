// PointFileTypes: gives whoever saves the writer for point files. Holds the one writer.
#pragma once

#include "components/points/pointwriter.h"
#include "interfaces/IFileTypeService.h"
#include "interfaces/IOroFileTypeNames.h"

class PointFileTypes : public IFileTypeService, public IOroFileTypeNames {
 public:
  static constexpr const char* className() { return "PointFileTypes"; }
  using Offers = OroOffers<PointFileTypes, IFileTypeService, IOroFileTypeNames>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  IWriteScene* writerFor() override { return writer_.get(); }

  bool formatName(const OroPath& path, OroString& name) override;

  int32_t unusedSlot1() override { return 0; }
  int32_t unusedSlot2() override { return 0; }
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

 private:
  IPtr<PointWriter> writer_{new PointWriter};
};
