#include "platform/osregistry.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "platform/fileregistry.h"
#include "platform/hooks.h"
#include "platform/knownfolders.h"
#include "platform/memoryregistry.h"
#include "platform/process.h"
#include "platform/text.h"
#include "tests/tempfolder.h"

namespace {

using platform::MemoryRegistry;
using platform::RegistryKey;
using platform::RegistryRoot;

enum class Kind { memory, file, system };

// What every registry must do, run on the one in memory, on that of text files and on the system's.
// All happens below one key that is removed at the end. Where the system's is one of text files,
// they lie in the test's own folder.
class Registry : public testing::TestWithParam<Kind> {
 protected:
  Registry() {
    folder() = folder_.path().u16string();
    if (GetParam() == Kind::memory) before_ = platform::setRegistryStore(&memory_);
    if (GetParam() == Kind::file) before_ = platform::setRegistryStore(&file_);
    top_ = u"Software\\CowlTests" + platform::fromSystem(std::to_string(platform::processId()));
    EXPECT_EQ(platform::registryCreateKey(root(), top_, platform::registryFullAccess, key_), 0);
  }
  ~Registry() override {
    platform::registryCloseKey(key_);
    platform::registryRemoveTree(root(), top_);
    if (GetParam() != Kind::system) platform::setRegistryStore(before_);
  }

  static RegistryKey root() { return platform::registryRoot(RegistryRoot::currentUser); }

  std::int32_t setText(std::u16string_view name, const std::u16string& text) {
    return platform::registrySetValue(key_, name, platform::registryTypeText, text.c_str(),
                                      static_cast<std::uint32_t>((text.size() + 1) * 2));
  }

  static std::u16string& folder() {
    static std::u16string path;
    return path;
  }

  tests::TempFolder folder_;
  platform::HookGuard<std::u16string(platform::KnownFolder)> folders_{
      platform::knownFolderHook, [](platform::KnownFolder known) {
        return folder() + (known == platform::KnownFolder::appData ? u"\\user" : u"\\machine");
      }};
  MemoryRegistry memory_;
  platform::FileRegistry file_{[](RegistryRoot which) {
    return folder() + (which == RegistryRoot::currentUser ? u"\\user.txt" : u"\\machine.txt");
  }};
  platform::RegistryStore* before_ = nullptr;
  std::u16string top_;
  RegistryKey key_ = nullptr;
};

INSTANTIATE_TEST_SUITE_P(Memory, Registry, testing::Values(Kind::memory));
INSTANTIATE_TEST_SUITE_P(File, Registry, testing::Values(Kind::file));
INSTANTIATE_TEST_SUITE_P(System, Registry, testing::Values(Kind::system));

TEST_P(Registry, NumberComesBack) {
  const std::uint32_t number = 0xFFFFFFFE;
  ASSERT_EQ(platform::registrySetValue(key_, u"number", platform::registryTypeDword, &number, 4),
            0);
  std::uint32_t type = 99;
  std::uint32_t read = 0;
  std::uint32_t size = sizeof read;
  EXPECT_EQ(platform::registryQueryValue(key_, u"number", &type, &read, &size), 0);
  EXPECT_EQ(type, platform::registryTypeDword);
  EXPECT_EQ(read, number);
  EXPECT_EQ(size, 4u);
}

TEST_P(Registry, MissingThingsAreNotFound) {
  RegistryKey out = nullptr;
  EXPECT_EQ(platform::registryOpenKey(key_, u"missing", platform::registryRead, out),
            platform::registryNotFound);
  EXPECT_EQ(out, nullptr);
  std::uint32_t size = 0;
  EXPECT_EQ(platform::registryQueryValue(key_, u"missing", nullptr, nullptr, &size),
            platform::registryNotFound);
  EXPECT_EQ(platform::registryRemoveTree(key_, u"missing"), platform::registryNotFound);
}

TEST_P(Registry, NamesIgnoreCase) {
  RegistryKey made = nullptr;
  RegistryKey opened = nullptr;
  ASSERT_EQ(platform::registryCreateKey(key_, u"Options\\MacroServer", platform::registryFullAccess,
                                        made),
            0);
  const std::uint32_t number = 7;
  platform::registrySetValue(made, u"Port", platform::registryTypeDword, &number, 4);
  ASSERT_EQ(
      platform::registryOpenKey(key_, u"OPTIONS\\macroserver", platform::registryRead, opened), 0);
  std::uint32_t read = 0;
  std::uint32_t size = 4;
  EXPECT_EQ(platform::registryQueryValue(opened, u"pORT", nullptr, &read, &size), 0);
  EXPECT_EQ(read, 7u);
  EXPECT_EQ(platform::registryCloseKey(made), 0);
  EXPECT_EQ(platform::registryCloseKey(opened), 0);
}

TEST_P(Registry, CreatingOpensWhatIsThere) {
  setText(u"value", u"kept");
  RegistryKey again = nullptr;
  ASSERT_EQ(platform::registryCreateKey(root(), top_, platform::registryFullAccess, again), 0);
  std::uint32_t size = 0;
  EXPECT_EQ(platform::registryQueryValue(again, u"value", nullptr, nullptr, &size), 0);
  EXPECT_EQ(size, 10u);
  platform::registryCloseKey(again);
}

TEST_P(Registry, EmptyNameOpensTheKeyOnceMore) {
  RegistryKey again = nullptr;
  ASSERT_EQ(platform::registryOpenKey(key_, u"", platform::registryRead, again), 0);
  setText(u"value", u"x");
  std::uint32_t size = 0;
  EXPECT_EQ(platform::registryQueryValue(again, u"value", nullptr, nullptr, &size), 0);
  EXPECT_EQ(platform::registryCloseKey(again), 0);
}

TEST_P(Registry, SmallBufferIsLeftAloneAndTheSizeTold) {
  setText(u"value", u"four");
  char16_t buffer[5] = {u'-', u'-', u'-', u'-', u'-'};
  std::uint32_t size = 8;
  EXPECT_EQ(platform::registryQueryValue(key_, u"value", nullptr, buffer, &size),
            platform::registryMoreData);
  EXPECT_EQ(size, 10u);
  EXPECT_EQ(buffer[4], u'-');
  EXPECT_EQ(platform::registryQueryValue(key_, u"value", nullptr, buffer, &size), 0);
  EXPECT_STREQ(platform::toSystem(buffer).c_str(), "four");
  EXPECT_EQ(platform::registryQueryValue(key_, u"value", nullptr, buffer, nullptr),
            platform::registryBadParameter);
}

TEST_P(Registry, TypeAloneCanBeAsked) {
  const std::uint16_t units[] = {3, 'a', 'b'};
  ASSERT_EQ(platform::registrySetValue(key_, u"raw", platform::registryTypeNone, units, 6), 0);
  std::uint32_t type = 99;
  EXPECT_EQ(platform::registryQueryValue(key_, u"raw", &type, nullptr, nullptr), 0);
  EXPECT_EQ(type, platform::registryTypeNone);
}

TEST_P(Registry, SettingReplacesValueAndType) {
  setText(u"value", u"text");
  const std::uint32_t number = 1;
  platform::registrySetValue(key_, u"VALUE", platform::registryTypeDword, &number, 4);
  std::uint32_t type = 99;
  std::uint32_t size = 0;
  EXPECT_EQ(platform::registryQueryValue(key_, u"value", &type, nullptr, &size), 0);
  EXPECT_EQ(type, platform::registryTypeDword);
  EXPECT_EQ(size, 4u);
}

TEST_P(Registry, AccessThatWasNotAskedForIsDenied) {
  RegistryKey readOnly = nullptr;
  ASSERT_EQ(platform::registryOpenKey(root(), top_, platform::registryRead, readOnly), 0);
  const std::uint32_t number = 1;
  EXPECT_EQ(platform::registrySetValue(readOnly, u"x", platform::registryTypeDword, &number, 4),
            platform::registryAccessDenied);
  platform::registryCloseKey(readOnly);
  RegistryKey writeOnly = nullptr;
  ASSERT_EQ(platform::registryOpenKey(root(), top_, platform::registryWrite, writeOnly), 0);
  EXPECT_EQ(platform::registrySetValue(writeOnly, u"x", platform::registryTypeDword, &number, 4),
            0);
  std::uint32_t size = 0;
  EXPECT_EQ(platform::registryQueryValue(writeOnly, u"x", nullptr, nullptr, &size),
            platform::registryAccessDenied);
  platform::registryCloseKey(writeOnly);
}

TEST_P(Registry, NarrowTextIsWideTextInside) {
  const char narrow[] = "caf\xC3\xA9";
  const std::string text = platform::toCodePage(platform::fromSystem(narrow));
  const auto size = static_cast<std::uint32_t>(text.size() + 1);
  ASSERT_EQ(platform::registrySetValue(key_, std::string_view("name"), platform::registryTypeText,
                                       text.c_str(), size),
            0);
  char16_t wide[16] = {};
  std::uint32_t wideSize = sizeof wide;
  EXPECT_EQ(platform::registryQueryValue(key_, u"name", nullptr, wide, &wideSize), 0);
  EXPECT_EQ(std::u16string(wide), u"caf\u00E9");
  EXPECT_EQ(wideSize, 10u);

  char back[16] = {};
  std::uint32_t type = 99;
  std::uint32_t backSize = sizeof back;
  EXPECT_EQ(platform::registryQueryValue(key_, std::string_view("NAME"), &type, back, &backSize),
            0);
  EXPECT_EQ(back, text);
  EXPECT_EQ(backSize, size);
  EXPECT_EQ(type, platform::registryTypeText);
  std::uint32_t small = 2;
  EXPECT_EQ(platform::registryQueryValue(key_, std::string_view("name"), nullptr, back, &small),
            platform::registryMoreData);
  EXPECT_EQ(small, size);
}

TEST_P(Registry, NarrowCallsLeaveOtherTypesAsTheyAre) {
  const std::string bytes("\x00\xFF\x80z", 4);
  ASSERT_EQ(platform::registrySetValue(key_, std::string_view("raw"), platform::registryTypeNone,
                                       bytes.data(), 4),
            0);
  char back[4] = {};
  std::uint32_t size = 4;
  EXPECT_EQ(platform::registryQueryValue(key_, std::string_view("raw"), nullptr, back, &size), 0);
  EXPECT_EQ(std::string(back, 4), bytes);
}

TEST_P(Registry, NarrowKeysAreWideKeys) {
  RegistryKey made = nullptr;
  RegistryKey opened = nullptr;
  ASSERT_EQ(platform::registryCreateKey(key_, std::string_view("narrow"),
                                        platform::registryFullAccess, made),
            0);
  EXPECT_EQ(platform::registryOpenKey(key_, u"Narrow", platform::registryRead, opened), 0);
  platform::registryCloseKey(opened);
  EXPECT_EQ(
      platform::registryOpenKey(key_, std::string_view("NARROW"), platform::registryRead, opened),
      0);
  platform::registryCloseKey(opened);
  platform::registryCloseKey(made);
}

TEST_P(Registry, TextIsReadInOneGo) {
  setText(u"PluginPath", u"C:\\Plug \u20AC");
  setText(u"empty", u"");
  const std::uint32_t number = 1;
  platform::registrySetValue(key_, u"number", platform::registryTypeDword, &number, 4);
  const auto read = [&](std::u16string_view name, std::u16string& out) {
    return platform::registryReadText(RegistryRoot::currentUser, top_, name, out);
  };
  std::u16string out = u"before";
  EXPECT_FALSE(read(u"missing", out));
  EXPECT_FALSE(read(u"number", out));
  EXPECT_FALSE(platform::registryReadText(RegistryRoot::currentUser, top_ + u"\\no", u"x", out));
  EXPECT_EQ(out, u"before");
  EXPECT_TRUE(read(u"pluginpath", out));
  EXPECT_EQ(out, u"C:\\Plug \u20AC");
  EXPECT_TRUE(read(u"empty", out));
  EXPECT_EQ(out, u"");
}

TEST_P(Registry, TextWithoutTerminatorIsRead) {
  platform::registrySetValue(key_, u"value", platform::registryTypeText, u"abc", 6);
  std::u16string out;
  EXPECT_TRUE(platform::registryReadText(RegistryRoot::currentUser, top_, u"value", out));
  EXPECT_EQ(out, u"abc");
}

TEST_P(Registry, RemovingTakesTheWholeTree) {
  RegistryKey deep = nullptr;
  ASSERT_EQ(platform::registryCreateKey(key_, u"a\\b\\c", platform::registryFullAccess, deep), 0);
  platform::registryCloseKey(deep);
  EXPECT_EQ(platform::registryRemoveTree(key_, u"a"), 0);
  EXPECT_EQ(platform::registryOpenKey(key_, u"a\\b", platform::registryRead, deep),
            platform::registryNotFound);
  EXPECT_EQ(platform::registryRemoveTree(key_, u""), platform::registryBadParameter);
}

TEST_P(Registry, TheTwoRootsAreApart) {
  RegistryKey out = nullptr;
  EXPECT_EQ(platform::registryOpenKey(platform::registryRoot(RegistryRoot::localMachine), top_,
                                      platform::registryRead, out),
            platform::registryNotFound);
}

TEST(RegistryInMemory, CountsOpenKeys) {
  MemoryRegistry memory;
  const RegistryKey root = memory.root(RegistryRoot::localMachine);
  RegistryKey key = nullptr;
  ASSERT_EQ(memory.createKey(root, u"x", platform::registryFullAccess, key), 0);
  EXPECT_EQ(memory.openKeyCount(), 1);
  EXPECT_EQ(memory.closeKey(key), 0);
  EXPECT_EQ(memory.closeKey(root), 0) << "a root stays open";
  EXPECT_EQ(memory.openKeyCount(), 0);
  EXPECT_EQ(memory.openKey(root, u"x", platform::registryRead, key), 0);
  EXPECT_EQ(memory.openKeyCount(), 1) << "left to the registry's end";
}

TEST(RegistryInMemory, ForeignKeysAreRefused) {
  MemoryRegistry memory;
  int object = 0;
  RegistryKey key = nullptr;
  for (const RegistryKey bad : {RegistryKey(nullptr), RegistryKey(&object)}) {
    EXPECT_EQ(memory.openKey(bad, u"x", platform::registryRead, key), platform::registryBadKey);
    EXPECT_EQ(memory.createKey(bad, u"x", platform::registryRead, key), platform::registryBadKey);
    EXPECT_EQ(memory.setValue(bad, u"x", 4, &object, 4), platform::registryBadKey);
    EXPECT_EQ(memory.queryValue(bad, u"x", nullptr, nullptr, nullptr), platform::registryBadKey);
    EXPECT_EQ(memory.removeTree(bad, u"x"), platform::registryBadKey);
    EXPECT_EQ(memory.closeKey(bad), platform::registryBadKey);
  }
}

TEST(RegistryInMemory, KeyClosedTwiceIsRefused) {
  MemoryRegistry memory;
  RegistryKey key = nullptr;
  memory.createKey(memory.root(RegistryRoot::currentUser), u"x", platform::registryRead, key);
  EXPECT_EQ(memory.closeKey(key), 0);
  EXPECT_EQ(memory.closeKey(key), platform::registryBadKey);
}

TEST(RegistryInMemory, KeyOfARemovedTreeFindsNothing) {
  MemoryRegistry memory;
  const RegistryKey root = memory.root(RegistryRoot::currentUser);
  RegistryKey key = nullptr;
  RegistryKey other = nullptr;
  memory.createKey(root, u"a\\b", platform::registryFullAccess, key);
  const int value = 1;
  memory.setValue(key, u"v", 4, &value, 4);
  memory.removeTree(root, u"A");
  EXPECT_EQ(memory.setValue(key, u"v", 4, &value, 4), platform::registryNotFound);
  EXPECT_EQ(memory.queryValue(key, u"v", nullptr, nullptr, nullptr), platform::registryNotFound);
  EXPECT_EQ(memory.createKey(key, u"c", 0, other), platform::registryNotFound);
  EXPECT_EQ(memory.openKey(key, u"", 0, other), platform::registryNotFound);
  EXPECT_EQ(memory.closeKey(key), 0);
}

TEST(RegistryInMemory, NamesAndDepthHaveLimits) {
  MemoryRegistry memory;
  const RegistryKey root = memory.root(RegistryRoot::currentUser);
  RegistryKey key = nullptr;
  std::u16string path;
  for (int i = 0; i < 512; ++i) path += u"a\\";
  EXPECT_EQ(memory.createKey(root, path, platform::registryFullAccess, key), 0);
  EXPECT_EQ(memory.createKey(key, u"a", platform::registryFullAccess, key),
            platform::registryBadParameter);
  EXPECT_EQ(memory.createKey(root, std::u16string(255, u'n'), platform::registryRead, key), 0);
  EXPECT_EQ(memory.createKey(root, std::u16string(256, u'n'), platform::registryRead, key),
            platform::registryBadParameter);
  EXPECT_EQ(memory.openKey(root, std::u16string(256, u'n'), platform::registryRead, key),
            platform::registryBadParameter);
}

TEST(RegistryInMemory, KeyOpenedForReadingMakesNone) {
  MemoryRegistry memory;
  const RegistryKey root = memory.root(RegistryRoot::currentUser);
  RegistryKey made = nullptr;
  RegistryKey readOnly = nullptr;
  memory.createKey(root, u"a\\b", platform::registryRead, made);
  memory.openKey(root, u"a", platform::registryRead, readOnly);
  EXPECT_EQ(memory.createKey(readOnly, u"c", platform::registryRead, made),
            platform::registryAccessDenied);
  EXPECT_EQ(memory.createKey(readOnly, u"b", platform::registryRead, made), 0) << "is there";
}

TEST(RegistryStoreInUse, CanBeReplacedAndPutBack) {
  MemoryRegistry memory;
  platform::RegistryStore& system = platform::registryStore();
  EXPECT_EQ(platform::setRegistryStore(&memory), nullptr);
  EXPECT_EQ(&platform::registryStore(), &memory);
  EXPECT_EQ(platform::setRegistryStore(nullptr), &memory);
  EXPECT_EQ(&platform::registryStore(), &system);
}

}  // namespace
