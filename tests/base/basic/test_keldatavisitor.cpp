#include "base/basic/keldatavisitor.h"

#include <gmock/gmock.h>

#include "base/basic/keldatablob.h"
#include "base/basic/keldatadirectory.h"
#include "base/basic/keldatafloat.h"
#include "base/basic/keldataint.h"
#include "base/basic/keldataorostring.h"
#include "base/basic/keldatastring.h"
#include "interfaces/IKelDataDirectory.h"
#include "tests/support/slotnumber.h"

namespace {

using testing::ElementsAre;

class Filter : public IKelDataFilter {
 public:
  static constexpr const char* className() { return "Filter"; }
  using Offers = OroOffers<Filter, IKelDataFilter>;
  explicit Filter(bool& alive) : alive_(alive) { alive_ = true; }
  ~Filter() override { alive_ = false; }
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  bool Accept(IKelDataItem*) override { return false; }

 private:
  bool& alive_;
};

class PathVisitor : public KelDataVisitor {
 public:
  PathVisitor() : KelDataVisitor(kWriting) {}
  bool VisitItem(IKelDataItem* item) override {
    paths.emplace_back(item->GetPath());
    return false;
  }
  std::vector<std::string> paths;
};

TEST(KelDataVisitor, BaseAcceptsEverything) {
  KelDataDirectory root("");
  root.AddItem(new KelDataInt("i", 0, 0, 1, 0));
  root.AddItem(new KelDataFloat("f", 0, 0, 1, 0));
  root.AddItem(new KelDataString("s", 1, "", 0));
  root.AddItem(new KelDataOroString("w", 1, OroString(), 0));
  root.AddItem(new KelDataBlob("b", 0, nullptr, 0));
  KelDataVisitor visitor(1);
  EXPECT_EQ(visitor.GetMode(), 1);
  EXPECT_TRUE(visitor.Begin());
  EXPECT_TRUE(root.Accept(&visitor));
  EXPECT_TRUE(visitor.End());
}

TEST(KelDataVisitor, TypedVisitsEndInTheOneForAllKinds) {
  PathVisitor visitor;
  EXPECT_FALSE(KelDataInt("i", 0, 0, 1, 0).Accept(&visitor));
  EXPECT_FALSE(KelDataFloat("f", 0, 0, 1, 0).Accept(&visitor));
  EXPECT_FALSE(KelDataString("s", 1, "", 0).Accept(&visitor));
  EXPECT_FALSE(KelDataOroString("w", 1, OroString(), 0).Accept(&visitor));
  EXPECT_FALSE(KelDataBlob("b", 0, nullptr, 0).Accept(&visitor));
  EXPECT_THAT(visitor.paths, ElementsAre("i", "f", "s", "w", "b"));
}

TEST(KelDataVisitor, HoldsItsFilterAndAsksItNothing) {
  bool first = false, second = false;
  PathVisitor visitor;
  visitor.SetFilter(new Filter(first));
  EXPECT_NE(visitor.GetFilter(), nullptr);
  EXPECT_TRUE(first);
  KelDataInt("i", 0, 0, 1, 0).Accept(&visitor);
  EXPECT_THAT(visitor.paths, ElementsAre("i"));
  visitor.SetFilter(new Filter(second));
  EXPECT_FALSE(first);
  EXPECT_TRUE(second);
  visitor.SetFilter(nullptr);
  EXPECT_FALSE(second);
  EXPECT_EQ(visitor.GetFilter(), nullptr);
}

TEST(KelDataVisitor, OperationsHaveTheirOrder) {
  EXPECT_EQ(tests::slotNumber(&IKelDataVisitor::Begin), 1);
  EXPECT_EQ(tests::slotNumber(&IKelDataVisitor::EnterDirectory), 2);
  EXPECT_EQ(tests::slotNumber(&IKelDataVisitor::VisitBlob), 3);
  EXPECT_EQ(tests::slotNumber(&IKelDataVisitor::VisitOroString), 4);
  EXPECT_EQ(tests::slotNumber(&IKelDataVisitor::VisitString), 5);
  EXPECT_EQ(tests::slotNumber(&IKelDataVisitor::VisitFloat), 6);
  EXPECT_EQ(tests::slotNumber(&IKelDataVisitor::VisitInt), 7);
  EXPECT_EQ(tests::slotNumber(&IKelDataVisitor::LeaveDirectory), 8);
  EXPECT_EQ(tests::slotNumber(&IKelDataVisitor::End), 9);
  EXPECT_EQ(tests::slotNumber(&IKelDataVisitor::GetFilter), 10);
  EXPECT_EQ(tests::slotNumber(&IKelDataVisitor::SetFilter), 11);
  EXPECT_EQ(tests::slotNumber(&IKelDataVisitor::GetMode), 12);
}

}  // namespace
