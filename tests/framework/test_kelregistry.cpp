#include "framework/kelregistry.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "framework/subiter.h"
#include "interfaces/IOroRegIter.h"
#include "orobasictypes/iptr.h"
#include "tests/support/slotnumber.h"

namespace {

class Registry : public testing::Test {
 protected:
  int32_t set(const char* key, const char* value) {
    KelCString text(key);
    const int32_t result = registry_.setValue(text, KelCString(value));
    EXPECT_STREQ(text.text(), key);
    return result;
  }
  int32_t remove(const char* key) {
    KelCString text(key);
    const int32_t result = registry_.removeKey(text);
    EXPECT_STREQ(text.text(), key);
    return result;
  }
  // "(absent)" for a node that is not there.
  std::string get(const char* key) {
    KelCString text(key);
    const KelCString* const value = registry_.getValue(text);
    EXPECT_STREQ(text.text(), key);
    return value != nullptr ? value->c_str() : "(absent)";
  }
  std::string get2(const char* section, const char* key) {
    KelCString sectionText(section);
    KelCString keyText(key);
    const KelCString* const value = registry_.getValue2(sectionText, keyText);
    return value != nullptr ? value->c_str() : "(absent)";
  }
  int32_t getInt(const char* key, int32_t fallback) {
    KelCString text(key);
    return registry_.getInt(text, fallback);
  }
  bool equals(const char* key, const char* value) {
    KelCString text(key);
    return registry_.valueEquals(text, value);
  }
  // The entries below a key as "key=value;".
  std::string entries(const char* key) {
    KelCString text(key);
    const IPtr<Velmora::IOroRegIter> entry(registry_.newIterator(text));
    std::string all;
    if (!entry) return "(absent)";
    for (entry->first(); !entry->atEnd(); entry->next()) {
      KelCString name;
      KelCString value;
      entry->key(name);
      entry->value(value);
      all += std::string(name.c_str()) + "=" + value.c_str() + ";";
    }
    return all;
  }
  std::string dump() {
    std::ostringstream stream;
    registry_.dump(stream, 0);
    return stream.str();
  }

  KelRegistry registry_;
};

TEST_F(Registry, SettingMakesAllNodesOnTheWay) {
  EXPECT_EQ(set("A/B/C", "x"), 1);
  EXPECT_EQ(get("A"), "");
  EXPECT_EQ(get("A/B"), "");
  EXPECT_EQ(get("A/B/C"), "x");
}

TEST_F(Registry, AbsentNodesGiveNullAndFallback) {
  set("A/B", "x");
  EXPECT_EQ(get("A/Z"), "(absent)");
  EXPECT_EQ(get("Z"), "(absent)");
  EXPECT_EQ(get("A/B/C"), "(absent)");
  EXPECT_EQ(getInt("A/Z", 7), 7);
  EXPECT_EQ(getInt("A", 7), 0);  // the node is there, its value is empty
}

TEST_F(Registry, EmptyKeyIsTheNodeItself) {
  EXPECT_EQ(get(""), "");
  EXPECT_EQ(set("", "own"), 1);
  EXPECT_EQ(get(""), "own");
  KelCString null;
  EXPECT_EQ(registry_.setValue(null, KelCString("other")), 1);
  EXPECT_STREQ(registry_.getValue(null)->c_str(), "other");
}

TEST_F(Registry, SettingAgainReplacesTheValueInItsPlace) {
  set("S/a", "1");
  set("S/b", "2");
  set("S/a", "3");
  EXPECT_EQ(entries("S"), "a=3;b=2;");
}

TEST_F(Registry, RemovedChildIsSkippedAndComesBackLast) {
  set("S/a", "1");
  set("S/b", "2");
  set("S/c", "3");
  EXPECT_EQ(remove("S/b"), 1);
  EXPECT_EQ(get("S/b"), "(absent)");
  EXPECT_EQ(entries("S"), "a=1;c=3;");
  set("S/b", "4");
  EXPECT_EQ(entries("S"), "a=1;c=3;b=4;");
}

TEST_F(Registry, RemovalTakesTheSubtree) {
  set("A/B/C", "x");
  set("A/B/D", "y");
  EXPECT_EQ(remove("A/B"), 1);
  EXPECT_EQ(get("A/B"), "(absent)");
  EXPECT_EQ(get("A/B/C"), "(absent)");
  EXPECT_EQ(get("A"), "");
}

TEST_F(Registry, RemovalOfWhatIsNotThereIsNothing) {
  EXPECT_EQ(remove("A"), 0);  // no child was ever made
  EXPECT_EQ(remove(""), 0);
  set("A/B", "x");
  EXPECT_EQ(remove("Z"), 0);
  EXPECT_EQ(remove("A/Z"), 0);
  EXPECT_EQ(remove("A/B/C"), 0);
  EXPECT_EQ(remove("A/B/C/D"), 0);
  EXPECT_EQ(remove(""), 0);
  EXPECT_EQ(get("A/B"), "x");
}

TEST_F(Registry, OnlySlashesDivideAndEmptySegmentsAreChildren) {
  set("A/B", "plain");
  set("/B", "front");
  set("A//B", "middle");
  EXPECT_EQ(get("A/B"), "plain");
  EXPECT_EQ(get("/B"), "front");
  EXPECT_EQ(get("A//B"), "middle");
  set("A/", "a");
  EXPECT_EQ(get("A"), "a");
  set("A\\B", "other");
  EXPECT_EQ(get("A\\B"), "other");
  EXPECT_EQ(get("A/B"), "plain");
}

TEST_F(Registry, RemovalReachesAChildWithAnEmptyKey) {
  set("/B", "x");
  EXPECT_EQ(remove(""), 1);
  EXPECT_EQ(get("/B"), "(absent)");
  EXPECT_EQ(remove(""), 0);
}

TEST_F(Registry, SectionAndKeyAreJoined) {
  set("A", "a");
  set("A/B", "b");
  set("", "own");
  EXPECT_EQ(get2("A", "B"), "b");
  EXPECT_EQ(get2("A", ""), get("A"));
  EXPECT_EQ(get2("", "A"), "a");
  EXPECT_EQ(get2("", ""), "own");
  EXPECT_EQ(get2("A/", "B"), "(absent)");  // an empty segment between
  set("A//B", "c");
  EXPECT_EQ(get2("A/", "B"), "c");
}

TEST_F(Registry, ValueIsComparedExactly) {
  set("A", "Text");
  EXPECT_TRUE(equals("A", "Text"));
  EXPECT_FALSE(equals("A", "text"));
  EXPECT_FALSE(equals("A", "Tex"));
  EXPECT_FALSE(equals("A", ""));
  EXPECT_FALSE(equals("Z", "Text"));
  EXPECT_FALSE(equals("Z", ""));
}

TEST_F(Registry, NodeWithoutAValueEqualsTheEmptyText) {
  set("A/B", "x");
  EXPECT_TRUE(equals("A", ""));
  set("E", "");
  EXPECT_TRUE(equals("E", ""));
  EXPECT_FALSE(equals("E", "x"));
}

TEST_F(Registry, IntegersAreDecimalTextAtTheFront) {
  for (const auto& [text, number] : {std::pair{"42", 42},
                                     {"-7", -7},
                                     {" 12abc", 12},
                                     {"0x10", 0},
                                     {"010", 10},
                                     {"abc", 0},
                                     {"", 0}}) {
    set("N", text);
    EXPECT_EQ(getInt("N", 99), number) << text;
  }
}

TEST_F(Registry, ValueStaysWhereItIsWhileOthersComeAndGo) {
  set("A", "x");
  KelCString key("A");
  const KelCString* const value = registry_.getValue(key);
  for (int i = 0; i < 200; ++i) set(std::to_string(i).c_str(), "v");
  EXPECT_EQ(registry_.getValue(key), value);
  EXPECT_STREQ(value->c_str(), "x");
}

TEST_F(Registry, ValueIsACopy) {
  KelCString key("A");
  std::string text = "value";
  registry_.setValue(key, KelCString(text.c_str()));
  text = "other";
  EXPECT_EQ(get("A"), "value");
}

TEST_F(Registry, KeyOfAnyDepthIsSetFoundAndRemoved) {
  constexpr int depth = 50000;
  std::string key;
  for (int i = 0; i < depth; ++i) key += "a/";
  key += "z";
  EXPECT_EQ(set(key.c_str(), "deep"), 1);
  EXPECT_EQ(get(key.c_str()), "deep");
  EXPECT_EQ(remove("a"), 1);
  EXPECT_EQ(get(key.c_str()), "(absent)");
  set(key.c_str(), "again");  // and goes with the tree
}

TEST_F(Registry, IteratorOfAnAbsentNodeIsNull) {
  set("A/B", "x");
  EXPECT_EQ(entries("Z"), "(absent)");
  EXPECT_EQ(entries("A/Z"), "(absent)");
}

TEST_F(Registry, IteratorOfALeafIsAtItsEnd) {
  set("A", "x");
  EXPECT_EQ(entries("A"), "");
  KelRegistry empty;
  KelCString key;
  const IPtr<Velmora::IOroRegIter> entry(empty.newIterator(key));
  ASSERT_TRUE(entry);
  EXPECT_TRUE(entry->atEnd());
}

TEST_F(Registry, IteratorIsUncountedUntilSomeoneTakesIt) {
  KelCString key;
  Velmora::IOroRegIter* const entry = registry_.newIterator(key);
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->refCount(), 0);
  const IPtr<Velmora::IOroRegIter> holder(entry);
  EXPECT_EQ(entry->refCount(), 1);
}

TEST_F(Registry, WalkOfASegmentTakesTheFirstAlone) {
  set("A/B/C", "x");
  set("A/D", "y");
  KelCString path("A/B");
  const std::unique_ptr<SubIter> walk(registry_.subIter(path));
  ASSERT_TRUE(walk);
  EXPECT_TRUE(walk->key() == "B");
  walk->next();
  EXPECT_TRUE(walk->key() == "D");
  EXPECT_STREQ(path.text(), "A/B");
}

TEST_F(Registry, WalkOfAnEmptySegmentIsNullAndOfAnAbsentOneAtItsEnd) {
  set("A/B", "x");
  KelCString empty("");
  EXPECT_EQ(registry_.subIter(empty), nullptr);
  KelCString front("/A");
  EXPECT_EQ(registry_.subIter(front), nullptr);
  KelCString absent("Z/A");
  const std::unique_ptr<SubIter> walk(registry_.subIter(absent));
  ASSERT_TRUE(walk);
  EXPECT_TRUE(walk->atEnd());
}

TEST_F(Registry, DumpShowsDirectoriesLeavesAndOwnValues) {
  set("A/B", "x");
  set("A/C/D", "y");
  set("E", "z");
  EXPECT_EQ(dump(), "[A]\n    B = 'x'\n    [C]\n        D = 'y'\nE = 'z'\n");
}

TEST_F(Registry, DumpPutsANodesOwnValueBehindItsChildren) {
  set("A", "own");
  set("A/B", "x");
  set("", "root");
  EXPECT_EQ(dump(), "[A]\n    B = 'x'\n = 'own'\n = 'root'\n");
}

TEST_F(Registry, DumpEndsNoLineBehindALeafWithoutAValue) {
  set("A", "");
  set("B", "x");
  EXPECT_EQ(dump(), "AB = 'x'\n");
}

TEST_F(Registry, DumpLeavesOutWhatWasMadeLastAfterARemoval) {
  set("A", "1");
  set("B", "2");
  set("C", "3");
  remove("A");
  EXPECT_EQ(dump(), "B = '2'\n");
}

TEST_F(Registry, DumpLeavesOutChildrenWithAnEmptyKeyAndAllBelow) {
  set("/B", "hidden");
  set("A", "1");
  EXPECT_EQ(dump(), "A = '1'\n");
}

TEST_F(Registry, AnswersToItsNamesAlone) {
  void* found = nullptr;
  registry_.queryInterface("KelRegistry", &found);
  EXPECT_EQ(found, &registry_);
  registry_.queryInterface("IOroUnknown", &found);
  EXPECT_EQ(found, static_cast<IOroUnknown*>(&registry_));
  registry_.queryInterface("IOroRegistry", &found);
  EXPECT_EQ(found, static_cast<Velmora::IOroRegistry*>(&registry_));
  registry_.queryInterface("Velmora::IOroRegistry", &found);
  EXPECT_EQ(found, nullptr);
  EXPECT_STREQ(registry_.getClassName(), "KelRegistry");
}

TEST(RegistrySlots, StandInTheirOrder) {
  using Velmora::IOroRegistry;
  EXPECT_EQ(tests::slotNumber(&IOroRegistry::setValue), 1);
  EXPECT_EQ(tests::slotNumber(&IOroRegistry::removeKey), 2);
  EXPECT_EQ(tests::slotNumber(&IOroRegistry::getValue2), 3);
  EXPECT_EQ(tests::slotNumber(&IOroRegistry::getValue), 4);
  EXPECT_EQ(tests::slotNumber(&IOroRegistry::valueEquals), 5);
  EXPECT_EQ(tests::slotNumber(&IOroRegistry::getInt), 6);
  EXPECT_EQ(tests::slotNumber(&IOroRegistry::newIterator), 7);
}

}  // namespace
