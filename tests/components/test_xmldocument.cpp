// XML documents through the interfaces of the staged library.

#include "components/xmldom/xmldocument.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "components/xmldom/xmltext.h"
#include "orobasictypes/oroweakref.h"
#include "tests/components/xmlworld.h"
#include "tests/support/testdisk.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using tests::errorOf;
using tests::firstChild;
using tests::shown;
using tests::textOf;

using XmlDocuments = tests::XmlWorld;

TEST_F(XmlDocuments, EachRequestGivesANewDocumentAndBothNamesAreKnown) {
  const IPtr<IOroDOMXml> first = newDocument();
  const IPtr<IOroDOMXml> second = newDocument();
  const IPtr<IOroDOMXmlV2> third = SPtr<IOroDOMXmlV2>();
  ASSERT_TRUE(first && second && third) << (errors_.texts.empty() ? "" : errors_.texts[0]);
  EXPECT_NE(first.get(), second.get());
  EXPECT_NE(static_cast<IOroDOMXml*>(third.get()), second.get());
  EXPECT_EQ(first->root(), nullptr);
  EXPECT_EQ(first->lastError(), nullptr);
  EXPECT_TRUE(first->parse(OroString("<a/>")));
  EXPECT_EQ(second->root(), nullptr);
}

TEST_F(XmlDocuments, ElementsAttributesAndTextAreFoundInTheirOrder) {
  const auto document = documentOf(
      "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!-- why --><OroDataStore><?pi x?>"
      "<section name='A'><!-- c --><value name=\"B\" type=\"integer\">5</value>"
      "<value name='C' type='t'/></section><value name='D'>&lt;&amp;&gt;&quot;&apos;</value>"
      "</OroDataStore>\n");
  EXPECT_EQ(shown(*document->root()),
            "OroDataStore[section(name=A)[value(name=B)(type=integer){5}][value(name=C)(type=t)]]"
            "[value(name=D){<&>\"'}]");
}

TEST_F(XmlDocuments, TextIsKeptAsItStands) {
  struct Row {
    const char16_t* content;
    const char16_t* text;
  };
  const Row rows[] = {
      {u"", u""},
      {u" ", u" "},
      {u"\n\t\t\n", u"\n\t\t\n"},
      {u" a ", u" a "},
      {u"a\r\nb\rc\nd", u"a\r\nb\rc\nd"},
      {u"a&#13;&#10;&#x9;b", u"a\r\n\tb"},
      {u"<![CDATA[ <&> ]]>", u" <&> "},
      {u"a<![CDATA[b]]>c", u"abc"},
      {u"a<x>not this</x>b<x/>", u"ab"},
      {u"a<!-- b -->c<?d e?>f", u"acf"},
      {u"&amp;amp; &unknown; & &#;", u"&amp; &unknown; & &#;"},
      {u"Gr\u00fc\u00dfe \u4e2d", u"Gr\u00fc\u00dfe \u4e2d"},
      {u"\U0001F600&#x1F600;", u"\U0001F600\U0001F600"},
      {u"\xD83D-\xDE00", u"\xD83D-\xDE00"},
      {u"\x0001\x001F\xFFFE", u"\x0001\x001F\xFFFE"},
  };
  for (const Row& row : rows) {
    const std::u16string whole = std::u16string(u"<a>") + row.content + u"</a>";
    const auto document = newDocument();
    ASSERT_TRUE(document->parse(OroString(whole.c_str()))) << errorOf(*document);
    EXPECT_EQ(textOf(*document->root()), row.text);
    saved(*document);
    const auto again = newDocument();
    ASSERT_TRUE(again->load(path("saved.xml"))) << errorOf(*again);
    EXPECT_EQ(textOf(*again->root()), row.text);
  }
}

TEST_F(XmlDocuments, AttributesAreUtf8BytesAndWideText) {
  const auto document = documentOf("<a b='Gr\xC3\xBC\xC3\x9F' c='&#x1F600;' d='' e='1\n2\t3'/>");
  IOroDOMXmlElement& root = *document->root();
  EXPECT_STREQ(root.attribute("b"), "Gr\xC3\xBC\xC3\x9F");
  EXPECT_STREQ(root.attribute("c"), "\xF0\x9F\x98\x80");
  EXPECT_STREQ(root.attribute("d"), "");
  EXPECT_STREQ(root.attribute("e"), "1\n2\t3");
  EXPECT_EQ(root.attribute("B"), nullptr);
  EXPECT_EQ(root.attribute(nullptr), nullptr);
  OroString wide("old");
  EXPECT_TRUE(root.wideAttribute("c", wide));
  EXPECT_EQ(std::u16string(wide.wideText()), u"\U0001F600");
  EXPECT_TRUE(root.wideAttribute("d", wide));
  EXPECT_TRUE(wide.isEmpty());
  wide = OroString("old");
  EXPECT_FALSE(root.wideAttribute("x", wide));
  EXPECT_TRUE(wide.isEmpty());
}

TEST_F(XmlDocuments, WhatIsNoDocumentIsRefusedWithLineAndColumn) {
  struct Row {
    const char* text;
    const char* message;
  };
  const Row rows[] = {
      {"", "Line 1, column 1: No root element"},
      {" \n<!-- a -->\n", "Line 3, column 1: No root element"},
      {"<a/><b/>", "Line 1, column 5: A second root element"},
      {"<a>\n</a>\n\n <a/>", "Line 4, column 2: A second root element"},
      {"<a b='&amp;&amp;\n\n'/>\n<a/>", "Line 4, column 1: A second root element"},
      {"<a/>x", "Line 1, column 5: Text outside the root element"},
      {" \n x<a/>", "Line 2, column 2: Text outside the root element"},
      {"<a/>\n<![CDATA[ ]]>", "Line 2, column 1: Text outside the root element"},
      {"<a>\n  </b>", "Line 2, column 5: "},
      {"<a>", "Line 1, column 4: "},
      {"<\xC3\xBC\xC3\xBC b=c/>", "Line 1, column 7: "},
      {"<a b='1' b\n/>", "Line 2, column 2: "},
      {"<a><?xml version='1.0'?></a>", "Line 1, column 9: "},
      {"<", "Line 1, column 2: "},
      {"<a></a", "Line 1, column 7: "},
  };
  for (const Row& row : rows) {
    const auto document = documentOf("<before/>");
    EXPECT_FALSE(document->parse(OroString::fromUtf8(row.text))) << row.text;
    EXPECT_THAT(errorOf(*document), StartsWith(row.message)) << row.text;
    EXPECT_THAT(errorOf(*document), Not(EndsWith(": "))) << row.text;
    EXPECT_EQ(document->root(), nullptr) << row.text;
  }
}

TEST_F(XmlDocuments, AFailureIsForgottenWithTheNextSuccess) {
  const auto document = newDocument();
  EXPECT_FALSE(document->parse(OroString("<a>")));
  EXPECT_NE(document->lastError(), nullptr);
  EXPECT_TRUE(document->parse(OroString("<a/>")));
  EXPECT_EQ(document->lastError(), nullptr);
}

TEST_F(XmlDocuments, NoEntityIsFollowed) {
  folder_.write("secret.txt", "secret");
  const std::string secret = folder_.file("secret.txt").generic_string();
  const auto document = documentOf("<!DOCTYPE a [ <!ENTITY e SYSTEM \"file://" + secret + "\">\n" +
                                   "<!ENTITY f \"ff\"> ]><a b='&e;'>&e;&f;</a>");
  EXPECT_EQ(textOf(*document->root()), u"&e;&f;");
  EXPECT_STREQ(document->root()->attribute("b"), "&e;");
}

TEST_F(XmlDocuments, FilesAreUtf8OrUtf16WithAMark) {
  using std::string_literals::operator""s;
  const std::string little = "\xFF\xFE<\0a\0>\0\xE9\0\x3D\xD8\0\xDE<\0/\0a\0>\0"s;
  std::string big = little;
  for (size_t i = 0; i < big.size(); i += 2) std::swap(big[i], big[i + 1]);
  for (const std::string& bytes : {"<a>\xC3\xA9\xF0\x9F\x98\x80</a>"s,
                                   "\xEF\xBB\xBF<a>\xC3\xA9\xF0\x9F\x98\x80</a>"s, little, big}) {
    folder_.write("in.xml", bytes);
    const auto document = newDocument();
    ASSERT_TRUE(document->load(path("in.xml"))) << errorOf(*document);
    EXPECT_EQ(textOf(*document->root()), u"\u00e9\U0001F600");
  }
}

TEST_F(XmlDocuments, BytesThatAreNoUtf8AreWidenedWithTheirSign) {
  folder_.write("in.xml",
                "<a b='\xE9'>\xE9-\xC3-\xE4\xB8-\xC0\x80-\xF5\x80\x80\x80\xF0\x9F\x98</a>");
  const auto document = newDocument();
  ASSERT_TRUE(document->load(path("in.xml")));
  EXPECT_STREQ(document->root()->attribute("b"), "\xE9");
  EXPECT_EQ(textOf(*document->root()),
            u"\xFFE9-\xFFC3-\xFFE4\xFFB8-\xFFC0\xFF80-\xFFF5\xFF80\xFF80\xFF80\xFFF0\xFF9F\xFF98");
}

TEST_F(XmlDocuments, AFileThatCannotBeReadIsNamed) {
  using std::string_literals::operator""s;
  const auto document = newDocument();
  EXPECT_FALSE(document->load(path("absent.xml")));
  EXPECT_THAT(errorOf(*document), StartsWith("Cannot open the file "));
  EXPECT_THAT(errorOf(*document), EndsWith("absent.xml"));
  EXPECT_FALSE(document->load(OroPath()));
  std::filesystem::create_directory(folder_.file("folder.xml"));
  EXPECT_FALSE(document->load(path("folder.xml")));
  folder_.write("in.xml", "<a>\n<b>\n</a>\n");
  EXPECT_FALSE(document->load(path("in.xml")));
  EXPECT_THAT(errorOf(*document),
              HasSubstr("in.xml, line 3, column 3: An element whose tags do not match"));
  folder_.write("in.xml", "<a>\n  x\0y</a>"s);
  EXPECT_FALSE(document->load(path("in.xml")));
  EXPECT_THAT(errorOf(*document), HasSubstr("in.xml, line 2, column 4: A character that is not"));
  folder_.write("in.xml", "<a/>\n\0<b/>"s);
  EXPECT_FALSE(document->load(path("in.xml")));
  folder_.write("in.xml", "\xFF\xFE<\0a\0/\0>"s);
  EXPECT_FALSE(document->load(path("in.xml")));
  for (const char* const bytes : {"", "\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF", "\xFF\xFEx"}) {
    folder_.write("in.xml", bytes);
    EXPECT_FALSE(document->load(path("in.xml"))) << testing::PrintToString(bytes);
    EXPECT_THAT(errorOf(*document), HasSubstr("in.xml, line 1, column 1"));
  }
  EXPECT_EQ(document->root(), nullptr);
}

TEST_F(XmlDocuments, DocumentsAreSavedByteForByteAlikeOnAllSystems) {
  const auto document = documentOf(
      "<OroDataStore><section name='A &amp; \"B\"'><value name='x' type='text_unicode'> a\r\n\tb "
      "&lt;&gt;</value><value name='n' type='integer'>-1</value><section name='&#9;'/></section>"
      "\n\n<value name='y'>\n\t\tQUJD\n\t</value></OroDataStore>");
  EXPECT_EQ(saved(*document),
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
            "<OroDataStore>\n"
            "\t<section name=\"A &amp; &quot;B&quot;\">\n"
            "\t\t<value name=\"x\" type=\"text_unicode\"> a&#13;\n\tb &lt;&gt;</value>\n"
            "\t\t<value name=\"n\" type=\"integer\">-1</value>\n"
            "\t\t<section name=\"&#9;\"/>\n"
            "\t</section>\n"
            "\t<value name=\"y\">\n\t\tQUJD\n\t</value>\n"
            "</OroDataStore>\n");
}

TEST_F(XmlDocuments, TextBetweenElementsStaysInItsPlace) {
  const auto document = documentOf("<a>one <b>two</b> <c><d/></c>three<e/> </a>");
  EXPECT_EQ(saved(*document),
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
            "<a>one <b>two</b> <c>\n\t\t<d/>\n\t</c>three<e/> </a>\n");
  document->root()->appendChild(document->createElement("f"));
  firstChild(*document->root())->setText(OroString("2"));
  EXPECT_EQ(saved(*document),
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
            "<a>one <b>2</b> <c>\n\t\t<d/>\n\t</c>three<e/> <f/></a>\n");
  document->root()->setText(OroString("all"));
  EXPECT_EQ(textOf(*document->root()), u"all");
  EXPECT_THAT(saved(*document), HasSubstr("<a>all<b>2</b><c>"));
  document->root()->setText(OroString());
  EXPECT_THAT(saved(*document), HasSubstr("<a>\n\t<b>2</b>\n\t<c>\n"));
}

TEST_F(XmlDocuments, BlanksThatOnlyLayOutAreMadeAnew) {
  const auto document = documentOf("<a>\n\n    <b/>  <c>\r\n</c>   </a>");
  EXPECT_EQ(saved(*document),
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<a>\n\t<b/>\n\t<c>&#13;\n</c>\n</a>\n");
}

TEST_F(XmlDocuments, ADocumentIsBuiltFromNothing) {
  const auto document = newDocument();
  IOroDOMXmlElement* const root = document->createElement("OroDataStore");
  ASSERT_TRUE(document->setRoot(root));
  EXPECT_EQ(document->root(), root);
  IOroDOMXmlElement* const section = document->createElement("section");
  EXPECT_TRUE(section->setAttribute("name", OroString("A")));
  EXPECT_TRUE(root->appendChild(section));
  IOroDOMXmlElement* const value = document->createElement("value");
  EXPECT_TRUE(section->appendChild(value));
  EXPECT_TRUE(value->setAttribute("type", OroString("x")));
  EXPECT_TRUE(value->setAttribute("name", OroString(u"\u00e4\U0001F600")));
  EXPECT_TRUE(value->setAttribute("type", OroString("integer")));
  EXPECT_TRUE(value->setText(OroString("4")));
  EXPECT_TRUE(value->setText(OroString("5")));
  EXPECT_EQ(saved(*document),
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<OroDataStore>\n\t<section name=\"A\">\n"
            "\t\t<value type=\"integer\" name=\"\xC3\xA4\xF0\x9F\x98\x80\">5</value>\n"
            "\t</section>\n</OroDataStore>\n");
  EXPECT_EQ(firstChild(*section), value);
  EXPECT_EQ(firstChild(*value), nullptr);
}

TEST_F(XmlDocuments, AReadElementIsChangedAndKeepsTheRest) {
  const auto document = documentOf("<a x='1' y='2' z='3'>text<b/></a>");
  IOroDOMXmlElement& root = *document->root();
  EXPECT_TRUE(root.setAttribute("y", OroString("<2>")));
  EXPECT_TRUE(root.setAttribute("w", OroString()));
  EXPECT_STREQ(root.attribute("y"), "<2>");
  EXPECT_STREQ(root.attribute("z"), "3");
  EXPECT_EQ(textOf(root), u"text");
  EXPECT_TRUE(root.appendChild(document->createElement("c")));
  EXPECT_EQ(shown(root), "a{text}[b][c]");
  EXPECT_THAT(saved(*document),
              HasSubstr("<a x=\"1\" y=\"&lt;2&gt;\" z=\"3\" w=\"\">text<b/><c/></a>\n"));
}

TEST_F(XmlDocuments, ElementsGoOnlyWhereThereIsAPlaceForThem) {
  const auto document = documentOf("<a><b/></a>");
  const auto other = documentOf("<x/>");
  IOroDOMXmlElement* const a = document->root();
  IOroDOMXmlElement* const b = firstChild(*a);
  IOroDOMXmlElement* const c = document->createElement("c");
  IOroDOMXmlElement* const d = document->createElement("d");
  EXPECT_FALSE(a->appendChild(nullptr));
  EXPECT_FALSE(b->appendChild(a));                          // the root
  EXPECT_FALSE(c->appendChild(b));                          // has a parent
  EXPECT_FALSE(a->appendChild(other->createElement("y")));  // of another document
  EXPECT_FALSE(c->appendChild(c));
  EXPECT_TRUE(c->appendChild(d));
  EXPECT_FALSE(d->appendChild(c));  // stands above
  EXPECT_FALSE(document->setRoot(nullptr));
  EXPECT_FALSE(document->setRoot(b));
  EXPECT_FALSE(document->setRoot(other->root()));
  EXPECT_EQ(shown(*a), "a[b]");
  EXPECT_TRUE(document->setRoot(c));
  EXPECT_TRUE(d->appendChild(a));  // the old root is free
  EXPECT_EQ(shown(*document->root()), "c[d[a[b]]]");
  EXPECT_FALSE(b->appendChild(c));
  EXPECT_THAT(saved(*document), HasSubstr("<c>\n\t<d>\n\t\t<a>\n\t\t\t<b/>\n\t\t</a>\n"));
}

TEST_F(XmlDocuments, NamesAreXmlNamesOfAscii) {
  const auto document = newDocument();
  for (const char* const name : {"a", "_", "a:b-c.d1", ":x"}) {
    EXPECT_NE(document->createElement(name), nullptr) << name;
  }
  IOroDOMXmlElement* const element = document->createElement("a");
  for (const char* const name : {"", "1", "-a", "a b", "a>", "\xC3\xA4", "a/"}) {
    EXPECT_EQ(document->createElement(name), nullptr) << name;
    EXPECT_FALSE(element->setAttribute(name, OroString("1"))) << name;
  }
  EXPECT_EQ(document->createElement(nullptr), nullptr);
  EXPECT_FALSE(element->setAttribute(nullptr, OroString("1")));
}

TEST_F(XmlDocuments, WalksOfOneElementAreIndependent) {
  const auto document = documentOf("<a><b/>x<c/></a>");
  IOroDOMXmlElementItr* const first = document->root()->children();
  IOroDOMXmlElementItr* const second = document->root()->children();
  EXPECT_STREQ(first->element()->tagName(), "b");
  first->advance();
  EXPECT_STREQ(first->element()->tagName(), "c");
  EXPECT_STREQ(second->element()->tagName(), "b");
  first->advance();
  EXPECT_TRUE(first->atEnd());
  first->advance();
  EXPECT_TRUE(first->atEnd());
  EXPECT_EQ(first->element(), nullptr);
  second->advance();
  EXPECT_STREQ(second->element()->tagName(), "c");
  EXPECT_EQ(firstChild(*document->root()), document->root()->children()->element());
}

TEST_F(XmlDocuments, HoldersOfElementsComeAndGo) {
  const auto document = documentOf("<a><b/></a>");
  OroWeakRef* watch = nullptr;
  {
    const IPtr<IOroDOMXmlElement> root(document->root());
    const IPtr<IOroDOMXmlElementItr> walk(root->children());
    const IPtr<IOroDOMXmlElement> child(walk->element());
    watch = child.object()->getWeakRef();
    watch->addRef();
  }
  EXPECT_EQ(shown(*document->root()), "a[b]");
  EXPECT_NE(watch->target(), nullptr);
  EXPECT_TRUE(document->parse(OroString("<c/>")));
  EXPECT_EQ(watch->target(), nullptr);
  watch->release();
}

TEST_F(XmlDocuments, ASaveReplacesTheFileWholeOrNotAtAll) {
  const auto names = [this] {
    std::vector<std::string> all;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
      all.push_back(entry.path().filename().string());
    }
    return all;
  };
  folder_.write("out.xml", "before");
  const auto document = newDocument();
  EXPECT_FALSE(document->save(path("out.xml")));
  EXPECT_THAT(errorOf(*document), HasSubstr("no root element"));
  EXPECT_EQ(folder_.read("out.xml"), "before");
  ASSERT_TRUE(document->parse(OroString("<a/>")));
  EXPECT_TRUE(document->save(path("out.xml")));
  EXPECT_EQ(folder_.read("out.xml"), "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<a/>\n");
  EXPECT_EQ(names(), std::vector<std::string>{"out.xml"});
  EXPECT_FALSE(document->save(path("absent/out.xml")));
  EXPECT_THAT(errorOf(*document), HasSubstr("could not be written: "));
  EXPECT_FALSE(document->save(OroPath()));
  EXPECT_EQ(names(), std::vector<std::string>{"out.xml"});
  EXPECT_TRUE(document->save(path("out.xml")));
  EXPECT_EQ(document->lastError(), nullptr);
}

// The hook of the full disk is the module's own, so the class is taken from this program.
TEST(XmlDocumentOnAFullDisk, TheOldFileStands) {
  const tests::TempFolder folder;
  const OroPath path(tests::wideTextOf(folder.write("out.xml", "before")));
  const IPtr<XmlDocument> document(new XmlDocument);
  std::string text = "<a>";
  for (int i = 0; i < 5000; ++i) text += "<b>some text that fills a few blocks</b>";
  ASSERT_TRUE(document->parse(OroString((text + "</a>").c_str())));
  size_t writes = 0;
  for (size_t n = 0; n == 0 || n < writes; ++n) {
    tests::TestDisk disk;
    ASSERT_TRUE(document->save(path));
    writes = disk.writes.size();
    folder.write("out.xml", "before");
    disk.writes.clear();
    disk.refuseFrom(n, 10);
    EXPECT_FALSE(document->save(path)) << n;
    EXPECT_EQ(folder.read("out.xml"), "before") << n;
  }
  EXPECT_GE(writes, 3u);
}

}  // namespace
