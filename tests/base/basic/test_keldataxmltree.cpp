#include "base/basic/keldataxmltree.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "base/basic/keldataxmltable.h"
#include "orobasictypes/oropath.h"
#include "tests/platform/textof.h"
#include "tests/support/fakexml.h"
#include "tests/tempfolder.h"

namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

class SettingsTree : public testing::Test {
 protected:
  bool flatten(const std::string& text) {
    const IPtr<IOroDOMXml> document(tests::newFakeXmlDocument());
    EXPECT_TRUE(document->parse(OroString(text.c_str()))) << text;
    return kelFlattenDocument(*document, table);
  }
  std::vector<std::string> contents() const {
    std::vector<std::string> lines;
    for (const auto& entry : table.entries()) {
      lines.push_back(entry.key.c_str() + std::string("|") + entry.value.type.toNarrow() + "|" +
                      entry.value.text.toNarrow());
    }
    return lines;
  }
  void put(const char* path, const char* text = "1") {
    table.put(path, OroString("t"), OroString(text));
  }
  // The document that the table makes, without declaration.
  std::string built() {
    const IPtr<IOroDOMXml> document(tests::newFakeXmlDocument());
    EXPECT_TRUE(kelBuildDocument(table, *document));
    const OroPath path(OroString(tests::textOf(folder.file("built")).c_str()));
    EXPECT_TRUE(document->save(path));
    const std::string text = folder.read("built");
    return text.substr(text.find('\n') + 1);
  }

  tests::TempFolder folder;
  KelDataXMLTable table;
};

TEST_F(SettingsTree, JoinsTheNamesBelowTheRoot) {
  EXPECT_TRUE(
      flatten("<OroDataStore><section name=\"A\"><section name=\"B\">"
              "<value name=\"c\" type=\"integer\">5</value></section>"
              "<value name=\"d\" type=\"x\">text</value></section>"
              "<value name=\"e\" type=\"\"/></OroDataStore>"));
  EXPECT_THAT(contents(), UnorderedElementsAre("A/B/c|integer|5", "A/d|x|text", "e||"));
}

TEST_F(SettingsTree, LooksNeitherAtTheRootsNameNorAtThoseOfSections) {
  EXPECT_TRUE(
      flatten("<any><group name=\"A\"><Value name=\"B\"><value name=\"c\" type=\"t\">5"
              "</value></Value></group></any>"));
  EXPECT_THAT(contents(), ElementsAre("A/B/c|t|5"));
}

TEST_F(SettingsTree, TakesAMissingNameAsAnEmptyOne) {
  EXPECT_TRUE(
      flatten("<r><section><value name=\"a\">1</value></section>"
              "<section name=\"B\"><value>2</value></section><value>3</value></r>"));
  EXPECT_THAT(contents(), UnorderedElementsAre("/a||1", "B/||2", "||3"));
}

TEST_F(SettingsTree, LetsLaterValuesReplaceEarlierOnes) {
  put("a", "old");
  EXPECT_TRUE(
      flatten("<r><value name=\"a\" type=\"t\">1</value>"
              "<value name=\"a\" type=\"u\">2</value></r>"));
  EXPECT_THAT(contents(), ElementsAre("a|u|2"));
}

TEST_F(SettingsTree, DoesNotLookInsideValues) {
  EXPECT_TRUE(flatten("<r><value name=\"a\"><value name=\"b\">1</value></value></r>"));
  EXPECT_THAT(contents(), ElementsAre("a||"));
}

TEST_F(SettingsTree, NeedsARootAlone) {
  EXPECT_TRUE(flatten("<r/>"));
  EXPECT_EQ(table.count(), 0u);
  const IPtr<IOroDOMXml> empty(tests::newFakeXmlDocument());
  EXPECT_FALSE(kelFlattenDocument(*empty, table));
}

TEST_F(SettingsTree, FlattensAnyDepth) {
  std::string text = "<value name=\"x\">1</value>";
  std::string opening;
  std::string closing;
  for (int i = 0; i < 100000; ++i) {
    opening += "<s name=\"s\">";
    closing += "</s>";
  }
  EXPECT_TRUE(flatten("<r>" + opening + text + closing + "</r>"));
  ASSERT_EQ(table.count(), 1u);
  EXPECT_EQ(table.entries().begin()->key.length(), 200001);
}

// Each value would need as many bytes as it lies deep.
TEST_F(SettingsTree, RefusesADocumentWhosePathsOutgrowIt) {
  std::string opening;
  std::string closing;
  for (int i = 0; i < 30000; ++i) {
    opening += "<s name=\"s\"><value name=\"v\"/>";
    closing += "</s>";
  }
  EXPECT_FALSE(flatten("<r>" + opening + closing + "</r>"));
}

TEST_F(SettingsTree, BuildsSectionsInNaturalOrder) {
  for (const char* path : {"B/x", "A/Item 10", "A/Item 9", "z", "A/C/y", "A/C/x"}) put(path);
  EXPECT_EQ(built(),
            "<OroDataStore>\n"
            "\t<section name=\"A\">\n"
            "\t\t<section name=\"C\">\n"
            "\t\t\t<value name=\"x\" type=\"t\">1</value>\n"
            "\t\t\t<value name=\"y\" type=\"t\">1</value>\n"
            "\t\t</section>\n"
            "\t\t<value name=\"Item 9\" type=\"t\">1</value>\n"
            "\t\t<value name=\"Item 10\" type=\"t\">1</value>\n"
            "\t</section>\n"
            "\t<section name=\"B\">\n"
            "\t\t<value name=\"x\" type=\"t\">1</value>\n"
            "\t</section>\n"
            "\t<value name=\"z\" type=\"t\">1</value>\n"
            "</OroDataStore>\n");
}

// Whole paths are compared, so that a value may stand between two parts of one section.
TEST_F(SettingsTree, WritesASectionTwiceWhereTheOrderPartsIt) {
  for (const char* path : {"a/1", "A/2", "a/3"}) put(path);
  std::string text = built();
  KelDataXMLTable again;
  const IPtr<IOroDOMXml> document(tests::newFakeXmlDocument());
  ASSERT_TRUE(document->parse(OroString(text.c_str())));
  ASSERT_TRUE(kelFlattenDocument(*document, again));
  EXPECT_EQ(again.count(), 3u);
  for (const char* path : {"a/1", "A/2", "a/3"}) EXPECT_NE(again.find(path), nullptr) << path;
}

TEST_F(SettingsTree, SortsABlankBeforeTheSlashOfASection) {
  for (const char* path : {"A/x", "A b"}) put(path);
  EXPECT_EQ(built(),
            "<OroDataStore>\n"
            "\t<value name=\"A b\" type=\"t\">1</value>\n"
            "\t<section name=\"A\">\n"
            "\t\t<value name=\"x\" type=\"t\">1</value>\n"
            "\t</section>\n"
            "</OroDataStore>\n");
}

TEST_F(SettingsTree, KeepsEmptySegments) {
  for (const char* path : {"", "/a", "B/", "C//d"}) put(path);
  EXPECT_EQ(built(),
            "<OroDataStore>\n"
            "\t<value name=\"\" type=\"t\">1</value>\n"
            "\t<section name=\"\">\n"
            "\t\t<value name=\"a\" type=\"t\">1</value>\n"
            "\t</section>\n"
            "\t<section name=\"B\">\n"
            "\t\t<value name=\"\" type=\"t\">1</value>\n"
            "\t</section>\n"
            "\t<section name=\"C\">\n"
            "\t\t<section name=\"\">\n"
            "\t\t\t<value name=\"d\" type=\"t\">1</value>\n"
            "\t\t</section>\n"
            "\t</section>\n"
            "</OroDataStore>\n");
}

TEST_F(SettingsTree, BuildsAnEmptyRootOfNothing) { EXPECT_EQ(built(), "<OroDataStore />\n"); }

TEST_F(SettingsTree, KeepsNamesThatAreNoUtf8Apart) {
  put("caf\xE9");
  put("caf\xC3\xA9");
  EXPECT_EQ(built(),
            "<OroDataStore>\n"
            "\t<value name=\"caf\xC3\xA9\" type=\"t\">1</value>\n"
            "\t<value name=\"caf\xEF\xBF\xA9\" type=\"t\">1</value>\n"
            "</OroDataStore>\n");
}

// The test's library writes each unit by itself.
TEST_F(SettingsTree, NamesACharacterBeyondTheBasicPlaneByItsTwoUnits) {
  put("\xF0\x9F\x98\x80");
  EXPECT_EQ(built(),
            "<OroDataStore>\n"
            "\t<value name=\"\xED\xA0\xBD\xED\xB8\x80\" type=\"t\">1</value>\n"
            "</OroDataStore>\n");
}

// Decoded loosely, the first would be called "a" and the second like the third.
TEST_F(SettingsTree, KeepsNamesApartThatAreUtf8InPartAlone) {
  for (const char* path : {"a\x80z", "A\xE9ro", "A\xE9\xB2\xAF", "a"}) put(path);
  const std::string text = built();
  KelDataXMLTable again;
  const IPtr<IOroDOMXml> document(tests::newFakeXmlDocument());
  ASSERT_TRUE(document->parse(OroString::fromUtf8(text.c_str())));
  ASSERT_TRUE(kelFlattenDocument(*document, again));
  EXPECT_EQ(again.count(), 4u) << text;
}

TEST_F(SettingsTree, BuildsAnyDepth) {
  std::string path;
  for (int i = 0; i < 100000; ++i) path += "s/";
  table.put(path + "x", OroString("t"), OroString("1"));
  table.put(path + "y", OroString("t"), OroString("1"));
  const IPtr<IOroDOMXml> document(tests::newFakeXmlDocument());
  ASSERT_TRUE(kelBuildDocument(table, *document));
  KelDataXMLTable again;
  ASSERT_TRUE(kelFlattenDocument(*document, again));
  EXPECT_NE(again.find(path + "x"), nullptr);
  EXPECT_NE(again.find(path + "y"), nullptr);
}

TEST(SettingsTable, KeepsOneValueAPath) {
  KelDataXMLTable table;
  EXPECT_EQ(table.entries().bucketCount(), 131u);
  table.put("A/b", OroString("t"), OroString("1"));
  table.put("A/b", OroString("u"), OroString("2"));
  EXPECT_EQ(table.count(), 1u);
  EXPECT_EQ(table.find("A/b")->text, "2");
  EXPECT_EQ(table.find("A/"), nullptr);
  EXPECT_EQ(table.find("A/bc"), nullptr);
  EXPECT_EQ(table.find(""), nullptr);
}

TEST(SettingsTable, OverlayTakesAllAndWins) {
  KelDataXMLTable table;
  KelDataXMLTable other;
  table.put("a", OroString("t"), OroString("1"));
  table.put("b", OroString("t"), OroString("1"));
  other.put("b", OroString("u"), OroString("2"));
  other.put("c", OroString("u"), OroString("2"));
  table.overlay(other);
  EXPECT_EQ(other.count(), 0u);
  EXPECT_EQ(table.count(), 3u);
  EXPECT_EQ(table.find("a")->text, "1");
  EXPECT_EQ(table.find("b")->text, "2");
  EXPECT_EQ(table.find("b")->type, "u");
}

}  // namespace
