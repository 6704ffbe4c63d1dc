// The staged libraries "points" and "random", as the application description names them: what the
// point arrays and the bit vectors of every module get from them.

#include <vector>

#include <gtest/gtest.h>

#include "components/random/randomsource.h"
#include "interfaces/IOroPointExtraInfo.h"
#include "orobasictypes/binmagic.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/orovectorarray.h"
#include "orobasictypes/sptr.h"
#include "tests/components/describedid.h"
#include "tests/framework/managerfixture.h"
#include "tests/support/countingmanager.h"

namespace {

class PointLibraries : public tests::ManagerFixture {
 protected:
  PointLibraries() {
    describe("points", {{"PointExtraInfo", "IOroPointExtraInfo"},
                        {"PointArrayFactory", "IRealPArrayFactory"}});
    describe("random", {{"RandomSource", "IOroRandom"}});
    publish("IOroMManager", memory());
    testaccess::resetArrayManager();
  }
  ~PointLibraries() override {
    testaccess::resetArrayManager();
    keepForGood();  // the libraries keep what they looked up
  }

 private:
  struct Described {
    const char* className;
    const char* interfaceName;
  };

  void describe(const char* library, const std::vector<Described>& classes) {
    const GUID component = tests::describedId(std::string("component ") + library + " ");
    manager_->registerComponent(tests::wideTextOf(tests::stageDir() / library), component,
                                KelCString(library), KelCString());
    for (const Described& described : classes) {
      const GUID id = tests::describedId(std::string("class ") + described.className + " ");
      broker_->registerClass(id, component, {}, KelCString(described.className));
      broker_->registerInterface(KelCString(described.interfaceName), id);
    }
  }
  // Of the whole process, as the libraries see it.
  static tests::CountingManager& memory() {
    static auto* const kept = [] {
      auto* const made = new tests::CountingManager;
      made->addRef();
      made->logs = false;
      return made;
    }();
    return *kept;
  }
};

TEST_F(PointLibraries, GiveEachArrayColoursOfItsOwn) {
  const IPtr<OroVectorArray> first(new OroVectorArray);
  const IPtr<OroVectorArray> second(new OroVectorArray);
  first->Add(1, 2, 3);
  second->Add(1, 2, 3);
  EXPECT_TRUE(first->SetColor(1, 1, 0.5, 0));
  EXPECT_TRUE(second->SetHasColors(true));
  ASSERT_NE(first->ExtraInfo(), nullptr);
  EXPECT_NE(first->ExtraInfo(), second->ExtraInfo());
  EXPECT_EQ(first->ExtraInfo()->refCount(), 1);
  EXPECT_STREQ(first->ExtraInfo()->getClassName(), "PointExtraInfo");
  EXPECT_FALSE(*first == *second);
  EXPECT_TRUE(second->SetColor(1, 1, 0.5, 0));
  EXPECT_TRUE(*first == *second);
  const IPtr<RealPArray> copy(first->Clone(true));
  first->ScaleColors(0);
  EXPECT_TRUE(*copy == *second);
  EXPECT_TRUE(second->SetHasColors(false));
  EXPECT_EQ(second->ExtraInfo(), nullptr);
}

TEST_F(PointLibraries, MakeTheArraysThatChunksAreReadInto) {
  const IPtr<IRealPArray> array(oroMakePointArray(BinMagic(0xB916B, 0)));
  ASSERT_TRUE(static_cast<bool>(array));
  EXPECT_EQ(array->Add(1, 2, 3), 1);
  double x = 0;
  double y = 0;
  double z = 0;
  array->Get(1, x, y, z);
  EXPECT_EQ(OroVector(x, y, z), OroVector(1, 2, 3));
  EXPECT_EQ(oroMakePointArray(BinMagic(0x315E97D6)), nullptr);
}

TEST_F(PointLibraries, ThinSelectionsWithTheirNumbers) {
  const SPtr<IOroRandom> first;
  const SPtr<IOroRandom> second;
  ASSERT_TRUE(first && second);
  EXPECT_NE(first.get(), second.get()) << "nobody draws from another's numbers";
  BitVector thinned;
  thinned.SetAll(100);
  BitVector expected = thinned;
  thinned.KeepRandom(0.3, nullptr);
  const IPtr<RandomSource> source(new RandomSource);
  source->seed(100 * 2 + 412);
  expected.KeepRandom(0.3, source.get());
  EXPECT_TRUE(thinned == expected);
  EXPECT_EQ(thinned.CountSet(), 30);
}

}  // namespace
