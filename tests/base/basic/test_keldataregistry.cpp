#include "base/basic/keldataregistry.h"

#include <gmock/gmock.h>

#include <string>

#include "base/basic/kelcustomdatastore.h"
#include "base/basic/keldatadirectory.h"
#include "base/basic/keldataint.h"
#include "framework/kelregistry.h"
#include "interfaces/IKelDataFilter.h"
#include "orobasictypes/orostring.h"
#include "platform/fileregistry.h"
#include "platform/hooks.h"
#include "platform/knownfolders.h"
#include "platform/memoryregistry.h"
#include "platform/process.h"
#include "platform/text.h"
#include "tests/base/basic/recordingreceiver.h"
#include "tests/support/assertionlist.h"
#include "tests/support/fakebroker.h"
#include "tests/support/testdisk.h"
#include "tests/tempfolder.h"

namespace {

using platform::RegistryKey;
using platform::RegistryRoot;
using testing::ElementsAre;
using testing::IsEmpty;

// A product of its own in an empty registry, and a store without journal.
class DataRegistryBase : public testing::Test {
 protected:
  explicit DataRegistryBase(bool inMemory)
      : inMemory_(inMemory), product_("CowlTests" + std::to_string(platform::processId())) {
    folder() = folder_.path().u16string();
    if (inMemory_) before_ = platform::setRegistryStore(&memory);
    broker.registerService(KelCString::borrow("IOroRegistry"), facts.get());
    fact("PRODUCT_INFO/appName", product_.c_str());
    fact("PRODUCT_INFO/displayVersion", "7.5");
    removeProduct();
  }
  ~DataRegistryBase() override {
    removeProduct();
    if (inMemory_) platform::setRegistryStore(before_);
  }

  void fact(const char* key, const char* value) {
    KelCString owned(key);
    facts->setValue(owned, KelCString(value));
  }
  void forgetFact(const char* key) {
    KelCString owned(key);
    facts->removeKey(owned);
  }

  bool run(int32_t mode, const char* path = nullptr) {
    const IPtr<IKelDataVisitor> visitor(new KelDataRegistry(mode));
    return path == nullptr ? store->Accept(visitor.get()) : store->AcceptPath(visitor.get(), path);
  }
  bool write(const char* path = nullptr) { return run(IKelDataVisitor::kWriting, path); }
  bool read(const char* path = nullptr) { return run(IKelDataVisitor::kReading, path); }

  std::u16string options(const std::u16string& below = u"") const {
    return u"Software\\Velmora\\" + platform::fromSystem(product_) + u"\\7.5\\Options" + below;
  }
  // A stored value as "type:bytes"; "none" if there is none.
  std::string stored(const std::u16string& below, std::u16string_view name) const {
    RegistryKey key = nullptr;
    if (platform::registryOpenKey(root(), options(below), platform::registryRead, key) != 0) {
      return "none";
    }
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    std::string data;
    bool found = platform::registryQueryValue(key, name, &type, nullptr, &size) == 0;
    data.resize(size);
    found = found && platform::registryQueryValue(key, name, &type, data.data(), &size) == 0;
    platform::registryCloseKey(key);
    return found ? std::to_string(type) + ":" + data : "none";
  }
  void put(const std::u16string& below, std::u16string_view name, std::uint32_t type,
           const std::string& data) const {
    RegistryKey key = nullptr;
    ASSERT_EQ(
        platform::registryCreateKey(root(), options(below), platform::registryFullAccess, key), 0);
    ASSERT_EQ(platform::registrySetValue(key, name, type, data.data(),
                                         static_cast<std::uint32_t>(data.size())),
              0);
    platform::registryCloseKey(key);
  }
  static RegistryKey root() { return platform::registryRoot(RegistryRoot::currentUser); }

  static std::string wideBytes(const std::u16string& text, bool terminated = true) {
    return {reinterpret_cast<const char*>(text.c_str()),
            (text.size() + (terminated ? 1 : 0)) * sizeof(char16_t)};
  }
  int32_t number(const char* path) { return store->GetInt(path, nullptr); }
  std::string blob(const char* path) {
    int32_t size = 0;
    const void* const data = store->GetBlob(path, size, nullptr);
    return {static_cast<const char*>(data), static_cast<size_t>(size)};
  }

  static std::u16string& folder() {
    static std::u16string path;
    return path;
  }

  platform::MemoryRegistry memory;
  tests::FakeBroker broker;
  const IPtr<KelRegistry> facts{new KelRegistry};
  const IPtr<KelDataStore> store{new KelDataStore(true, 5, 20)};

 private:
  void removeProduct() {
    platform::registryRemoveTree(root(), u"Software\\Velmora\\" + platform::fromSystem(product_));
  }

  tests::TempFolder folder_;
  platform::HookGuard<std::u16string(platform::KnownFolder)> folders_{
      platform::knownFolderHook, [](platform::KnownFolder known) {
        return folder() + (known == platform::KnownFolder::appData ? u"\\user" : u"\\machine");
      }};
  const bool inMemory_;
  const std::string product_;
  platform::RegistryStore* before_ = nullptr;
};

// On the registry in memory and on the system's; where that is a text file, it lies in the test's
// own folder.
class DataRegistry : public DataRegistryBase, public testing::WithParamInterface<bool> {
 protected:
  DataRegistry() : DataRegistryBase(GetParam()) {}

  void makeExample() {
    store->CreateDirectory("View");
    store->CreateDirectory("View/Deep");
    store->CreateInt("View/Zoom", 75, -1000, 1000, 1);
    store->CreateString("View/Name", 6, "top", 1);
    store->CreateOroString("View/Title", 3, OroString(u"a\u20AC"), 1);
    store->CreateBlob("View/Deep/State", 3, "\x01\x00\xFF", 1);
    store->CreateFloat("Scale", 0.5, -10, 10, 1);
  }
  void clearExample() {
    store->SetInt(nullptr, "View/Zoom", 1);
    store->SetString(nullptr, "View/Name", "?");
    store->SetOroString(nullptr, "View/Title", OroString(u"?"));
    store->SetBlob(nullptr, "View/Deep/State", "?", 1);
    store->SetFloat(nullptr, "Scale", 1);
  }
};

INSTANTIATE_TEST_SUITE_P(Memory, DataRegistry, testing::Values(true));
INSTANTIATE_TEST_SUITE_P(System, DataRegistry, testing::Values(false));

TEST_P(DataRegistry, MirrorsTheTreeBelowOptions) {
  makeExample();
  ASSERT_TRUE(write());
  EXPECT_EQ(stored(u"\\View", u"Zoom"), std::string("4:K\0\0\0", 6));
  EXPECT_EQ(stored(u"\\View", u"Name"), "1:" + wideBytes(u"top"));
  EXPECT_EQ(stored(u"\\View", u"Title"), "0:" + wideBytes(u"\u0003a\u20AC", false));
  EXPECT_EQ(stored(u"\\View\\Deep", u"State"), std::string("0:\x01\x00\xFF", 5));
  EXPECT_EQ(stored(u"", u"Scale"), "1:" + wideBytes(u"0.500000"));
}

TEST_P(DataRegistry, ReadsEveryKindBackSilently) {
  makeExample();
  ASSERT_TRUE(write());
  clearExample();
  tests::RecordingReceiver receiver;
  store->AddReceiver("View/Zoom", &receiver);
  EXPECT_TRUE(read());
  EXPECT_EQ(number("View/Zoom"), 75);
  EXPECT_STREQ(store->GetString("View/Name", nullptr), "top");
  EXPECT_TRUE(store->GetOroString("View/Title", nullptr) == OroString(u"a\u20AC"));
  EXPECT_EQ(blob("View/Deep/State"), std::string("\x01\x00\xFF", 3));
  EXPECT_EQ(store->GetFloat("Scale", nullptr), 0.5);
  EXPECT_THAT(receiver.calls, IsEmpty());
  store->RemoveReceiver("View/Zoom", &receiver);
}

TEST_P(DataRegistry, WalkToOnePathTakesItsFirstDirectoryForOptions) {
  store->CreateDirectory("A");
  store->CreateDirectory("B");
  store->CreateDirectory("B/C");
  store->CreateInt("A/x", 1, 0, 9, 1);
  store->CreateInt("B/x", 2, 0, 9, 1);
  store->CreateInt("B/C/x", 3, 0, 9, 1);
  EXPECT_TRUE(write("A/x"));
  EXPECT_TRUE(write("B/x"));
  EXPECT_EQ(stored(u"", u"x"), std::string("4:\2\0\0\0", 6)) << "the second took its place";
  EXPECT_TRUE(write("B/C/x"));
  EXPECT_EQ(stored(u"\\C", u"x"), std::string("4:\3\0\0\0", 6));
  EXPECT_TRUE(read("A/x"));
  EXPECT_EQ(number("A/x"), 2);
  EXPECT_FALSE(read()) << "the whole walk looks elsewhere";
  EXPECT_EQ(number("A/x"), 2);
  EXPECT_TRUE(write());
  EXPECT_EQ(stored(u"\\B\\C", u"x"), std::string("4:\3\0\0\0", 6));
}

TEST_P(DataRegistry, ItemOfTheRootCannotBeWrittenByItsPath) {
  store->CreateInt("root", 1, 0, 9, 1);
  EXPECT_FALSE(write("root"));
  EXPECT_FALSE(read("root"));
  EXPECT_TRUE(write());
  EXPECT_TRUE(read());
}

TEST_P(DataRegistry, MissingValueFailsItsItemAndTheWalkGoesOn) {
  makeExample();
  put(u"\\View", u"Zoom", 4, std::string("\x09\0\0\0", 4));
  EXPECT_FALSE(read());
  EXPECT_EQ(number("View/Zoom"), 9);
  EXPECT_STREQ(store->GetString("View/Name", nullptr), "top");
}

TEST_P(DataRegistry, KeysAreMadeWhenReading) {
  makeExample();
  EXPECT_FALSE(read());
  RegistryKey key = nullptr;
  EXPECT_EQ(
      platform::registryOpenKey(root(), options(u"\\View\\Deep"), platform::registryRead, key), 0);
  platform::registryCloseKey(key);
}

TEST_P(DataRegistry, NamesOfDifferentCaseAreOneValue) {
  store->CreateDirectory("A");
  store->CreateDirectory("a");
  store->CreateInt("A/x", 1, 0, 9, 1);
  store->CreateInt("a/X", 2, 0, 9, 1);
  ASSERT_TRUE(write());
  ASSERT_TRUE(read());
  EXPECT_EQ(number("A/x"), 2);
}

TEST_P(DataRegistry, FloatsKeepSixDecimals) {
  store->CreateFloat("f", 0, -1e300, 1e300, 1);
  for (const auto& [value, kept] : {std::pair(0.12345678, 0.123457), std::pair(1e-7, 0.0),
                                    std::pair(-2.5, -2.5), std::pair(1e300, 1e300)}) {
    store->SetFloat(nullptr, "f", value);
    ASSERT_TRUE(write());
    store->SetFloat(nullptr, "f", 99);
    ASSERT_TRUE(read());
    EXPECT_EQ(store->GetFloat("f", nullptr), kept);
  }
  for (const auto& [text, value] : {std::pair(u" 1e2x", 100.0), std::pair(u"none", 0.0),
                                    std::pair(u"", 0.0), std::pair(u"0x10", 16.0)}) {
    put(u"", u"f", platform::registryTypeText, wideBytes(text));
    EXPECT_TRUE(read());
    EXPECT_EQ(store->GetFloat("f", nullptr), value);
  }
}

TEST_P(DataRegistry, AllPersistentItemsAreWrittenChangedOrNot) {
  store->CreateInt("kept", 1, 0, 9, 1);
  store->CreateInt("fleeting", 2, 0, 9, 0);
  ASSERT_TRUE(write());
  EXPECT_EQ(stored(u"", u"fleeting"), "none");
  put(u"", u"kept", 4, std::string("\x05\0\0\0", 4));
  ASSERT_TRUE(write());
  EXPECT_EQ(stored(u"", u"kept"), std::string("4:\1\0\0\0", 6));
}

TEST_P(DataRegistry, EmptyTextsAndBlobsComeBack) {
  store->CreateString("text", 5, "", 1);
  store->CreateOroString("wide", 5, OroString(), 1);
  store->CreateBlob("blob", 0, nullptr, 1);
  ASSERT_TRUE(write());
  store->SetString(nullptr, "text", "?");
  store->SetOroString(nullptr, "wide", OroString(u"?"));
  store->SetBlob(nullptr, "blob", "?", 1);
  EXPECT_TRUE(read());
  EXPECT_STREQ(store->GetString("text", nullptr), "");
  EXPECT_TRUE(store->GetOroString("wide", nullptr).isEmpty());
  EXPECT_EQ(blob("blob"), "");
}

TEST_P(DataRegistry, TypeThatIsNotTheItemsIsAssertedAndTaken) {
  store->CreateInt("int", 1, INT32_MIN, INT32_MAX, 1);
  store->CreateFloat("float", 1, 0, 9999, 1);
  store->CreateString("text", 9, "old", 1);
  store->CreateOroString("wide", 9, OroString(u"old"), 1);
  store->CreateBlob("blob", 3, "old", 1);
  put(u"", u"int", 0, "\x02");
  put(u"", u"float", 0, "12");
  put(u"", u"text", 0, "raw");
  put(u"", u"wide", 4, std::string("\x02\0a\0", 4));
  put(u"", u"blob", 4, "1234");
  tests::AssertionList assertions;
  EXPECT_TRUE(read());
  EXPECT_THAT(
      assertions.take(),
      ElementsAre("type == REG_DWORD base/basic/keldata", "type == REG_SZ base/basic/keldata",
                  "type == REG_SZ base/basic/keldata", "type == REG_NONE base/basic/keldata",
                  "type == REG_NONE base/basic/keldata"));
  EXPECT_EQ(number("int"), 2);
  EXPECT_EQ(store->GetFloat("float", nullptr), 12);
  EXPECT_STREQ(store->GetString("text", nullptr), "raw");
  EXPECT_TRUE(store->GetOroString("wide", nullptr) == "a");
  EXPECT_EQ(blob("blob"), "1234");
}

TEST_P(DataRegistry, LargeValuesAreWrittenAndNotReadBack) {
  const auto survives = [&](const char* path) {
    EXPECT_TRUE(write(path));
    return read(path);
  };
  store->CreateDirectory("A");
  store->CreateString("A/text", 20000, std::string(8191, 'x').c_str(), 1);
  EXPECT_TRUE(survives("A/text"));
  store->SetString(nullptr, "A/text", std::string(8192, 'x').c_str());
  EXPECT_FALSE(survives("A/text"));
  store->CreateOroString("A/wide", 20000, OroString(std::u16string(4095, u'x').c_str()), 1);
  EXPECT_TRUE(survives("A/wide"));
  store->SetOroString(nullptr, "A/wide", OroString(std::u16string(4096, u'x').c_str()));
  EXPECT_FALSE(survives("A/wide"));
  const std::string data(70000, 'x');
  store->CreateBlob("A/blob", 8192, data.data(), 1);
  EXPECT_TRUE(survives("A/blob"));
  store->SetBlob(nullptr, "A/blob", data.data(), 8193);
  EXPECT_FALSE(survives("A/blob"));
  EXPECT_EQ(blob("A/blob").size(), 8193u) << "it keeps its value";
}

TEST_P(DataRegistry, BlobSizeIsCutToSixteenBits) {
  store->CreateDirectory("A");
  const std::string data(70000, 'x');
  store->CreateBlob("A/blob", 32768, data.data(), 1);
  EXPECT_FALSE(write("A/blob")) << "it would be negative";
  store->SetBlob(nullptr, "A/blob", data.data(), 65535);
  EXPECT_FALSE(write("A/blob"));
  store->SetBlob(nullptr, "A/blob", data.data(), 65540);
  EXPECT_TRUE(write("A/blob"));
  EXPECT_EQ(stored(u"", u"blob"), "0:xxxx");
}

TEST_P(DataRegistry, CountOfAWideTextIsTrustedAsFarAsThereAreUnits) {
  store->CreateOroString("wide", 9, OroString(u"old"), 1);
  const auto reads = [&](const std::string& data) {
    store->SetOroString(nullptr, "wide", OroString(u"old"));
    put(u"", u"wide", 0, data);
    return read() ? std::string(store->GetOroString("wide", nullptr).toUtf8()) : "failed";
  };
  EXPECT_EQ(reads(std::string("\xFF\xFF\x61\0\x62\0", 6)), "ab");
  EXPECT_EQ(reads(std::string("\2\0\x61\0\x62\0", 6)), "a");
  EXPECT_EQ(reads(std::string("\0\0\x61\0", 4)), "");
  EXPECT_EQ(reads(std::string("\3\0\x61\0\x62", 5)), "a") << "an odd byte is no unit";
  EXPECT_EQ(reads(std::string("\1\0", 2)), "");
  EXPECT_EQ(reads("x"), "failed");
  EXPECT_EQ(reads(""), "failed");
}

TEST_P(DataRegistry, WithoutAProductNothingIsFound) {
  store->CreateDirectory("A");
  store->CreateInt("A/x", 1, 0, 9, 1);
  fact("PRODUCT_INFO/displayVersion", "");
  EXPECT_FALSE(write());
  forgetFact("PRODUCT_INFO/displayVersion");
  EXPECT_FALSE(write());
  fact("PRODUCT_INFO/displayVersion", "7.5");
  forgetFact("PRODUCT_INFO/appName");
  EXPECT_FALSE(write());
  EXPECT_FALSE(read("A/x"));
}

TEST_P(DataRegistry, CustomStoreKeepsItsSettingsThere) {
  const IPtr<IDataStore> mine(new KelCustomDataStore);
  EXPECT_STREQ(mine->GetReader()->getClassName(), "KelDataRegistry");
  EXPECT_STREQ(mine->GetWriter()->getClassName(), "KelDataRegistry");
  mine->CreateDirectory("Mine");
  mine->CreateInt("Mine/x", 1, 0, 9, IKelDataItem::kPersistent | IKelDataItem::kJournalled);
  EXPECT_TRUE(mine->SetInt(nullptr, "Mine/x", 7));
  EXPECT_EQ(stored(u"", u"x"), std::string("4:\7\0\0\0", 6)) << "at once";
  const IPtr<IDataStore> next(new KelCustomDataStore);
  next->CreateDirectory("Mine");
  next->CreateInt("Mine/x", 1, 0, 9, 1);
  EXPECT_FALSE(next->Load()) << "a set and a load do not meet";
  EXPECT_EQ(next->GetInt("Mine/x", nullptr), 1);
  EXPECT_TRUE(next->AcceptPath(next->GetReader(), "Mine/x"));
  EXPECT_EQ(next->GetInt("Mine/x", nullptr), 7);
}

class NothingWritten : public IKelDataFilter {
 public:
  static constexpr const char* className() { return "NoItem"; }
  using Offers = OroOffers<NothingWritten, IKelDataFilter>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  bool Accept(IKelDataItem*) override { return false; }
};

class DataRegistryVisitor : public DataRegistryBase {
 protected:
  DataRegistryVisitor() : DataRegistryBase(true) {}
};

TEST_F(DataRegistryVisitor, FilterPicksTheItems) {
  store->CreateInt("x", 1, 0, 9, 1);
  const IPtr<IKelDataVisitor> writer(new KelDataRegistry(IKelDataVisitor::kWriting));
  writer->SetFilter(IPtr<IKelDataFilter>(new NothingWritten).get());
  EXPECT_TRUE(store->Accept(writer.get()));
  EXPECT_EQ(stored(u"", u"x"), "none");
}

TEST_F(DataRegistryVisitor, NoKeyStaysOpen) {
  store->CreateDirectory("A");
  store->CreateDirectory("A/B");
  store->CreateInt("A/B/x", 1, 0, 9, 1);
  EXPECT_TRUE(write());
  EXPECT_TRUE(write("A/B/x"));
  EXPECT_TRUE(read());
  EXPECT_EQ(memory.openKeyCount(), 0);
}

TEST_F(DataRegistryVisitor, BrokenWalkIsClosedByTheNextOrTheEnd) {
  store->CreateDirectory("A");
  store->CreateBlob("A/large", 40000, nullptr, 1);
  IPtr<IKelDataVisitor> writer(new KelDataRegistry(IKelDataVisitor::kWriting));
  EXPECT_FALSE(store->Accept(writer.get()));
  EXPECT_EQ(memory.openKeyCount(), 2) << "End closes none";
  EXPECT_TRUE(writer->Begin());
  EXPECT_EQ(memory.openKeyCount(), 0);
  EXPECT_FALSE(store->Accept(writer.get()));
  writer = nullptr;
  EXPECT_EQ(memory.openKeyCount(), 0);
}

TEST_F(DataRegistryVisitor, SixtyFourLevelsAreTheLimit) {
  KelDataDirectory directory("level");
  KelDataRegistry writer(IKelDataVisitor::kWriting);
  for (int level = 0; level < 64; ++level) EXPECT_TRUE(writer.EnterDirectory(&directory));
  EXPECT_FALSE(writer.EnterDirectory(&directory));
  EXPECT_EQ(memory.openKeyCount(), 64);
  tests::AssertionList assertions;
  for (int level = 0; level < 64; ++level) EXPECT_TRUE(writer.LeaveDirectory(&directory));
  EXPECT_EQ(memory.openKeyCount(), 0);
  EXPECT_THAT(assertions.take(), IsEmpty());
  writer.LeaveDirectory(&directory);
  EXPECT_THAT(assertions.take(), ElementsAre("level_ >= 0 base/basic/keldata"));
  EXPECT_TRUE(writer.EnterDirectory(&directory)) << "and the next walk is whole";
}

TEST_F(DataRegistryVisitor, OtherModesAreAsserted) {
  KelDataRegistry other(2);
  KelDataDirectory directory("A");
  KelDataInt item("A/x", 1, 0, 9, 1);
  tests::AssertionList assertions;
  EXPECT_FALSE(other.EnterDirectory(&directory));
  EXPECT_FALSE(other.VisitInt(&item));
  EXPECT_THAT(assertions.take(), ElementsAre("mode_ == 0 || mode_ == 1 base/basic/keldata",
                                             "mode_ == 0 || mode_ == 1 base/basic/keldata"));
}

TEST_F(DataRegistryVisitor, FullDiskFailsTheVisitAndKeepsTheRest) {
  store->CreateDirectory("A");
  for (const char* path : {"A/a", "A/b", "A/c"}) store->CreateInt(path, 1, 0, 9, 1);
  for (size_t refused = 0; refused < 6; ++refused) {
    tests::TempFolder folder;
    platform::FileRegistry file(
        [&](RegistryRoot) { return folder.file("registry.txt").u16string(); });
    platform::RegistryStore* const before = platform::setRegistryStore(&file);
    {
      tests::TestDisk disk;
      disk.refuseFrom(refused);
      EXPECT_FALSE(write()) << refused;
    }
    // Writes: the product's key, Options, A, and the three values.
    const std::string all[] = {stored(u"\\A", u"a"), stored(u"\\A", u"b"), stored(u"\\A", u"c")};
    for (size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(all[i], refused > i + 3 ? std::string("4:\1\0\0\0", 6) : "none") << refused;
    }
    EXPECT_TRUE(write()) << "the disk has room again";
    platform::setRegistryStore(before);
  }
}

TEST_F(DataRegistryVisitor, AnswersForItsNames) {
  KelDataRegistry reader(IKelDataVisitor::kReading);
  EXPECT_STREQ(reader.getClassName(), "KelDataRegistry");
  EXPECT_NE(oroQueryClass<KelDataVisitor>(&reader), nullptr);
  EXPECT_EQ(reader.GetMode(), IKelDataVisitor::kReading);
  EXPECT_TRUE(reader.End());
}

}  // namespace
