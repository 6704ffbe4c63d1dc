#include "services/orostartuperrorlog.h"

#include <gtest/gtest.h>

#include <string>

#include "interfaces/IOroDirService.h"
#include "interfaces/IProductInfo.h"
#include "interfaces/IProductInfoV2.h"
#include "services/errorservice.h"
#include "tests/services/servicetest.h"
#include "tests/support/slotnumber.h"

namespace {

constexpr const char* kVariable = "CREATE_ERROR_LOG_AT_STARTUP";

// One directory for every name.
class OneDirectory : public IOroDirService {
 public:
  static constexpr const char* className() { return "OneDirectory"; }
  using Offers = OroOffers<OneDirectory, IOroDirService>;
  explicit OneDirectory(const OroPath& path) : path_(path) {}
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  const OroPath& getDir(const char* name) override {
    asked = name;
    return path_;
  }
  void setDir(const char*, const OroPath& path) override { path_ = path; }

  std::string asked;

 private:
  OroPath path_;
};

// Knows its name alone.
class NamedProduct : public IProductInfoV2 {
 public:
  static constexpr const char* className() { return "NamedProduct"; }
  using Offers = OroOffers<NamedProduct, IProductInfo, IProductInfoV2>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  KelCString& productName(KelCString& out) override { return out = "CowlCORE"; }
  KelCString& version(KelCString& out) override { return out; }
  KelCString& servicePack(KelCString& out) override { return out; }
  KelCString& subVersion(KelCString& out) override { return out; }
  KelCString& fullVersion(KelCString& out) override { return out; }
  int32_t appModeNumber() override { return 0; }
  KelCString& appModeName(KelCString& out) override { return out; }
  KelCString& buildNumber(KelCString& out) override { return out; }
  KelCString& buildDateText(KelCString& out) override { return out; }
  KelCString& buildText(KelCString& out) override { return out; }
  KelCString& platform(KelCString& out) override { return out; }
  KelCString& changeLabel(KelCString& out) override { return out; }
  int32_t firstYear() override { return 0; }
  int32_t lastYear() override { return 0; }
  void banner(std::ostream&) override {}
  bool isPrototype() override { return false; }
  bool isAlpha() override { return false; }
  bool isBeta() override { return false; }
  bool isReleaseCandidate() override { return false; }
  bool isRelease() override { return false; }
  int32_t setFact(const KelCString&, const KelCString&) override { return 0; }
  KelCString& displayVersion(KelCString& out) override { return out; }
  KelCString& internalVersionText(KelCString& out) override { return out; }
};

class StartupErrorLogTest : public tests::ServiceTest {
 protected:
  std::string path() const { return tests::narrow(oroErrorLogPath()); }
};

TEST_F(StartupErrorLogTest, ItIsWantedWhenTheVariableIsExactlyOne) {
  const struct {
    std::optional<std::string> value;
    bool wanted;
  } rows[] = {{"1", true},   {"12", false},   {"11", false}, {"0", false},
              {"01", false}, {"true", false}, {" 1", false}, {std::nullopt, false}};
  for (const auto& row : rows) {
    const tests::EnvironmentGuard guard(kVariable, row.value);
    EXPECT_EQ(oroWantsStartupErrorLog(), row.wanted) << row.value.value_or("(unset)");
  }
}

TEST_F(StartupErrorLogTest, ItLiesInADirectoryNamedLikeTheExecutable) {
  setValue("MAIN_ARGV0", "C:\\apps\\cowl.exe");
  EXPECT_EQ(path(), "C:\\apps\\cowl\\.log");
  setValue("MAIN_ARGV0", "/opt/apps/cowl");
  EXPECT_EQ(path(), "\\opt\\apps\\cowl\\.log");
  setValue("MAIN_ARGV0", "cowl.exe");
  EXPECT_EQ(path(), ".\\cowl\\.log");
}

TEST_F(StartupErrorLogTest, TheExecutableIsReadAsUtf8) {
  setValue("MAIN_ARGV0", "/opt/caf\xC3\xA9/cowl");
  EXPECT_EQ(std::u16string(oroErrorLogPath().wideText()), u"\\opt\\caf\u00E9\\cowl\\.log");
}

TEST_F(StartupErrorLogTest, WithoutAnExecutableItLiesBesideItUnderTheProductsName) {
  const IPtr<OneDirectory> directories = new OneDirectory(OroPath("\\opt\\apps"));
  publish("IOroDirService", directories.get());
  EXPECT_EQ(path(), "\\opt\\apps\\.log");
  EXPECT_EQ(directories->asked, "exe");
  setValue("MAIN_ARGV0", "");
  EXPECT_EQ(path(), "\\opt\\apps\\.log");
  publish("IProductInfo", new NamedProduct);
  EXPECT_EQ(path(), "\\opt\\apps\\CowlCORE\\.log");
}

TEST_F(StartupErrorLogTest, WithNoServiceAtAllItIsABareName) { EXPECT_EQ(path(), ".log"); }

TEST_F(StartupErrorLogTest, TheListenerWritesWhereTheDirectoryExists) {
  const IPtr<ErrorService> errors = new ErrorService(false);
  publish("IOroErrorService", errors.get());
  setValue("MAIN_ARGV0", folder_.file("cowl.exe").string().c_str());
  std::filesystem::create_directory(folder_.file("cowl"));
  oroCreateStartupErrorLog();
  errors->report(OroString("start failed"), 1, KelCString());
  EXPECT_EQ(folder_.read("cowl/.log").substr(0, 12), "start failed");
}

TEST_F(StartupErrorLogTest, NobodyMakesTheDirectory) {
  const IPtr<ErrorService> errors = new ErrorService(false);
  publish("IOroErrorService", errors.get());
  setValue("MAIN_ARGV0", folder_.file("cowl.exe").string().c_str());
  oroCreateStartupErrorLog();
  errors->report(OroString("start failed"), 1, KelCString());
  EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(StartupErrorLogTest, WithoutAnErrorServiceNothingIsMade) {
  setValue("MAIN_ARGV0", folder_.file("cowl.exe").string().c_str());
  std::filesystem::create_directory(folder_.file("cowl"));
  oroCreateStartupErrorLog();
  EXPECT_TRUE(std::filesystem::is_empty(folder_.file("cowl")));
}

TEST(IProductInfoTest, OperationsStandInTheirOrder) {
  using tests::slotNumber;
  EXPECT_EQ(slotNumber(&IProductInfo::productName), 1);
  EXPECT_EQ(slotNumber(&IProductInfo::version), 2);
  EXPECT_EQ(slotNumber(&IProductInfo::servicePack), 3);
  EXPECT_EQ(slotNumber(&IProductInfo::subVersion), 4);
  EXPECT_EQ(slotNumber(&IProductInfo::fullVersion), 5);
  EXPECT_EQ(slotNumber(&IProductInfo::appModeNumber), 6);
  EXPECT_EQ(slotNumber(&IProductInfo::appModeName), 7);
  EXPECT_EQ(slotNumber(&IProductInfo::buildNumber), 8);
  EXPECT_EQ(slotNumber(&IProductInfo::buildDateText), 9);
  EXPECT_EQ(slotNumber(&IProductInfo::buildText), 10);
  EXPECT_EQ(slotNumber(&IProductInfo::platform), 11);
  EXPECT_EQ(slotNumber(&IProductInfo::changeLabel), 12);
  EXPECT_EQ(slotNumber(&IProductInfo::firstYear), 13);
  EXPECT_EQ(slotNumber(&IProductInfo::lastYear), 14);
  EXPECT_EQ(slotNumber(&IProductInfo::banner), 15);
  EXPECT_EQ(slotNumber(&IProductInfo::isPrototype), 16);
  EXPECT_EQ(slotNumber(&IProductInfo::isAlpha), 17);
  EXPECT_EQ(slotNumber(&IProductInfo::isBeta), 18);
  EXPECT_EQ(slotNumber(&IProductInfo::isReleaseCandidate), 19);
  EXPECT_EQ(slotNumber(&IProductInfo::isRelease), 20);
  EXPECT_EQ(slotNumber(&IProductInfo::setFact), 21);
  // Behind the destructor of the first interface, which has two places in the table.
  EXPECT_EQ(slotNumber(&IProductInfoV2::displayVersion), 22 + 2);
  EXPECT_EQ(slotNumber(&IProductInfoV2::internalVersionText), 23 + 2);
}

}  // namespace
