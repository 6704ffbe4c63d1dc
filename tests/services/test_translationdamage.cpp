// Translation files that nobody meant to write: cut, damaged, deep and large, in every encoding.
// Each is read or refused; a text is then the one of the file, or its key, and nothing else
// happens.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "services/oroinputunicodestream.h"
#include "services/oroxlifftranslator.h"
#include "services/translator.h"
#include "tests/services/translationworld.h"

namespace {

using tests::TestLanguage;

const std::string kXliff =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<xliff version=\"1.2\"><file><body>\n"
    "<trans-unit id=\"1\"><source>Open %1</source><target>\xC3\x96"
    "ffne %1 &amp; mehr</target>"
    "</trans-unit>\n<trans-unit><target>zu</target><source>Close</source></trans-unit>\n"
    "</body></file></xliff>\n";

const std::string kResx =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<root>\n<resheader name=\"a\"/>\n"
    "<data name=\"Open %1\"><value>\xC3\x96"
    "ffne\\t%1</value></data>\n"
    "<data name=\"Close\"><value>zu</value></data>\n</root>\n";

const std::string kPo =
    "# Deutsch\r\nmsgid \"Open %1\"\r\nmsgstr \"\xD6"
    "ffne\\t%1\"\r\n\r\n"
    "msgid \"Close\"\r\nmsgstr \"zu  \"\r\n";

// UTF-16 of a text in ASCII, with its mark.
std::string wide(const std::string& bytes, bool bigEndian) {
  std::string units = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
  for (const char byte : bytes) {
    if (bigEndian) units += '\0';
    units += byte;
    if (!bigEndian) units += '\0';
  }
  return units;
}

std::string ascii(std::string bytes) {
  std::erase_if(bytes, [](char byte) { return (byte & 0x80) != 0; });
  return bytes;
}

// The same file in every encoding that its reader knows.
std::vector<std::string> xmlEncodings(const std::string& utf8) {
  const std::string plain = ascii(utf8);
  return {utf8, "\xEF\xBB\xBF" + utf8, wide(plain, false), wide(plain, true)};
}

// A document that lacks nothing but the line feed at its end is whole.
std::string withoutLineEnd(const std::string& whole) {
  const bool units = whole[0] == '\xFF' || whole[0] == '\xFE';
  return whole.substr(0, whole.size() - (units ? 2 : 1));
}

class TranslationDamage : public tests::TranslationWorld {
 protected:
  TranslationDamage() {
    publishXml();
    publishStrip();
    publish("IOroLanguageID", language_.get());
    listen();
  }

  // Reads a file with one of the readers and asks for a known and an unknown text.
  bool xliff(const std::string& bytes) {
    heard.clear();
    writeLanguage("points_de", bytes);
    const IPtr<OroXLIFFTranslator> translator = new OroXLIFFTranslator;
    translator->setBaseName(languages().joined("points"));
    translator->setLanguage(language_.get());
    askAll(*translator);
    return heard.empty();
  }
  bool resx(const std::string& bytes) { return application("velmora.de.resx", bytes); }
  bool po(const std::string& bytes) { return application("de.po", bytes); }

  void askAll(IOroTranslator& translator) {
    const OroString argument("x");
    OroString out;
    translator.translate1(out, "Open %1", &argument);
    ASSERT_FALSE(out.isEmpty());
    ASSERT_EQ(text(translator, "no such key"), u"no such key");
    close_ = text(translator, "Close");
  }

  IPtr<TestLanguage> language_ = new TestLanguage("de");
  std::u16string close_;  // the last text of "Close"

 private:
  bool application(const char* name, const std::string& bytes) {
    writeLanguage(name, bytes);
    const IPtr<Translator> translator = new Translator;
    const bool read = translator->setLanguage(language_.get());
    askAll(*translator);
    return read;
  }
};

using Reader = std::function<bool(const std::string&)>;

void cutEverywhere(const std::string& whole, const Reader& read) {
  for (size_t size = 0; size < whole.size(); ++size) {
    read(whole.substr(0, size));
    if (testing::Test::HasFatalFailure()) FAIL() << "cut at " << size;
  }
}

void flipEveryBit(const std::string& whole, const Reader& read) {
  for (size_t bit = 0; bit < whole.size() * 8; ++bit) {
    std::string damaged = whole;
    damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << bit % 8));
    read(damaged);
    if (testing::Test::HasFatalFailure()) FAIL() << "bit " << bit;
  }
}

TEST_F(TranslationDamage, EveryEncodingOfAnXmlFileIsRead) {
  for (const std::string& bytes : xmlEncodings(kXliff)) {
    EXPECT_TRUE(xliff(bytes));
    EXPECT_EQ(close_, u"zu");
  }
  for (const std::string& bytes : xmlEncodings(kResx)) {
    EXPECT_TRUE(resx(bytes));
    EXPECT_EQ(close_, u"zu");
  }
}

TEST_F(TranslationDamage, EveryEncodingOfALineFileIsRead) {
  for (const std::string& bytes : {kPo, wide(ascii(kPo), false)}) {
    EXPECT_TRUE(po(bytes));
    EXPECT_EQ(close_, u"zu");
  }
  EXPECT_TRUE(po(wide(ascii(kPo), true))) << "bytes like any other, of which no line fits";
  EXPECT_EQ(close_, u"Close");
}

TEST_F(TranslationDamage, EveryBeginningOfAnXliffFileIsRefusedAndReported) {
  for (const std::string& whole : xmlEncodings(kXliff)) {
    cutEverywhere(withoutLineEnd(whole), [&](const std::string& bytes) {
      const bool read = xliff(bytes);
      EXPECT_FALSE(read) << bytes.size();
      EXPECT_EQ(heard.size(), 1u);
      EXPECT_EQ(close_, u"Close");
      return read;
    });
  }
}

TEST_F(TranslationDamage, EveryBeginningOfAResourceTableIsRefused) {
  for (const std::string& whole : xmlEncodings(kResx)) {
    cutEverywhere(withoutLineEnd(whole), [&](const std::string& bytes) {
      const bool read = resx(bytes);
      EXPECT_FALSE(read) << bytes.size();
      EXPECT_EQ(close_, u"Close");
      return read;
    });
  }
}

TEST_F(TranslationDamage, EveryBeginningOfALineFileGivesWhatItHolds) {
  for (const std::string& whole : {kPo, wide(ascii(kPo), false)}) {
    cutEverywhere(whole, [&](const std::string& bytes) {
      const bool read = po(bytes);
      EXPECT_TRUE(close_ == u"Close" || close_ == u"zu" || close_ == u"z") << bytes.size();
      return read;
    });
  }
}

TEST_F(TranslationDamage, EveryFlippedBitIsReadOrRefused) {
  flipEveryBit(kXliff, [this](const std::string& bytes) { return xliff(bytes); });
  flipEveryBit(kResx, [this](const std::string& bytes) { return resx(bytes); });
  flipEveryBit(kPo, [this](const std::string& bytes) { return po(bytes); });
  const std::string units = wide(ascii(kPo), false);
  flipEveryBit(units, [this](const std::string& bytes) { return po(bytes); });
}

TEST_F(TranslationDamage, DeepDocumentsEnd) {
  constexpr int depth = 100'000;
  std::string opening, closing;
  for (int i = 0; i < depth; ++i) {
    opening += "<file>";
    closing += "</file>";
  }
  const std::string pair = "<source>Close</source><target>zu</target>";
  xliff("<x>" + opening + pair + closing + "</x>");
  EXPECT_EQ(close_, u"Close");
  xliff("<x><file><body><trans-unit>" + opening + closing + pair +
        "</trans-unit></body></file></x>");
  resx("<root>" + opening + closing + "<data name='Close'><value>" + opening + closing +
       "zu</value></data></root>");
  xliff("<x>" + opening);
  EXPECT_EQ(close_, u"Close");
  resx("<root>" + opening);
  EXPECT_EQ(close_, u"Close");
}

TEST_F(TranslationDamage, ManyAndLongTextsAreRead) {
  std::string units, table, lines;
  for (int i = 0; i < 20'000; ++i) {
    const std::string n = std::to_string(i);
    units += "<trans-unit><source>" + n + "</source><target>t</target></trans-unit>";
    table += "<data name='" + n + "'><value>t</value></data>";
    lines += "msgid \"" + n + "\"\r\nmsgstr \"t\"\r\n";
  }
  const std::string text(1'000'000, 'z');
  EXPECT_TRUE(xliff("<x><file><body>" + units + "<trans-unit><source>Close</source><target>" +
                    text + "</target></trans-unit></body></file></x>"));
  EXPECT_EQ(close_.size(), text.size());
  EXPECT_TRUE(
      resx("<root>" + table + "<data name='Close'><value>" + text + "</value></data></root>"));
  EXPECT_EQ(close_.size(), text.size());
  std::filesystem::remove(folder_.file("lang") / "velmora.de.resx");
  EXPECT_TRUE(po(lines + "msgid \"Close\"\r\nmsgstr \"" + text + "\"\r\n"));
  EXPECT_EQ(close_.size(), text.size());
}

TEST_F(TranslationDamage, ALineOfBlanksAndEscapesIsReadInItsOwnTime) {
  const std::string blanks(1'000'000, ' ');
  EXPECT_TRUE(po("msgid \"Close\"\r\nmsgstr \"zu" + blanks + "\"\r\n"));
  EXPECT_EQ(close_, u"zu");
  std::string escapes;
  for (int i = 0; i < 500'000; ++i) escapes += "\\t";
  EXPECT_TRUE(po("msgid \"Close\"\r\nmsgstr \"zu" + escapes + "\"\r\n"));
  EXPECT_EQ(close_.size(), 500'002u);
}

TEST_F(TranslationDamage, ALineAboveTheLimitFailsTheRead) {
  const std::string line(OroInputUnicodeStream::kMostUnits + 10, 'x');
  EXPECT_FALSE(po("msgid \"Close\"\r\nmsgstr \"zu\"\r\n# " + line +
                  "\r\nmsgid \"Close\"\r\nmsgstr \"later\"\r\n"));
  EXPECT_EQ(close_, u"zu") << "what stands in front of it counts";
}

}  // namespace
