#include "platform/registrytext.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/osregistry.h"
#include "platform/text.h"

namespace {

using platform::parseRegistryText;
using platform::RegistryNode;
using platform::writeRegistryText;

std::string textData(const std::u16string& text) {
  return {reinterpret_cast<const char*>(text.c_str()), (text.size() + 1) * sizeof(char16_t)};
}

// The text between the first line and the last.
std::string whole(const std::string& lines) { return "cowl-registry 1\n" + lines + "\nend\n"; }

bool isGood(const std::string& lines) { return parseRegistryText(whole(lines)).has_value(); }

// The one value of the root, as "type:data"; "none" if the text is not good.
std::string valueOf(const std::string& line) {
  const auto tree = parseRegistryText(whole(line));
  if (!tree || tree->values.size() != 1) return "none";
  const platform::RegistryValue& value = tree->values.begin()->second;
  return std::to_string(value.type) + ":" + value.data;
}

RegistryNode example() {
  RegistryNode root;
  RegistryNode& product = root.childMade(u"Software").childMade(u"Velmora");
  product.set(u"Port", platform::registryTypeDword, std::string("\x67\x12\0\0", 4));
  product.set(u"Name", platform::registryTypeText, textData(u"caf\u00E9 \"1\" \\ \U0001F600\t"));
  product.set(u"State", platform::registryTypeNone, std::string("\x02\0a\0", 4));
  product.childMade(u"a/b]").set(u"", platform::registryTypeText, textData(u""));
  return root;
}

constexpr const char* exampleText =
    "cowl-registry 1\n"
    "\n[Software]\n"
    "\n[Software/Velmora]\n"
    "\"Name\" = text \"caf\xC3\xA9 \\\"1\\\" \\\\ \xF0\x9F\x98\x80\\u0009\"\n"
    "\"Port\" = number 4711\n"
    "\"State\" = bytes 0 02 00 61 00\n"
    "\n[Software/Velmora/a\\/b\\]]\n"
    "\"\" = text \"\"\n"
    "\nend\n";

TEST(RegistryText, HasTheFormOfItsPage) { EXPECT_EQ(writeRegistryText(example()), exampleText); }

TEST(RegistryText, ReadsBackWhatItWrites) {
  const auto tree = parseRegistryText(exampleText);
  ASSERT_TRUE(tree);
  EXPECT_EQ(writeRegistryText(*tree), exampleText);
  const RegistryNode* const product = tree->child(u"software")->child(u"VELMORA");
  ASSERT_NE(product, nullptr);
  EXPECT_TRUE(
      product->value(u"port")->holds(platform::registryTypeDword, std::string("\x67\x12\0\0", 4)));
  EXPECT_EQ(product->value(u"NAME")->data, textData(u"caf\u00E9 \"1\" \\ \U0001F600\t"));
  EXPECT_NE(product->child(u"a/b]"), nullptr);
}

TEST(RegistryText, EveryValueKeepsItsBytes) {
  const std::string datas[] = {"",
                               "a",
                               std::string("a\0", 2),
                               std::string("\0\0", 2),
                               std::string("\0\xD8\0\0", 4),
                               std::string("\0\xDC\0\xD8\0\0", 6),
                               std::string("a\0\0\0b\0\0\0", 8),
                               std::string("\n\0\r\0\x7f\0\0\0", 8),
                               std::string("\xFF\xFF\xFE\xFF\0\0", 6),
                               "1234",
                               "12345"};
  for (const std::uint32_t type : {0u, 1u, 3u, 4u, 0xFFFFFFFFu}) {
    for (const std::string& data : datas) {
      RegistryNode root;
      root.set(u"v", type, data);
      const std::string text = writeRegistryText(root);
      const auto back = parseRegistryText(text);
      ASSERT_TRUE(back) << text;
      EXPECT_TRUE(back->value(u"v")->holds(type, data)) << text;
      EXPECT_EQ(writeRegistryText(*back), text);
    }
  }
}

TEST(RegistryText, EveryNameComesBack) {
  std::u16string all;
  for (char16_t unit = 0; unit < 0x180; ++unit) all += unit;
  all += u"\xD800x\xDC00\xDC80\uFEFF\uFFFF";
  RegistryNode root;
  root.set(all, 0, "");
  std::u16string key = all.substr(0, 200);
  key.erase(key.find(u'\\'), 1);
  root.childMade(key);
  const auto back = parseRegistryText(writeRegistryText(root));
  ASSERT_TRUE(back);
  EXPECT_EQ(back->values.begin()->second.name, all);
  EXPECT_EQ(back->keys.begin()->second->name, key);
}

TEST(RegistryText, ReaderToleratesTheEditsOfPeople) {
  const auto tree = parseRegistryText(
      "\xEF\xBB\xBF"
      "cowl-registry  1\r\n# a remark\r\n\r\n  [A]\r\n\t\"x\"=number 1\r\n"
      "[a/b]\n\"X\"   =   text   \"y\"  \n[]\n\"r\" = bytes 7\n[A]\n\"X\" = number 2\n  end  \n\n# "
      "bye");
  ASSERT_TRUE(tree);
  const RegistryNode* const a = tree->child(u"a");
  EXPECT_EQ(a->name, u"A");
  EXPECT_EQ(a->values.size(), 1u);
  EXPECT_TRUE(a->value(u"x")->holds(4, std::string("\x02\0\0\0", 4))) << "the last counts";
  EXPECT_EQ(a->value(u"x")->name, u"x");
  EXPECT_TRUE(a->child(u"B")->value(u"x")->holds(1, textData(u"y")));
  EXPECT_TRUE(tree->value(u"R")->holds(7, ""));
}

TEST(RegistryText, ValuesHaveOneFormEach) {
  EXPECT_EQ(valueOf("\"v\" = number 4294967295"), "4:\xFF\xFF\xFF\xFF");
  EXPECT_EQ(valueOf("\"v\" = bytes 4294967295 0a FF"), "4294967295:\n\xFF");
  EXPECT_EQ(valueOf("\"v\" = text \"\\u0041\""), "1:" + textData(u"A"));
  for (const char* line : {"\"v\"",
                           "\"v\" =",
                           "\"v\" = ",
                           "\"v\" number 1",
                           "\"v = number 1",
                           "v = number 1",
                           "\"v\" = number",
                           "\"v\" = number 4294967296",
                           "\"v\" = number 99999999999999999999",
                           "\"v\" = number -1",
                           "\"v\" = number 1x",
                           "\"v\" = number 1 2",
                           "\"v\" = text",
                           "\"v\" = text x",
                           "\"v\" = text \"x",
                           "\"v\" = text \"x\" y",
                           "\"v\" = text \"\\x\"",
                           "\"v\" = text \"\\\"",
                           "\"v\" = text \"\\u12\"",
                           "\"v\" = text \"\\u12g4\"",
                           "\"v\" = bytes",
                           "\"v\" = bytes x",
                           "\"v\" = bytes 1 2",
                           "\"v\" = bytes 1 234",
                           "\"v\" = bytes 1 gg",
                           "\"v\" = other 1",
                           "\"v\" == number 1"}) {
    EXPECT_FALSE(isGood(line)) << line;
  }
}

TEST(RegistryText, KeysHaveOneForm) {
  for (const char* line : {"[]", "[a]", "[a/b]", "[a\\/b]", "[\\]]", "[ ]", "[a b]"}) {
    EXPECT_TRUE(isGood(line)) << line;
  }
  for (const char* line : {"[", "[a", "[a]]", "[a]x", "[a/]", "[/a]", "[a//b]", "[/]", "[\\\\]",
                           "[\\u005c]", "[a\\", "[\\x]", "]"}) {
    EXPECT_FALSE(isGood(line)) << line;
  }
}

TEST(RegistryText, WhatIsNotTheWholeTextIsNone) {
  for (const std::string& text :
       {std::string(), std::string("end\n"), std::string("cowl-registry 1\n"),
        std::string("cowl-registry 2\nend\n"), std::string("cowl-registry 10\nend\n"),
        std::string("cowl-registry\nend\n"), std::string("cowl-registry 1 1\nend\n"),
        std::string("cowl-registry 1\nend\nend\n"), std::string("cowl-registry 1\nend x\n"),
        std::string("cowl-registry 1\n\xFF\nend\n"), std::string("cowl-registry 1\n\xC3\nend\n"),
        std::string("cowl-registry 1\n\xED\xA0\x80\nend\n"),
        std::string("cowl-registry 1\n#\0\nend\n", 23)}) {
    EXPECT_FALSE(parseRegistryText(text)) << text;
  }
  EXPECT_TRUE(parseRegistryText("cowl-registry 1\nend")) << "the last line feed may be missing";
}

TEST(RegistryText, TextCutAnywhereIsNone) {
  const std::string text = exampleText;
  for (size_t cut = 0; cut + 1 < text.size(); ++cut) {
    EXPECT_FALSE(parseRegistryText(text.substr(0, cut))) << cut;
  }
}

TEST(RegistryText, FlippedBitsGiveATreeOrNothing) {
  const std::string text = exampleText;
  for (size_t place = 0; place < text.size(); ++place) {
    for (int bit = 0; bit < 8; ++bit) {
      std::string damaged = text;
      damaged[place] = static_cast<char>(damaged[place] ^ (1 << bit));
      if (const auto tree = parseRegistryText(damaged)) {
        EXPECT_TRUE(parseRegistryText(writeRegistryText(*tree)));
      }
    }
  }
}

TEST(RegistryText, NamesAndDepthHaveLimits) {
  EXPECT_TRUE(isGood("[" + std::string(255, 'n') + "]"));
  EXPECT_FALSE(isGood("[" + std::string(256, 'n') + "]"));
  EXPECT_TRUE(isGood("\"" + std::string(16383, 'n') + "\" = number 1"));
  EXPECT_FALSE(isGood("\"" + std::string(16384, 'n') + "\" = number 1"));
  std::string path = "a";
  for (int level = 1; level < 512; ++level) path += "/a";
  EXPECT_TRUE(isGood("[" + path + "]"));
  EXPECT_FALSE(isGood("[" + path + "/a]"));
}

// Each key would be named by all names above it: two gigabytes of a file of eight megabytes.
TEST(RegistryText, WritesNoMoreThanCanBeRead) {
  std::string lines;
  for (char top = 'A'; top <= 'P'; ++top) {
    std::string path(1, top);
    for (int level = 1; level < 512; ++level) path += "/" + std::string(255, 'n');
    lines += "[" + path + "]\n";
  }
  const auto tree = parseRegistryText(whole(lines));
  ASSERT_TRUE(tree);
  const std::string text = writeRegistryText(*tree);
  EXPECT_LT(text.size(), platform::largestRegistryText + 1000000);
  EXPECT_FALSE(platform::isReadableRegistryText(text, *tree));
}

TEST(RegistryText, SizeHasALimit) {
  std::string keys;
  for (size_t i = 0; i < platform::mostRegistryKeys; ++i) keys += "[" + std::to_string(i) + "]\n";
  const auto tree = parseRegistryText(whole(keys));
  ASSERT_TRUE(tree);
  EXPECT_TRUE(platform::isReadableRegistryText("", *tree));
  EXPECT_FALSE(isGood(keys + "[one more]"));
  RegistryNode more;
  for (size_t i = 0; i <= platform::mostRegistryKeys; ++i) {
    more.childMade(platform::fromSystem(std::to_string(i)));
  }
  EXPECT_FALSE(platform::isReadableRegistryText("", more));
  const std::string large(platform::largestRegistryText, '#');
  EXPECT_FALSE(parseRegistryText(whole(large)));
  EXPECT_FALSE(platform::isReadableRegistryText(whole(large), RegistryNode()));
}

}  // namespace
