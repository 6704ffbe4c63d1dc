// OroImageContainer: the address and size of one image in the image store. It owns no bytes.
#pragma once

#include "interfaces/IImageContainer.h"
#include "orobasictypes/orooffers.h"

class OroImageContainer : public IImageContainer {
 public:
  static constexpr const char* className() { return "OroImageContainer"; }

  OroImageContainer(const void* data, uint32_t size) : data_(data), size_(size) {}

  const void* getData() override { return data_; }
  uint32_t getSize() override { return size_; }

  using Offers = OroOffers<OroImageContainer, IImageContainer>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 private:
  const void* data_;  // borrowed
  uint32_t size_;     // bytes
};
