#include "base/basic/keldataprinter.h"

#include <gtest/gtest.h>

#include <sstream>

#include "base/basic/keldatastore.h"
#include "interfaces/IKelDataFilter.h"
#include "orobasictypes/orostring.h"

namespace {

class NoItem : public IKelDataFilter {
 public:
  static constexpr const char* className() { return "NoItem"; }
  using Offers = OroOffers<NoItem, IKelDataFilter>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  bool Accept(IKelDataItem*) override { return false; }
};

class DataPrinter : public testing::Test {
 protected:
  DataPrinter() {
    store->CreateDirectory("View");
    store->CreateDirectory("View/Deep");
    store->CreateInt("View/Zoom", -75, -100, 100, 0);
    store->CreateString("View/Deep/Name", 20, "a]\tb", 1);
    store->CreateOroString("Title", 20, OroString(u"wide"), 4);
    store->CreateFloat("Scale", 0.123456789, 0, 1, 2);
    store->CreateBlob("State", 3, "abc", 1);
    store->CreateVoid("Event", 1);
  }
  std::string printed(const char* path = nullptr) {
    std::ostringstream out;
    KelDataPrinter printer(out);
    const bool done = path == nullptr ? store->Accept(&printer) : store->AcceptPath(&printer, path);
    return done ? out.str() : "failed";
  }

  const IPtr<IDataStore> store{new KelDataStore(true, 5, 20)};
};

TEST_F(DataPrinter, PrintsTheTreeIndented) {
  EXPECT_EQ(printed(),
            "directory \n"
            "\tdirectory View\n"
            "\t\tdirectory Deep\n"
            "\t\t\tc-string Name = [a]\tb]\n"
            "\t\tint Zoom = -75\n"
            "\tkel-string Title = [wide]\n"
            "\tfloat Scale = 0.123457\n"
            "\n");
}

TEST_F(DataPrinter, PathPrintsNoRoot) {
  EXPECT_EQ(printed("View/Zoom"), "directory View\n\tint Zoom = -75\n\n");
  EXPECT_EQ(printed("Scale"), "float Scale = 0.123457\n\n");
}

TEST_F(DataPrinter, StreamGivesTheNumbersTheirForm) {
  std::ostringstream out;
  out.precision(3);
  out << std::showpos;
  KelDataPrinter printer(out);
  EXPECT_TRUE(store->AcceptPath(&printer, "Scale"));
  EXPECT_EQ(out.str(), "float Scale = +0.123\n\n");
}

TEST_F(DataPrinter, EveryWalkBeginsAtTheMargin) {
  std::ostringstream out;
  KelDataPrinter printer(out);
  KelDataDirectory directory("x");
  EXPECT_TRUE(printer.Begin());
  printer.EnterDirectory(&directory);
  EXPECT_TRUE(store->AcceptPath(&printer, "Scale"));
  EXPECT_EQ(out.str(), "directory x\nfloat Scale = 0.123457\n\n");
}

TEST_F(DataPrinter, IsAWriterThatAsksNoFilter) {
  std::ostringstream out;
  KelDataPrinter printer(out);
  printer.SetFilter(new NoItem);
  EXPECT_TRUE(store->AcceptPath(&printer, "Scale"));
  EXPECT_EQ(out.str(), "float Scale = 0.123457\n\n");
  EXPECT_EQ(printer.GetMode(), IKelDataVisitor::kWriting);
  EXPECT_STREQ(printer.getClassName(), "KelDataPrinter");
}

}  // namespace
