// A program that is killed at any point of its sets, merges and commits, and started again: what it
// said to be set is there.

#include <random>
#include <sstream>

#include "tests/base/settings/killedprogram.h"
#include "tests/base/settings/librarysettings.h"

namespace {

using testing::IsEmpty;

// Starting a program is slow where the system is emulated.
constexpr int kKills = COWL_SETTINGS_KILLS;
constexpr int kLongestMicroseconds = 12000;

class KilledSettings : public tests::LibrarySettings {
 protected:
  KilledSettings() {
    write("settings", document(valueLine("old", 7)));
    const std::string path = file("settings").generic_string();
    addArgument("-inifile=" + path);
    addArgument("-ini_out=" + path);
  }

  // The numbers that the program said to be set, in their order; a cut one does not count.
  static std::vector<int> numbersIn(const std::string& said) {
    std::vector<int> numbers;
    std::istringstream lines(said);
    for (std::string line; std::getline(lines, line) && !lines.eof();) {
      numbers.push_back(std::stoi(line));
    }
    return numbers;
  }

  // Reads as the next start does, and compares. `last` is the last number that was acknowledged;
  // the one behind it may have been written or not.
  void expectAllUpTo(int last) {
    KelDataStore store(true, 5, 20);
    store.CreateDirectory("S");
    store.CreateBlob("S/blob", 0, nullptr, kSaved);
    store.CreateInt("old", 0, 0, 9, kSaved);
    for (int i = 0; i < 10; ++i) {
      store.CreateInt(nameOf(i).c_str(), 0, 0, INT32_MAX, kSaved);
    }
    store.Accept(store.GetReader());
    EXPECT_EQ(store.GetInt("old", nullptr), 7);
    for (int i = 0; i < 10; ++i) expectInt(store, i, last);
    expectBlob(store, last);
  }
  static std::string nameOf(int i) { return "i" + std::to_string(i); }
  static void expectInt(KelDataStore& store, int i, int last) {
    const int acknowledged = last - (last - i + 10) % 10;  // the last number that ends in i
    const int value = store.GetInt(nameOf(i).c_str(), nullptr);
    const bool ahead = value == last + 1 && (last + 1) % 10 == i;
    EXPECT_TRUE(value == std::max(acknowledged, 0) || ahead)
        << nameOf(i) << " is " << value << " after " << last;
  }
  static void expectBlob(KelDataStore& store, int last) {
    int32_t size = 0;
    const auto* const data =
        static_cast<const unsigned char*>(store.GetBlob("S/blob", size, nullptr));
    const int acknowledged = last / 8 * 8;
    const int ahead = last + 1;
    const int number = ahead % 8 == 0 && size == ahead % 20000 ? ahead : acknowledged;
    EXPECT_EQ(size, number % 20000) << "after " << last;
    for (int32_t i = 0; i < size; ++i) {
      ASSERT_EQ(data[i], static_cast<unsigned char>(number)) << "byte " << i << " after " << last;
    }
  }

  // Temporary files of saves that were cut off; there is nobody else to remove them.
  size_t removeTemporaryFiles() {
    size_t removed = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
      if (entry.path().extension() == ".tmp") removed += std::filesystem::remove(entry.path());
    }
    return removed;
  }
};

TEST_F(KilledSettings, KeepWhatWasSet) {
  std::mt19937 random(20);
  int last = 0;
  int kills = 0;
  size_t cutSaves = 0;
  for (int run = 0; kills < kKills && run < 2 * kKills; ++run) {
    const int delay = static_cast<int>(random() % kLongestMicroseconds);
    const std::string said = tests::runAndKill(
        COWL_SETTINGS_SESSION, {folder.path().string(), std::to_string(last + 1)}, delay);
    const std::vector<int> numbers = numbersIn(said);
    if (!numbers.empty()) {
      ++kills;
      EXPECT_EQ(numbers.front(), last + 1);
      EXPECT_EQ(numbers.back(), last + static_cast<int>(numbers.size()));
      last = numbers.back();
    }
    cutSaves += removeTemporaryFiles();
    forget();
    ASSERT_NO_FATAL_FAILURE(expectAllUpTo(last));
  }
  EXPECT_EQ(kills, kKills);
  EXPECT_FALSE(exists("settings.changes.rejected"));
  EXPECT_FALSE(exists("settings.damaged"));
  EXPECT_THAT(errors->texts, IsEmpty());
  RecordProperty("sets", last);
  RecordProperty("cut saves", static_cast<int>(cutSaves));
}

}  // namespace
