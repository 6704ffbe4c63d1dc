#include "platform/fileregistry.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "platform/registrytext.h"
#include "tests/support/testdisk.h"
#include "tests/tempfolder.h"

namespace {

using platform::FileRegistry;
using platform::RegistryKey;
using platform::RegistryRoot;

class FileRegistryTest : public testing::Test {
 protected:
  FileRegistry::FileOf files() const {
    return [this](RegistryRoot which) {
      const bool ofUser = which == RegistryRoot::currentUser;
      return (folder.path() / (ofUser ? "config/sub/user.txt" : "machine.txt")).u16string();
    };
  }
  void putUser(const std::string& text) const {
    std::filesystem::create_directories(folder.file("config/sub"));
    folder.write("config/sub/user.txt", text);
  }
  std::string userText() const { return folder.read("config/sub/user.txt"); }
  size_t filesBeside() const {
    const std::filesystem::directory_iterator entries(folder.file("config/sub"));
    return static_cast<size_t>(std::distance(begin(entries), end(entries)));
  }

  static RegistryKey rootOf(FileRegistry& registry) {
    return registry.root(RegistryRoot::currentUser);
  }
  static RegistryKey made(FileRegistry& registry, const char16_t* name) {
    RegistryKey key = nullptr;
    EXPECT_EQ(registry.createKey(rootOf(registry), name, platform::registryFullAccess, key), 0);
    return key;
  }
  static std::int32_t set(FileRegistry& registry, RegistryKey key, std::uint32_t number) {
    return registry.setValue(key, u"v", platform::registryTypeDword, &number, sizeof number);
  }
  // The number, or the failure's status below 0.
  static std::int64_t get(FileRegistry& registry, RegistryKey key) {
    std::uint32_t number = 0;
    std::uint32_t size = sizeof number;
    const std::int32_t status = registry.queryValue(key, u"V", nullptr, &number, &size);
    return status == platform::registryOk ? std::int64_t{number} : -std::int64_t{status};
  }

  tests::TempFolder folder;
  FileRegistry registry{files()};
};

TEST_F(FileRegistryTest, OutlivesItsProcess) {
  const RegistryKey key = made(registry, u"Software\\Velmora");
  EXPECT_EQ(set(registry, key, 7), 0);
  EXPECT_EQ(userText(),
            "cowl-registry 1\n\n[Software]\n\n[Software/Velmora]\n\"v\" = number 7\n\nend\n");
  FileRegistry next(files());
  RegistryKey again = nullptr;
  ASSERT_EQ(next.openKey(rootOf(next), u"SOFTWARE\\velmora", platform::registryRead, again), 0);
  EXPECT_EQ(get(next, again), 7);
}

TEST_F(FileRegistryTest, ReadingMakesNoFile) {
  RegistryKey key = nullptr;
  EXPECT_EQ(registry.openKey(rootOf(registry), u"Software", platform::registryRead, key),
            platform::registryNotFound);
  EXPECT_FALSE(std::filesystem::exists(folder.file("config")));
}

TEST_F(FileRegistryTest, ProcessesSeeEachOthersChanges) {
  FileRegistry other(files());
  const RegistryKey mine = made(registry, u"A");
  const RegistryKey theirs = made(other, u"a");
  EXPECT_EQ(set(registry, mine, 1), 0);
  EXPECT_EQ(get(other, theirs), 1);
  EXPECT_EQ(set(other, theirs, 2), 0);
  EXPECT_EQ(get(registry, mine), 2);
  made(other, u"B");
  EXPECT_EQ(set(registry, mine, 3), 0);
  EXPECT_NE(userText().find("[B]"), std::string::npos) << "nobody's change is lost by the next";
  EXPECT_EQ(other.removeTree(rootOf(other), u"A"), 0);
  EXPECT_EQ(get(registry, mine), -platform::registryNotFound);
  EXPECT_EQ(set(registry, mine, 4), platform::registryNotFound);
}

TEST_F(FileRegistryTest, EditedFileIsSeen) {
  const RegistryKey key = made(registry, u"A");
  set(registry, key, 1);
  putUser("cowl-registry 1\n[a]\n\"V\" = number 9\nend\n");
  EXPECT_EQ(get(registry, key), 9);
  std::filesystem::remove(folder.file("config/sub/user.txt"));
  EXPECT_EQ(get(registry, key), -platform::registryNotFound);
}

TEST_F(FileRegistryTest, EqualValueIsNotWrittenAgain) {
  const RegistryKey key = made(registry, u"A");
  set(registry, key, 1);
  tests::TestDisk disk;
  EXPECT_EQ(set(registry, key, 1), 0);
  made(registry, u"a");
  EXPECT_EQ(disk.writes.size(), 0u);
  EXPECT_EQ(set(registry, key, 2), 0);
  EXPECT_EQ(disk.writes.size(), 1u) << "the whole file in one";
}

TEST_F(FileRegistryTest, NamesKeepTheirFirstSpelling) {
  made(registry, u"Alpha");
  const RegistryKey key = made(registry, u"ALPHA");
  const std::uint32_t number = 1;
  registry.setValue(key, u"Value", 4, &number, 4);
  registry.setValue(key, u"VALUE", 4, "\2\0\0", 4);
  EXPECT_EQ(userText(), "cowl-registry 1\n\n[Alpha]\n\"Value\" = number 2\n\nend\n");
}

TEST_F(FileRegistryTest, MachineIsReadAndNeverWritten) {
  const RegistryKey root = registry.root(RegistryRoot::localMachine);
  RegistryKey key = nullptr;
  EXPECT_EQ(registry.createKey(root, u"A", platform::registryRead, key),
            platform::registryAccessDenied);
  folder.write("machine.txt", "cowl-registry 1\n[A/B]\n\"v\" = number 5\nend\n");
  const std::string before = folder.read("machine.txt");
  ASSERT_EQ(registry.createKey(root, u"a\\b", platform::registryRead, key), 0) << "it is there";
  EXPECT_EQ(get(registry, key), 5);
  EXPECT_EQ(set(registry, key, 6), platform::registryAccessDenied);
  RegistryKey writable = nullptr;
  for (const std::uint32_t access : {platform::registryWrite, platform::registryFullAccess}) {
    EXPECT_EQ(registry.openKey(root, u"A", access, writable), platform::registryAccessDenied);
    EXPECT_EQ(registry.createKey(root, u"A", access, writable), platform::registryAccessDenied);
  }
  EXPECT_EQ(set(registry, root, 6), platform::registryAccessDenied);
  EXPECT_EQ(registry.createKey(root, u"New", platform::registryRead, writable),
            platform::registryAccessDenied);
  EXPECT_EQ(registry.removeTree(root, u"A"), platform::registryAccessDenied);
  EXPECT_EQ(writable, nullptr);
  folder.write("machine.txt", "damaged");
  EXPECT_EQ(get(registry, key), -platform::registryDamaged);
  EXPECT_EQ(registry.createKey(root, u"A", platform::registryRead, writable),
            platform::registryDamaged);
  EXPECT_EQ(folder.read("machine.txt"), "damaged");
}

TEST_F(FileRegistryTest, DamagedFileIsReportedAndPutAsideByTheNextKey) {
  const RegistryKey key = made(registry, u"A");
  set(registry, key, 1);
  const std::string damaged = userText().substr(0, 30);
  putUser(damaged);
  RegistryKey out = nullptr;
  EXPECT_EQ(get(registry, key), -platform::registryDamaged);
  EXPECT_EQ(set(registry, key, 2), platform::registryDamaged);
  EXPECT_EQ(registry.openKey(rootOf(registry), u"A", platform::registryRead, out),
            platform::registryDamaged);
  EXPECT_EQ(registry.removeTree(rootOf(registry), u"A"), platform::registryDamaged);
  EXPECT_EQ(userText(), damaged) << "nothing has touched it";
  const RegistryKey again = made(registry, u"A");
  EXPECT_EQ(set(registry, again, 3), 0);
  EXPECT_EQ(get(registry, key), 3);
  EXPECT_EQ(folder.read("config/sub/user.txt.damaged"), damaged);
  putUser("damaged again");
  made(registry, u"B");
  EXPECT_EQ(folder.read("config/sub/user.txt.damaged"), "damaged again") << "the latest one";
}

TEST_F(FileRegistryTest, KeyOpenForReadingDoesNotPutADamagedFileAside) {
  made(registry, u"A");
  RegistryKey readOnly = nullptr;
  RegistryKey out = nullptr;
  registry.openKey(rootOf(registry), u"A", platform::registryRead, readOnly);
  EXPECT_EQ(registry.createKey(readOnly, u"B", platform::registryRead, out),
            platform::registryAccessDenied);
  putUser("damaged");
  EXPECT_EQ(registry.createKey(readOnly, u"B", platform::registryRead, out),
            platform::registryDamaged);
  EXPECT_EQ(userText(), "damaged");
}

TEST_F(FileRegistryTest, FullDiskLeavesTheFileAndTellsIt) {
  const RegistryKey key = made(registry, u"A");
  set(registry, key, 1);
  const std::string before = userText();
  RegistryKey out = nullptr;
  for (const size_t taken : {size_t{0}, size_t{1}, before.size() - 1}) {
    tests::TestDisk disk;
    disk.refuseFrom(0, taken);
    EXPECT_EQ(set(registry, key, 2), platform::registryIoFailed);
    EXPECT_EQ(get(registry, key), 1) << "it is not set";
    EXPECT_EQ(registry.createKey(rootOf(registry), u"B", platform::registryRead, out),
              platform::registryIoFailed);
    EXPECT_EQ(registry.removeTree(rootOf(registry), u"A"), platform::registryIoFailed);
  }
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(userText(), before);
  EXPECT_EQ(filesBeside(), 1u) << "no temporary file stays";
  EXPECT_EQ(set(registry, key, 2), 0);
  EXPECT_EQ(get(registry, key), 2);
}

TEST_F(FileRegistryTest, DiskThatFillsAtAnyWriteKeepsAllThatWasSetBefore) {
  constexpr size_t writes = 12;  // the key and the values
  for (size_t refused = 0; refused < writes; ++refused) {
    std::filesystem::remove_all(folder.file("config"));
    FileRegistry fresh(files());
    size_t stored = 0;
    {
      tests::TestDisk disk;
      disk.refuseFrom(refused, refused);
      RegistryKey key = nullptr;
      if (fresh.createKey(rootOf(fresh), u"A", platform::registryFullAccess, key) == 0) {
        while (stored < writes && set(fresh, key, static_cast<std::uint32_t>(stored)) == 0) {
          ++stored;
        }
      }
    }
    if (refused == 0) {
      EXPECT_FALSE(std::filesystem::exists(folder.file("config/sub/user.txt")));
      continue;
    }
    EXPECT_EQ(stored, refused - 1);
    FileRegistry next(files());
    const RegistryKey key = made(next, u"A");
    EXPECT_EQ(get(next, key),
              stored == 0 ? -platform::registryNotFound : static_cast<std::int64_t>(stored) - 1);
  }
}

TEST_F(FileRegistryTest, WithoutAFolderNothingIsKept) {
  FileRegistry nowhere([](RegistryRoot) { return std::u16string(); });
  RegistryKey key = nullptr;
  EXPECT_EQ(nowhere.openKey(rootOf(nowhere), u"A", platform::registryRead, key),
            platform::registryNotFound);
  EXPECT_EQ(nowhere.createKey(rootOf(nowhere), u"A", platform::registryRead, key),
            platform::registryIoFailed);
}

TEST_F(FileRegistryTest, PlaceThatIsNoFileFails) {
  std::filesystem::create_directories(folder.file("config/sub/user.txt"));
  RegistryKey key = nullptr;
  EXPECT_EQ(registry.openKey(rootOf(registry), u"A", platform::registryRead, key),
            platform::registryIoFailed);
  EXPECT_EQ(registry.createKey(rootOf(registry), u"A", platform::registryRead, key),
            platform::registryIoFailed);
  EXPECT_TRUE(std::filesystem::is_directory(folder.file("config/sub/user.txt")));
}

TEST_F(FileRegistryTest, ValueThatWouldMakeTheFileTooLargeIsRefused) {
  const RegistryKey key = made(registry, u"A");
  set(registry, key, 1);
  const std::string large(platform::largestRegistryText / 3, 'x');
  EXPECT_EQ(
      registry.setValue(key, u"large", 0, large.data(), static_cast<std::uint32_t>(large.size())),
      platform::registryIoFailed);
  EXPECT_EQ(get(registry, key), 1);
  const std::u16string name(platform::longestRegistryValueName + 1, u'n');
  EXPECT_EQ(registry.setValue(key, name, 0, "", 0), platform::registryBadParameter);
  putUser(std::string(platform::largestRegistryText + 1, '\n'));
  EXPECT_EQ(get(registry, key), -platform::registryDamaged);
}

TEST_F(FileRegistryTest, NamesAndDepthHaveLimits) {
  RegistryKey key = nullptr;
  std::u16string path;
  for (int i = 0; i < 512; ++i) path += u"a\\";
  ASSERT_EQ(registry.createKey(rootOf(registry), path, platform::registryFullAccess, key), 0);
  RegistryKey deeper = nullptr;
  EXPECT_EQ(registry.createKey(key, u"a", platform::registryFullAccess, deeper),
            platform::registryBadParameter);
  EXPECT_EQ(set(registry, key, 5), 0);
  EXPECT_EQ(get(registry, key), 5);
  const std::u16string tooLong(256, u'n');
  EXPECT_EQ(registry.createKey(rootOf(registry), tooLong, platform::registryRead, deeper),
            platform::registryBadParameter);
  EXPECT_EQ(registry.openKey(rootOf(registry), tooLong, platform::registryRead, deeper),
            platform::registryBadParameter);
  EXPECT_EQ(registry.removeTree(rootOf(registry), tooLong), platform::registryBadParameter);
}

TEST_F(FileRegistryTest, ForeignAndClosedKeysAreRefused) {
  int object = 0;
  RegistryKey key = made(registry, u"A");
  EXPECT_EQ(registry.closeKey(key), 0);
  EXPECT_EQ(registry.closeKey(rootOf(registry)), 0) << "a root stays open";
  RegistryKey out = nullptr;
  for (const RegistryKey bad : {RegistryKey(nullptr), RegistryKey(&object), key}) {
    EXPECT_EQ(registry.openKey(bad, u"x", platform::registryRead, out), platform::registryBadKey);
    EXPECT_EQ(registry.createKey(bad, u"x", platform::registryRead, out), platform::registryBadKey);
    EXPECT_EQ(registry.setValue(bad, u"x", 4, &object, 4), platform::registryBadKey);
    EXPECT_EQ(registry.queryValue(bad, u"x", nullptr, nullptr, nullptr), platform::registryBadKey);
    EXPECT_EQ(registry.removeTree(bad, u"x"), platform::registryBadKey);
    EXPECT_EQ(registry.closeKey(bad), platform::registryBadKey);
  }
  EXPECT_EQ(registry.openKey(rootOf(registry), u"a", platform::registryRead, out), 0)
      << "left to the registry's end";
}

// Each thread has a registry of its own, as each process would. A change may be lost to another
// one, with its key, and a system that does not rename over a file that someone reads tells that.
TEST_F(FileRegistryTest, WritersAtTheSameTimeNeverTearTheFile) {
  constexpr std::uint32_t changes = 40;
  made(registry, u"shared");
  std::atomic<int> damaged = 0;
  std::atomic<int> done = 0;
  const auto work = [&] {
    FileRegistry own(files());
    RegistryKey key = nullptr;
    for (std::uint32_t i = 0; i < changes; ++i) {
      if (key == nullptr) {
        damaged += own.createKey(rootOf(own), u"shared", platform::registryFullAccess, key) ==
                   platform::registryDamaged;
      }
      const std::int32_t status = set(own, key, i);
      damaged += status == platform::registryDamaged;
      done += status == platform::registryOk;
      damaged += get(own, key) == -platform::registryDamaged;
    }
  };
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) threads.emplace_back(work);
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(damaged, 0);
  EXPECT_GT(done, 0);
  EXPECT_TRUE(platform::parseRegistryText(userText()));
  EXPECT_FALSE(std::filesystem::exists(folder.file("config/sub/user.txt.damaged")));
  EXPECT_EQ(filesBeside(), 1u) << "no temporary file stays";
}

TEST_F(FileRegistryTest, TemporaryFileOfACrashIsNoConcern) {
  const RegistryKey key = made(registry, u"A");
  folder.write("config/sub/~oro-0-0-0.tmp", "cowl-regis");
  EXPECT_EQ(set(registry, key, 1), 0);
  EXPECT_EQ(get(registry, key), 1);
}

}  // namespace
