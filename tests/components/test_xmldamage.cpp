// XML documents that nobody meant to write: cut, damaged, deep and large. The staged library reads
// them.

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>

#include "tests/components/xmlworld.h"

namespace {

using tests::errorOf;
using tests::shown;

using XmlDamage = tests::XmlWorld;

const std::string kDocument =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE a [ <!ENTITY e \"x\"> ]>\n"
    "<OroDataStore>\n\t<section name=\"A &amp; B\">\n\t\t<value name='C' "
    "type=\"integer\">5</value>\n"
    "\t\t<!-- a comment --><value name=\"D\">&#x20AC;<![CDATA[<raw>]]> \xC3\xA9</value>\n"
    "\t</section>\n\t<empty/>\n</OroDataStore>";

TEST_F(XmlDamage, EveryBeginningOfADocumentIsRefused) {
  const auto document = newDocument();
  for (size_t size = 0; size < kDocument.size(); ++size) {
    folder_.write("in.xml", kDocument.substr(0, size));
    ASSERT_FALSE(document->load(path("in.xml"))) << size;
    ASSERT_EQ(document->root(), nullptr) << size;
    ASSERT_NE(errorOf(*document).find(", line "), std::string::npos) << size;
  }
  folder_.write("in.xml", kDocument);
  EXPECT_TRUE(document->load(path("in.xml"))) << errorOf(*document);
}

// What the document says without the blanks, which the layout of a file adds to.
std::string saidBy(IOroDOMXml& document) {
  std::string said = shown(*document.root());
  std::erase_if(said, [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; });
  for (size_t at; (at = said.find("{}")) != said.npos;) said.erase(at, 2);
  return said;
}

// Read or refused; what is read can be walked, saved and read again alike.
void readWalkAndSave(IOroDOMXml& document, const OroPath& from, const OroPath& to) {
  if (!document.load(from)) {
    ASSERT_NE(errorOf(document), "");
    return;
  }
  const std::string before = saidBy(document);
  ASSERT_TRUE(document.save(to));
  ASSERT_TRUE(document.load(to)) << errorOf(document);
  ASSERT_EQ(saidBy(document), before);
}

TEST_F(XmlDamage, EveryFlippedBitIsReadOrRefused) {
  const auto document = newDocument();
  for (size_t bit = 0; bit < kDocument.size() * 8; ++bit) {
    std::string bytes = kDocument;
    bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << bit % 8));
    folder_.write("in.xml", bytes);
    readWalkAndSave(*document, path("in.xml"), path("out.xml"));
    if (HasFatalFailure()) FAIL() << bit;
  }
}

TEST_F(XmlDamage, PiecesInAnyOrderAreReadOrRefused) {
  const char* const pieces[] = {"<",
                                ">",
                                "/",
                                "a",
                                "b",
                                " ",
                                "\"",
                                "'",
                                "=",
                                "<?",
                                "?>",
                                "<!--",
                                "-",
                                "]",
                                "<![CDATA",
                                "[",
                                "]]",
                                "&amp;",
                                "&#x41;",
                                "&#xFFFFFFFF;",
                                "<!DOCTYPE",
                                "\n",
                                "\xEF\xBB\xBF",
                                "\xF0\x9F",
                                "<a>",
                                "</a>",
                                "<a b='"};
  std::mt19937 random(4711);
  const auto document = newDocument();
  for (int i = 0; i < 2000; ++i) {
    std::string bytes = i % 2 != 0 ? "<a>" : "";
    for (size_t n = random() % 20; n > 0; --n) bytes += pieces[random() % std::size(pieces)];
    if (i % 2 != 0) bytes += "</a>";
    folder_.write("in.xml", bytes);
    readWalkAndSave(*document, path("in.xml"), path("out.xml"));
    if (HasFatalFailure()) FAIL() << bytes;
  }
}

constexpr size_t kDeep = 100000;

size_t depthOf(IOroDOMXml& document) {
  size_t depth = 0;
  for (IOroDOMXmlElement* at = document.root(); at != nullptr; at = tests::firstChild(*at)) ++depth;
  return depth;
}

TEST_F(XmlDamage, DeepNestingIsReadWalkedAndSaved) {
  std::string text;
  for (size_t i = 0; i < kDeep; ++i) text += "<a>";
  text += "x";
  for (size_t i = 0; i < kDeep; ++i) text += "</a>";
  folder_.write("in.xml", text);
  const auto document = newDocument();
  ASSERT_TRUE(document->load(path("in.xml"))) << errorOf(*document);
  EXPECT_EQ(depthOf(*document), kDeep);
  ASSERT_TRUE(document->save(path("out.xml"))) << errorOf(*document);
  EXPECT_LT(std::filesystem::file_size(folder_.file("out.xml")), kDeep * 200);
  ASSERT_TRUE(document->load(path("out.xml"))) << errorOf(*document);
  EXPECT_EQ(depthOf(*document), kDeep);
  ASSERT_TRUE(document->parse(OroString(text.c_str())));
  EXPECT_EQ(depthOf(*document), kDeep);
  EXPECT_FALSE(document->parse(OroString(text.substr(0, text.size() - 4).c_str())));
  std::string open;
  for (size_t i = 0; i < kDeep; ++i) open += "<!DOCTYPE a [<!DOCTYPE a [<![x[";
  EXPECT_FALSE(document->parse(OroString(open.c_str())));
}

TEST_F(XmlDamage, DeepTreesAreBuiltFromEitherEnd) {
  const auto down = newDocument();
  IOroDOMXmlElement* at = down->createElement("a");
  ASSERT_TRUE(down->setRoot(at));
  for (size_t i = 1; i < kDeep; ++i) {
    IOroDOMXmlElement* const child = down->createElement("a");
    ASSERT_TRUE(at->appendChild(child));
    at = child;
  }
  EXPECT_EQ(depthOf(*down), kDeep);
  const auto up = newDocument();
  IOroDOMXmlElement* top = up->createElement("a");
  for (size_t i = 1; i < kDeep; ++i) {
    IOroDOMXmlElement* const parent = up->createElement("a");
    ASSERT_TRUE(parent->appendChild(top));
    top = parent;
  }
  ASSERT_TRUE(up->setRoot(top));
  EXPECT_EQ(depthOf(*up), kDeep);
}

TEST_F(XmlDamage, ManyMegabytesAreReadAndSaved) {
  constexpr size_t kValues = 1000;
  const std::string value = "\t<v>" + std::string(100000, 'x') + "</v>\n";
  std::string text = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<a>\n";
  text.reserve(kValues * value.size() + 100);
  for (size_t i = 0; i < kValues; ++i) text += value;
  text += "</a>\n";
  ASSERT_GT(text.size(), 100000000u);
  folder_.write("in.xml", text);
  const auto document = newDocument();
  ASSERT_TRUE(document->load(path("in.xml"))) << errorOf(*document);
  EXPECT_EQ(tests::textOf(*tests::firstChild(*document->root())).size(), 100000u);
  ASSERT_TRUE(document->save(path("out.xml")));
  EXPECT_TRUE(folder_.read("out.xml") == text);
}

TEST_F(XmlDamage, AFileBeyondTheLimitIsRefusedUnread) {
  folder_.write("in.xml", "<a/>");
  std::filesystem::resize_file(folder_.file("in.xml"), (uint64_t{1} << 30) + 1);
  const auto document = newDocument();
  EXPECT_FALSE(document->load(path("in.xml")));
  EXPECT_EQ(errorOf(*document), "The document is too large");
}

}  // namespace
