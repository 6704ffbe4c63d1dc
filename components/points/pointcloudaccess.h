// PointCloudAccess: one cloud of the document as other components see it.
//
// Holds the object, which goes on as a cloud of its own when it leaves the document.
#pragma once

#include "components/points/pointobject.h"
#include "interfaces/IPointCloud.h"

class PointCloud;

class PointCloudAccess : public IPointCloud {
 public:
  static constexpr const char* className() { return "PointCloudAccess"; }
  using Offers = OroOffers<PointCloudAccess, IPointCloud>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // Requires: the object holds points.
  explicit PointCloudAccess(PointObject& object) : object_(&object) {}

  PointObject* object() const { return object_.get(); }

  const OroString& name() override { return object_->name(); }
  int64_t count() override;
  bool hasColors() override;
  bool setHasColors(bool wanted) override;
  IPointBlocks* blocks() override;
  int64_t selectedCount() override;
  bool readSelection(int64_t first, int64_t size, uint8_t* flags) override;
  bool writeSelection(int64_t first, int64_t size, const uint8_t* flags) override;

 private:
  PointCloud& cloud() const;
  bool holds(int64_t first, int64_t size);

  IPtr<PointObject> object_;
};
