// A disk that is full from some write on: sessions with sets, merges and commits.

#include "tests/base/settings/librarysettings.h"
#include "tests/support/testdisk.h"

namespace {

constexpr const char* kNames[] = {"a", "b", "c", "d", "e"};

class FullDisk : public tests::LibrarySettings {
 protected:
  // Each value is set after the one before was acknowledged by the journal or not.
  struct Set {
    std::string name;
    int value;
    bool journalled;  // its line was written whole
  };

  void set(Session& session, const tests::TestDisk& disk, const char* name, int value,
           size_t refused) {
    const size_t before = disk.writes.size();
    session.set(name, value);
    EXPECT_EQ(disk.writes.size(), before + 1) << "a set is one write";
    sets.push_back({name, value, before < refused});
  }

  // Sets, a merge by a reader, sets, a commit and sets, on a disk that refuses from that write on.
  // Returns how many writes there were.
  size_t run(size_t refused, size_t taken) {
    tests::TestDisk disk;
    disk.refuseFrom(refused, taken);
    forget();
    Session session;
    int value = 10;
    for (const char* name : kNames) set(session, disk, name, ++value, refused);
    session.store.SetReader(session.store.CreateDefaultReader());
    session.load();
    for (const char* name : kNames) set(session, disk, name, ++value, refused);
    session.commit();
    for (const char* name : kNames) set(session, disk, name, ++value, refused);
    return disk.writes.size();
  }

  // Whether the journal that was moved aside tells it.
  bool isInRejected(const Set& wanted) const {
    return read(kRejected).find(valueLine(wanted.name, wanted.value)) != std::string::npos;
  }

  std::vector<Set> sets;
};

// The last value that the journal took is there after the next start, or in the journal that could
// not be merged and was moved aside.
TEST_F(FullDisk, KeepsWhatTheJournalTookWhereverItEnds) {
  const std::string start = document(valueLine("old", 7));
  for (const size_t taken : {size_t{0}, size_t{1}, size_t{20}}) {
    size_t refused = 0;
    for (bool all = false; !all; ++refused) {
      for (const char* name : {kJournal, kRejected}) std::filesystem::remove(file(name));
      write(kDocument, start);
      sets.clear();
      all = run(refused, taken) <= refused;
      forget();
      Session after;
      after.store.CreateInt("old", 0, 0, 9, kSaved);
      after.load();
      EXPECT_EQ(after.get("old"), 7) << "full at write " << refused;
      for (const char* name : kNames) {
        const Set* last = nullptr;
        for (const Set& set : sets) {
          if (set.name == name && set.journalled) last = &set;
        }
        if (last == nullptr) continue;
        EXPECT_TRUE(after.get(name) >= last->value || isInRejected(*last))
            << name << " of " << last->value << ", full at write " << refused << " of which "
            << taken << " bytes went";
      }
    }
    EXPECT_GT(refused, 16u);
  }
}

TEST_F(FullDisk, LeavesNoTemporaryFiles) {
  write(kDocument, document(valueLine("old", 7)));
  for (size_t refused = 0; refused < 20; ++refused) run(refused, 3);
  for (const auto& entry : std::filesystem::directory_iterator(file("user"))) {
    EXPECT_TRUE(entry.path().filename().string().starts_with("velmora.iniml")) << entry.path();
  }
}

}  // namespace
