#include "services/translationtable.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::u16string at(const TranslationTable& table, const char* key) {
  const OroString* const text = table.find(key);
  return text != nullptr ? text->wideText() : u"(none)";
}

TEST(TranslationTableTest, AKeyFindsItsText) {
  TranslationTable table;
  EXPECT_EQ(at(table, "Open"), u"(none)");
  table.store(OroString("Open"), OroString(u"\u00D6ffnen"));
  EXPECT_EQ(at(table, "Open"), u"\u00D6ffnen");
  EXPECT_EQ(at(table, "open"), u"(none)");
  EXPECT_EQ(at(table, ""), u"(none)");
  EXPECT_EQ(at(table, nullptr), u"(none)");
}

TEST(TranslationTableTest, TheLastTextOfAKeyStands) {
  TranslationTable table;
  table.store(OroString("Open"), OroString("first"));
  table.store(OroString("Open"), OroString("second"));
  EXPECT_EQ(at(table, "Open"), u"second");
  EXPECT_EQ(table.count(), 1u);
}

TEST(TranslationTableTest, SourcesAreKeptInTheirNarrowForm) {
  TranslationTable table;
  table.store(OroString(u"Caf\u00E9"), OroString("text"));
  EXPECT_EQ(at(table, "Caf"), u"text");
}

TEST(TranslationTableTest, ATextIsOwnedSoThatItsPlaceholdersAreFilled) {
  TranslationTable table;
  table.store(OroString("Read %1"), OroString(u"%1 lesen", nullptr));
  OroString copy(*table.find("Read %1"));
  const OroString name("a.xyz");
  const OroString* const arguments[10] = {&name};
  copy.substitute(arguments);
  EXPECT_EQ(std::u16string(copy.wideText()), u"a.xyz lesen");
}

TEST(TranslationTableTest, ManyTextsAreFound) {
  TranslationTable table;
  for (int i = 0; i < 5000; ++i) table.store(OroString(i), OroString(-i));
  EXPECT_EQ(table.count(), 5000u);
  for (int i = 1; i < 5000; ++i) {
    ASSERT_EQ(at(table, std::to_string(i).c_str()), OroString(-i).wideText());
  }
}

}  // namespace
