#include "gui/apps/cowl/cowlimageadder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "interfaces/IImageContainer.h"
#include "orobasictypes/iptr.h"
#include "services/oroimagestore.h"
#include "tests/support/fakebroker.h"
#include "tests/testpaths.h"

namespace {

class ImageAdder : public testing::Test {
 protected:
  IImageContainer* image(const char* name) { return store_->getImage(KelCString::borrow(name)); }
  std::string bytes(const char* name) {
    IImageContainer* const found = image(name);
    if (found == nullptr) return "<absent>";
    return {static_cast<const char*>(found->getData()), found->getSize()};
  }
  static std::string fileBytes(const std::string& name) {
    std::ifstream file(tests::sourceDir() / "gui" / "apps" / "cowl" / "images" / (name + ".png"),
                       std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  tests::FakeBroker broker_;
  IPtr<OroImageStore> store_ = new OroImageStore;
  IPtr<CowlImageAdder> adder_ = new CowlImageAdder;
};

TEST_F(ImageAdder, AddsBothImages) {
  broker_.registerService(KelCString::borrow("IImageStore"), store_.get());
  adder_->initialize();
  EXPECT_EQ(bytes("atelier110").size(), 32425u);
  EXPECT_EQ(bytes("atelier110_cowl").size(), 688u);
  for (const char* name : {"atelier110", "atelier110_cowl"}) {
    EXPECT_EQ(bytes(name), fileBytes(name)) << name;
  }
}

TEST_F(ImageAdder, ASecondTimeReplacesTheContainersNotTheBytes) {
  broker_.registerService(KelCString::borrow("IImageStore"), store_.get());
  adder_->initialize();
  IImageContainer* const first = image("atelier110");
  adder_ = nullptr;
  IPtr<CowlImageAdder>(new CowlImageAdder)->initialize();
  EXPECT_NE(image("atelier110"), first);
  EXPECT_EQ(image("atelier110")->getData(), first->getData());
}

TEST_F(ImageAdder, WithoutAStoreDoesNothing) {
  adder_->initialize();
  EXPECT_EQ(image("atelier110"), nullptr);
}

}  // namespace
