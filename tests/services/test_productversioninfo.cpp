#include "services/productversioninfo.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/services/servicetest.h"

namespace {

constexpr const char16_t* kRecord = u"SOFTWARE\\Velmora\\Scan";

class ProductVersion : public tests::ServiceTest {
 protected:
  // The number that a text stands for, -1 for none.
  int32_t numberOf(const std::u16string& text) {
    setMachineValue(kRecord, u"Current Version", text);
    ProductVersionInfo info;
    EXPECT_TRUE(info.read("Scan"));
    return info.currentVersion();
  }
  ProductVersionInfo info_;
};

TEST_F(ProductVersion, IsMinusOneUntilRead) {
  EXPECT_FALSE(info_.read("Scan"));
  EXPECT_EQ(info_.currentVersion(), -1);
  EXPECT_EQ(info_.currentSR(), -1);
  EXPECT_EQ(info_.latestVersion(), -1);
  EXPECT_EQ(info_.latestSR(), -1);
}

TEST_F(ProductVersion, IsReadFromTheRecordOfTheProduct) {
  setMachineValue(kRecord, u"Current Version", u"2021");
  setMachineValue(kRecord, u"Current SR", u"3");
  setMachineValue(kRecord, u"Latest Version", u"2022");
  setMachineValue(kRecord, u"Latest SR", u"1");
  EXPECT_FALSE(info_.read("Other"));
  EXPECT_TRUE(info_.read("Scan"));
  EXPECT_EQ(info_.currentVersion(), 2021);
  EXPECT_EQ(info_.currentSR(), 3);
  EXPECT_EQ(info_.latestVersion(), 2022);
  EXPECT_EQ(info_.latestSR(), 1);
  EXPECT_EQ(systemRegistry_.openKeyCount(), 0);
}

TEST_F(ProductVersion, AnAbsentNumberStaysMinusOne) {
  setMachineValue(kRecord, u"Current Version", u"2021");
  EXPECT_TRUE(info_.read("Scan"));
  EXPECT_EQ(info_.currentVersion(), 2021);
  EXPECT_EQ(info_.currentSR(), -1);
}

TEST_F(ProductVersion, ReadsNumbersInTheNotationOfC) {
  EXPECT_EQ(numberOf(u"010"), 8);
  EXPECT_EQ(numberOf(u"08"), 0);
  EXPECT_EQ(numberOf(u"0x1F"), 31);
  EXPECT_EQ(numberOf(u" 12 and more"), -1) << "does not fit";
  EXPECT_EQ(numberOf(u" 12 a"), 12);
  EXPECT_EQ(numberOf(u"-4"), -4);
  EXPECT_EQ(numberOf(u"999999999"), 999999999);
  EXPECT_EQ(numberOf(u"9999999999"), -1) << "eleven bytes do not fit";
  EXPECT_EQ(numberOf(u"none"), -1);
  EXPECT_EQ(numberOf(u""), -1);
}

TEST_F(ProductVersion, ATextWithoutItsEndIsCut) {
  setMachineValue(kRecord, u"Current SR", u"1");
  platform::RegistryKey key = nullptr;
  platform::registryOpenKey(platform::registryRoot(platform::RegistryRoot::localMachine), kRecord,
                            platform::registryFullAccess, key);
  const std::u16string digits = u"1234567891";
  platform::registrySetValue(key, u"Current Version", platform::registryTypeText, digits.data(),
                             static_cast<std::uint32_t>(digits.size() * sizeof(char16_t)));
  const std::uint32_t number = 7;
  platform::registrySetValue(key, u"Latest SR", platform::registryTypeDword, &number,
                             sizeof number);
  platform::registryCloseKey(key);
  EXPECT_TRUE(info_.read("Scan"));
  EXPECT_EQ(info_.currentVersion(), 123456789);
  EXPECT_EQ(info_.latestSR(), -1) << "a number is no text";
}

}  // namespace
