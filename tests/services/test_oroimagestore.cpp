#include "services/oroimagestore.h"

#include <gtest/gtest.h>

#include <string>

#include "interfaces/IImageContainer.h"
#include "orobasictypes/iptr.h"
#include "services/oroimagecontainer.h"
#include "tests/support/slotnumber.h"

namespace {

class ImageStore : public testing::Test {
 protected:
  void add(const char* name, const void* data, uint32_t size) {
    store_->addImage(KelCString(name), data, size);
  }
  IImageContainer* get(const char* name) { return store_->getImage(KelCString(name)); }

  IPtr<OroImageStore> store_ = new OroImageStore;
  char bytes_[4] = {'p', 'n', 'g', '!'};
};

TEST_F(ImageStore, HasNothingAtFirst) {
  EXPECT_EQ(get("logo"), nullptr);
  int mark = 0;
  auto* found = reinterpret_cast<IImageContainer*>(&mark);
  EXPECT_FALSE(store_->findImage(KelCString("logo"), &found));
  EXPECT_EQ(found, nullptr);
  EXPECT_FALSE(store_->findImage(KelCString("logo"), nullptr));
}

TEST_F(ImageStore, FindsAnImageByItsExactName) {
  add("logo", bytes_, 4);
  IImageContainer* const image = get("logo");
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->getData(), bytes_);
  EXPECT_EQ(image->getSize(), 4u);
  IImageContainer* found = nullptr;
  EXPECT_TRUE(store_->findImage(KelCString("logo"), &found));
  EXPECT_EQ(found, image);
  EXPECT_EQ(get("Logo"), nullptr);
  EXPECT_EQ(get("logo "), nullptr);
}

TEST_F(ImageStore, CopiesNoBytes) {
  add("logo", bytes_, 4);
  bytes_[3] = '?';
  EXPECT_EQ(static_cast<const char*>(get("logo")->getData())[3], '?');
}

TEST_F(ImageStore, KeepsACopyOfTheName) {
  std::string name = "logo";
  store_->addImage(KelCString::borrow(name.c_str()), bytes_, 4);
  name[0] = 'X';
  EXPECT_NE(get("logo"), nullptr);
}

TEST_F(ImageStore, ASecondImageTakesTheNameAndTheFirstStaysGood) {
  add("logo", bytes_, 4);
  IImageContainer* const first = get("logo");
  add("logo", bytes_ + 1, 3);
  IImageContainer* const second = get("logo");
  EXPECT_NE(second, first);
  EXPECT_EQ(second->getSize(), 3u);
  EXPECT_EQ(first->getData(), bytes_);
  EXPECT_EQ(first->getSize(), 4u);
}

TEST_F(ImageStore, HoldsAReferenceThatOutlivesItself) {
  add("logo", bytes_, 4);
  IImageContainer* const image = get("logo");
  EXPECT_EQ(image->refCount(), 1);
  { IPtr<IImageContainer> client(image); }
  EXPECT_EQ(image->refCount(), 1);
  store_ = nullptr;
  EXPECT_EQ(image->refCount(), 1);
  EXPECT_EQ(image->getData(), bytes_);
}

TEST_F(ImageStore, TakesAnEmptyImageAndManyNames) {
  add("nothing", nullptr, 0);
  EXPECT_EQ(get("nothing")->getData(), nullptr);
  EXPECT_EQ(get("nothing")->getSize(), 0u);
  for (uint32_t i = 0; i < 500; ++i) add(("image" + std::to_string(i)).c_str(), bytes_, i);
  for (uint32_t i = 0; i < 500; ++i) {
    ASSERT_NE(get(("image" + std::to_string(i)).c_str()), nullptr);
    EXPECT_EQ(get(("image" + std::to_string(i)).c_str())->getSize(), i);
  }
}

TEST_F(ImageStore, AnswersForItsClassAndItsInterface) {
  EXPECT_EQ(oroQueryClass<OroImageStore>(store_.get()), store_.get());
  EXPECT_EQ(oroQuery<IImageStore>(store_.get()), store_.get());
  add("logo", bytes_, 4);
  EXPECT_EQ(oroQuery<IImageContainer>(get("logo")), get("logo"));
  EXPECT_STREQ(get("logo")->getClassName(), "OroImageContainer");
}

TEST(ImageStoreSlots, StandInTheirOrder) {
  EXPECT_EQ(tests::slotNumber(&IImageContainer::getData), 1);
  EXPECT_EQ(tests::slotNumber(&IImageContainer::getSize), 2);
  EXPECT_EQ(tests::slotNumber(&IImageStore::addImage), 1);
  EXPECT_EQ(tests::slotNumber(&IImageStore::getImage), 2);
  EXPECT_EQ(tests::slotNumber(&IImageStore::findImage), 3);
}

}  // namespace
