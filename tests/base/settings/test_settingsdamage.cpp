// Documents and journals that a disk, a crash or a person has damaged.

#include <map>

#include "tests/base/settings/librarysettings.h"

namespace {

using testing::IsEmpty;

class DamagedSettings : public tests::LibrarySettings {
 protected:
  // A journal with entries of every form, and where each ends.
  struct Entry {
    const char* name;
    int value;
    std::string line;
  };
  static std::vector<Entry> entries() {
    const std::string blob(64, 'A');
    return {
        {"a", 2, valueLine("a", 2)},
        {"w", 0,
         "<section name=\"S\"><value name=\"w\" type=\"text_unicode\">caf\xC3\xA9\n"
         "&lt;/value&gt;\n</value></section>\n"},
        {"b", 3, valueLine("b", 3)},
        {"x", 0,
         "<section name=\"S\"><section name=\"T\"><value name=\"x\" "
         "type=\"binary_base64\">\n\t\t\t\t" +
             blob +
             "\n\t\t\t\tAA==\n\t\t\t</value>"
             "</section></section>\n"},
        {"a", 4, valueLine("a", 4)},
    };
  }
  // Flips each bit of the file in turn.
  template <class Check>
  void flipBits(const char* name, const std::string& good, const Check& check) {
    for (size_t at = 0; at < good.size(); ++at) {
      for (int bit = 0; bit < 8; ++bit) {
        std::string bytes = good;
        bytes[at] = static_cast<char>(bytes[at] ^ (1 << bit));
        write(name, bytes);
        check();
      }
    }
  }
};

TEST_F(DamagedSettings, KeepEveryWholeEntryOfAJournalThatIsCutAnywhere) {
  std::string journal;
  std::map<size_t, std::map<std::string, int>> states{{0, {{"a", 1}, {"b", 1}}}};
  std::map<std::string, int> values = states[0];
  for (const Entry& entry : entries()) {
    journal += entry.line;
    values[entry.name] = entry.value;
    states[journal.size() - 1] = values;  // without its line feed it is whole as well
  }
  for (size_t size = 0; size <= journal.size(); ++size) {
    write(kDocument, document(valueLine("a", 1) + valueLine("b", 1)));
    write(kJournal, journal.substr(0, size));
    const auto& expected = std::prev(states.upper_bound(size))->second;
    EXPECT_EQ(next("a"), expected.at("a")) << "cut to " << size;
    EXPECT_EQ(next("b"), expected.at("b")) << "cut to " << size;
    EXPECT_FALSE(exists(kJournal));
  }
  EXPECT_FALSE(exists(kRejected));
  EXPECT_THAT(errors->texts, IsEmpty());
}

TEST_F(DamagedSettings, TakeNothingFromADocumentThatIsCut) {
  const std::string good = document(valueLine("a", 5) +
                                    "<section name=\"S\"><value name=\"w\" "
                                    "type=\"t\">caf\xC3\xA9</value></section>\n");
  for (size_t size = 0; size + 1 < good.size(); ++size) {
    write(kDocument, good.substr(0, size));
    errors->texts.clear();
    EXPECT_EQ(next("a"), 0) << "cut to " << size;
    EXPECT_EQ(errors->texts.size(), 1u) << "cut to " << size;
    EXPECT_EQ(read(kDocument), good.substr(0, size)) << "left as it is";
  }
  write(kDocument, good.substr(0, good.size() - 1));
  EXPECT_EQ(next("a"), 5) << "the last line feed is no part of it";
}

TEST_F(DamagedSettings, OfADocumentWithAFlippedBitAreReadOrReported) {
  const std::string good = document(valueLine("a", 5) +
                                    "<section name=\"S\"><value name=\"b\" "
                                    "type=\"binary_base64\">AA==</value></section>\n");
  int reported = 0;
  flipBits(kDocument, good, [&] {
    errors->texts.clear();
    forget();
    Session session;
    const bool read = session.store.GetReader()->Begin();
    EXPECT_EQ(errors->texts.size(), read ? 0u : 1u);
    reported += read ? 0 : 1;
  });
  EXPECT_GT(reported, 100);
}

TEST_F(DamagedSettings, OfAJournalWithAFlippedBitAreMergedOrMovedAside) {
  std::string good;
  for (const Entry& entry : entries()) good += entry.line;
  int rejected = 0;
  flipBits(kJournal, good, [&] {
    write(kDocument, document(valueLine("d", 5)));
    std::filesystem::remove(file(kRejected));
    EXPECT_EQ(next("d"), 5) << "a name that no flipped bit makes";
    EXPECT_FALSE(exists(kJournal));
    rejected += exists(kRejected) ? 1 : 0;
  });
  EXPECT_GT(rejected, 100);
}

TEST_F(DamagedSettings, OfAHugeNestingAreReadOrReported) {
  std::string opening;
  std::string closing;
  for (int i = 0; i < 100000; ++i) {
    opening += "<section name=\"s\">";
    closing += "</section>";
  }
  write(kDocument, document(valueLine("a", 5) + opening + valueLine("x", 1) + closing));
  EXPECT_EQ(next("a"), 5);
  write(kDocument, document(opening + valueLine("x", 1)));
  EXPECT_EQ(next("a"), 0);
  EXPECT_EQ(errors->texts.size(), 1u);
}

TEST_F(DamagedSettings, WithPathsBeyondAllMeasureAreReported) {
  std::string opening;
  std::string closing;
  for (int i = 0; i < 30000; ++i) {
    opening += "<s name=\"s\"><value name=\"v\"/>";
    closing += "</s>";
  }
  write(kDocument, document(valueLine("a", 5) + opening + closing));
  EXPECT_EQ(next("a"), 0);
  ASSERT_EQ(errors->texts.size(), 1u);
  EXPECT_THAT(errors->texts[0], testing::HasSubstr("could not be read"));
}

}  // namespace
