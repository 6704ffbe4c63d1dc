// Editing of OroString, what is made from one, placeholders and the list encoding.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>

#include "orobasictypes/orostring.h"
#include "orobasictypes/orostringarray.h"
#include "orobasictypes/testaccess.h"
#include "tests/orobasictypes/texts.h"
#include "tests/support/fakeheap.h"

namespace {

using tests::borrowed;
using tests::owned;
using tests::units;

class OroStringEditing : public testing::Test {
 protected:
  OroStringEditing() { testaccess::resetStrSupport(); }
};

TEST_F(OroStringEditing, AppendsTextsOfEveryKind) {
  OroString text(u"a");
  text.append(borrowed(u"bc"));
  text.append("d\xE9");
  text.append("fgh", 1);
  text.append(u'\u20AC');
  text.appendAt(borrowed(u"xyz"), 1);
  EXPECT_EQ(units(text),
            u"abcd\xFFE9"
            u"f\u20ACy");
}

TEST_F(OroStringEditing, AppendsInPlaceWhenTheBytesSufficeAndElseExactly) {
  OroString text(u"abcdefg");  // 16 bytes
  text.truncateAt(2);
  const char16_t* const buffer = text.text();
  text.append("cdefg");
  EXPECT_EQ(text.text(), buffer);
  EXPECT_EQ(units(text), u"abcdefg");
  text.append(u'h');
  EXPECT_EQ(text.textCapacity(), 20) << "no doubling";
}

TEST_F(OroStringEditing, AppendingNothingChangesNothing) {
  OroString text = borrowed(u"abc");
  text.append(OroString());
  text.append(OroString::empty());
  text.append("");
  text.append(static_cast<const char*>(nullptr));
  text.append("abc", 0);
  text.append(u'\0');
  text.appendAt(borrowed(u"xyz"), 3);
  text.appendAt(borrowed(u"xyz"), -1);
  EXPECT_EQ(text.textCapacity(), 0);
  OroString null;
  null.append("");
  EXPECT_TRUE(null.isNull());
  null.append("a");
  EXPECT_EQ(units(null), u"a");
}

TEST_F(OroStringEditing, AppendsItself) {
  OroString text(u"abc");
  text.append(text);
  EXPECT_EQ(units(text), u"abcabc");
  OroString roomy(owned(std::u16string(50, u'x')));
  roomy.truncateAt(2);
  roomy.append(roomy);  // in place
  EXPECT_EQ(units(roomy), u"xxxx");
  roomy.appendAt(roomy, 0);
  EXPECT_EQ(units(roomy), u"xxxxx");
  text.append(text.toNarrow());
  EXPECT_EQ(units(text), u"abcabcabcabc");
}

TEST_F(OroStringEditing, TruncatingLeavesABorrowedTextAlone) {
  OroString literal = borrowed(u"abc");
  literal.truncateAt(0);
  EXPECT_EQ(units(literal), u"abc");
  OroString text(u"abc");
  text.truncateAt(1);
  EXPECT_EQ(units(text), u"a");
  OroString null;
  null.truncateAt(0);
  EXPECT_TRUE(null.isNull());
}

TEST_F(OroStringEditing, TruncatingOutsideTheBufferDoesNothing) {
  OroString text(u"abc");  // 8 bytes, 4 units
  for (const int index : {4, 5, 7, 8, 1000, -1, INT32_MIN, INT32_MAX}) text.truncateAt(index);
  EXPECT_EQ(units(text), u"abc");
  EXPECT_EQ(text.textCapacity(), 8);
}

TEST_F(OroStringEditing, Erases) {
  struct Row {
    int start;
    int count;
    const char16_t* result;
  };
  for (const Row& row :
       {Row{1, 2, u"adef"}, Row{0, 6, u""}, Row{4, 99, u"abcd"}, Row{-3, 2, u"cdef"},
        Row{6, 1, u"abcdef"}, Row{99, 1, u"abcdef"}, Row{2, 0, u"abcdef"}, Row{2, -4, u"abcdef"}}) {
    const char16_t literal[] = u"abcdef";
    for (OroString text : {OroString(literal), OroString(literal, nullptr)}) {
      text.erase(row.start, row.count);
      EXPECT_EQ(units(text), row.result) << row.start << " " << row.count;
    }
    EXPECT_EQ(std::u16string(literal), u"abcdef");
  }
}

TEST_F(OroStringEditing, ReplacesAllAndGoesOnBehindTheInsertedText) {
  struct Row {
    const char16_t* text;
    const char16_t* from;
    const char16_t* to;
    const char16_t* result;
  };
  for (const Row& row : {
           Row{u"aa", u"a", u"aa", u"aaaa"},
           Row{u"a-b-c", u"-", u"", u"abc"},
           Row{u"a-b-c", u"-", nullptr, u"abc"},
           Row{u"aaa", u"aa", u"b", u"ba"},
           Row{u"abc", u"", u"x", u"abc"},
           Row{u"abc", nullptr, u"x", u"abc"},
           Row{u"abc", u"b", u"b", u"abc"},
           Row{u"abc", u"x", u"y", u"abc"},
           Row{u"", u"x", u"y", u""},
           Row{u"aa", u"a", u"", u""},
       }) {
    OroString text = borrowed(row.text);
    text.replaceAll(borrowed(row.from), borrowed(row.to));
    EXPECT_EQ(units(text), row.result);
    EXPECT_FALSE(text.isNull());
  }
  OroString self(u"axb");
  self.replaceAll(borrowed(u"x"), self);
  EXPECT_EQ(units(self), u"aaxbb");
}

TEST_F(OroStringEditing, SplicesIntoANewString) {
  const OroString text = borrowed(u"abcdef");
  EXPECT_EQ(units(text.splice(1, 3, borrowed(u"XYZ"))), u"aXYZdef");
  EXPECT_EQ(units(text.splice(2, 2, borrowed(u"-"))), u"ab-cdef");
  EXPECT_EQ(units(text.splice(4, 2, borrowed(u"-"))), u"abcd-ef") << "an end before the start";
  EXPECT_EQ(units(text.splice(-2, 1, OroString())), u"bcdef");
  EXPECT_EQ(units(text.splice(99, 99, borrowed(u"!"))), u"abcdef!");
  EXPECT_EQ(units(text.splice(0, 99, text)), u"abcdef");
  EXPECT_EQ(units(text), u"abcdef");
  EXPECT_FALSE(text.splice(0, 6, OroString()).isNull());
  EXPECT_EQ(units(OroString().splice(0, 0, borrowed(u"a"))), u"a");
}

TEST_F(OroStringEditing, LeftCutsAlsoABorrowedText) {
  const OroString text(u"abcdef", "abcdef");
  EXPECT_EQ(units(text.left(2)), u"ab");
  EXPECT_STREQ(text.left(2).toNarrow(), "ab");
  EXPECT_EQ(text.left(6).text(), text.text());
  EXPECT_EQ(units(text.left(99)), u"abcdef");
  EXPECT_TRUE(text.left(0).isEmpty());
  EXPECT_FALSE(text.left(0).isNull());
  EXPECT_TRUE(text.left(-1).isEmpty());
  EXPECT_EQ(units(text), u"abcdef");
}

TEST_F(OroStringEditing, MidClipsAndIsNullWhenNothingIsLeft) {
  const OroString text = borrowed(u"abcde");
  EXPECT_EQ(units(text.mid(2, 100)), u"cde");
  EXPECT_EQ(units(text.mid(2, 2)), u"cd");
  EXPECT_EQ(units(text.mid(2)), u"cde");
  EXPECT_EQ(units(text.mid(0)), u"abcde");
  EXPECT_TRUE(text.mid(5).isNull());
  EXPECT_TRUE(text.mid(5, 1).isNull());
  EXPECT_TRUE(text.mid(99, 1).isNull());
  EXPECT_TRUE(text.mid(2, 0).isNull());
  EXPECT_TRUE(text.mid(2, -1).isNull());
  EXPECT_TRUE(text.mid(-1, 3).isNull());
  EXPECT_TRUE(OroString().mid(0).isNull());
}

TEST_F(OroStringEditing, MapsTheCaseOfAsciiAlone) {
  const OroString text(u"aZ\u00E9\u00C9[`", "aZ");
  EXPECT_EQ(units(text.toLower()), u"az\u00E9\u00C9[`");
  EXPECT_EQ(units(text.toUpper()), u"AZ\u00E9\u00C9[`");
  EXPECT_STREQ(text.toLower().toNarrow(), "az[`");
  EXPECT_EQ(units(text), u"aZ\u00E9\u00C9[`");
  EXPECT_FALSE(OroString().toLower().isNull());
  EXPECT_TRUE(OroString().toUpper().isEmpty());
}

TEST_F(OroStringEditing, StripsWhiteSpaceEverywhere) {
  EXPECT_EQ(units(borrowed(u" a\tb\n\v\f\rc \u00A0d").stripSpace()), u"abc\u00A0d");
  EXPECT_FALSE(borrowed(u"  ").stripSpace().isNull());
  EXPECT_TRUE(borrowed(u"  ").stripSpace().isEmpty());
  EXPECT_TRUE(OroString().stripSpace().isEmpty());
}

TEST_F(OroStringEditing, NormalizingWithoutTheServiceIsAPlainCopy) {
  const OroString text(u"a b", "narrow");
  const OroString copy = text.normalize(u'_');
  EXPECT_EQ(units(copy), u"a b");
  EXPECT_EQ(copy.text(), text.text());
  EXPECT_STREQ(copy.toNarrow(), "narrow");
}

TEST_F(OroStringEditing, SwapExchangesAllForms) {
  OroString a(u"a", "narrow");
  OroString b(u"b");
  const char* const utf8 = b.toUtf8();
  a.swap(b);
  EXPECT_EQ(units(a), u"b");
  EXPECT_STREQ(a.toNarrow(), "b");
  EXPECT_STREQ(utf8, "b");
  EXPECT_EQ(units(b), u"a");
  EXPECT_STREQ(b.toNarrow(), "narrow");
  a.swap(a);
  EXPECT_EQ(units(a), u"b");
}

TEST_F(OroStringEditing, Elides) {
  struct Row {
    int maxLength;
    int where;
    int dots;
    const char16_t* result;
  };
  for (const Row& row : {
           Row{10, 0, 3, u"abcdefghij"},
           Row{9, 0, 3, u"abcdef..."},
           Row{9, 1, 3, u"...efghij"},
           Row{9, 2, 3, u"abc...hij"},
           Row{8, 2, 3, u"ab...hij"},
           Row{3, 0, 3, u"..."},
           Row{2, 7, 3, u".."},
           Row{0, 0, 3, u""},
           Row{-4, 0, 3, u""},
           Row{4, 0, 0, u"abcd"},
           Row{4, 1, -2, u"ghij"},
           Row{5, 9, 3, u"abcdefghij"},
           Row{5, -1, 3, u"abcdefghij"},
       }) {
    const OroString result = borrowed(u"abcdefghij").elide(row.maxLength, row.where, row.dots);
    EXPECT_EQ(units(result), row.result) << row.maxLength << " " << row.where;
    EXPECT_FALSE(result.isNull());
  }
}

// Placeholders.

using Arguments = std::array<const OroString*, 10>;

std::u16string substituted(const char16_t* text, const Arguments& arguments) {
  OroString result(text);
  result.substitute(arguments.data());
  return units(result);
}

TEST_F(OroStringEditing, SubstitutesInAnyOrder) {
  const OroString one(u"ONE");
  const OroString two(u"2");
  const Arguments arguments = {&one, &two};
  EXPECT_EQ(substituted(u"%1 and %2.", arguments), u"ONE and 2.");
  EXPECT_EQ(substituted(u"%2 and %1", arguments), u"2 and ONE");
  EXPECT_EQ(substituted(u"%1", arguments), u"ONE");
  EXPECT_EQ(substituted(u"x%10", arguments), u"xONE0");
}

TEST_F(OroStringEditing, TheTenthPlaceholderIsTheNextCharacterOfTheRow) {
  std::array<OroString, 10> texts;
  Arguments arguments;
  for (int i = 0; i < 10; ++i) {
    texts[i] = OroString(i + 1);
    arguments[i] = &texts[i];
  }
  EXPECT_EQ(substituted(u"%:%9%8%7%6%5%4%3%2%1", arguments), u"10987654321");
}

TEST_F(OroStringEditing, AnAbsentArgumentRemovesItsPlaceholder) {
  const OroString two(u"2");
  EXPECT_EQ(substituted(u"a%1b%2c%3", {nullptr, &two}), u"ab2c");
  EXPECT_EQ(substituted(u"%1", {}), u"");
}

TEST_F(OroStringEditing, OtherPercentSignsStayWithTheirFollower) {
  const OroString one(u"ONE");
  const Arguments arguments = {&one};
  for (const char16_t* const text :
       {u"100%", u"%x", u"%%1", u"%0", u"%;", u"%", u"", u"a%\u20AC1", u"no sign"}) {
    EXPECT_EQ(substituted(text, arguments), text);
  }
  EXPECT_EQ(substituted(u"%%%1", arguments), u"%%ONE");
}

TEST_F(OroStringEditing, NothingBehindTheTerminatorIsLookedAt) {
  const OroString one(u"ONE");
  OroString text(u"abc%%1%1");
  text.truncateAt(4);
  const Arguments arguments = {&one};
  text.substitute(arguments.data());
  EXPECT_EQ(units(text), u"abc%");
}

TEST_F(OroStringEditing, OfANumberThatStandsTwiceTheLastPlaceCounts) {
  const OroString one(u"ONE");
  EXPECT_EQ(substituted(u"%1 and %1", {&one}), u"%1 and ONE");
}

TEST_F(OroStringEditing, ABorrowedTextIsNeverSubstituted) {
  const OroString one(u"ONE");
  OroString text = borrowed(u"%1");
  const Arguments arguments = {&one};
  text.substitute(arguments.data());
  EXPECT_EQ(units(text), u"%1");
  EXPECT_EQ(text.textCapacity(), 0);
}

TEST_F(OroStringEditing, InsertedTextIsNotScannedAndMayBeTheTextItself) {
  const OroString one(u"%2");
  const OroString two(u"%1");
  EXPECT_EQ(substituted(u"%1%2", {&one, &two}), u"%2%1");
  OroString self(u"<%1>");
  const Arguments arguments = {&self};
  self.substitute(arguments.data());
  EXPECT_EQ(units(self), u"<<%1>>");
}

// The list encoding.

OroStringArray arrayOf(std::initializer_list<const char16_t*> texts) {
  OroStringArray array;
  for (const char16_t* const text : texts) array.append(OroString(text, nullptr));
  return array;
}

std::vector<std::u16string> contents(const OroStringArray& array) {
  std::vector<std::u16string> texts;
  for (int i = 1; i <= array.lastIndex(); ++i) texts.push_back(units(array[i]));
  return texts;
}

using Texts = std::vector<std::u16string>;

Texts parsed(const std::u16string& encoded) {
  OroStringArray out = arrayOf({u"stale"});
  owned(encoded).parseList(out);
  return contents(out);
}

TEST_F(OroStringEditing, AppendsTextsBehindTheirLength) {
  OroString list;
  list.appendCounted(borrowed(u"a b"));
  list.appendCounted(OroString());
  list.appendCounted(borrowed(u"\u20AC"));
  EXPECT_EQ(units(list), u"3 a b0 1 \u20AC");
  list.appendCounted(list);
  EXPECT_EQ(units(list), u"3 a b0 1 \u20AC10 3 a b0 1 \u20AC");
}

TEST_F(OroStringEditing, TheLastElementOfAListIsNotWritten) {
  OroString list;
  list.appendList(arrayOf({u"one", u"two", u"three"}));
  EXPECT_EQ(units(list), u"3 one3 two");
  OroString none;
  none.appendList(arrayOf({u"one"}));
  none.appendList(arrayOf({}));
  EXPECT_TRUE(none.isNull());
}

TEST_F(OroStringEditing, ParsesLists) {
  EXPECT_EQ(parsed(u"3 one3 two"), (Texts{u"one", u"two"}));
  EXPECT_EQ(parsed(u"3 a b1 \u20AC"), (Texts{u"a b", u"\u20AC"}));
  EXPECT_EQ(parsed(u"0x3 one010 12345678"), (Texts{u"one", u"12345678"}));
  EXPECT_EQ(parsed(u""), Texts{});
  EXPECT_EQ(parsed(u"3"), Texts{});
  EXPECT_EQ(parsed(u"3 onerest"), (Texts{u"one"}));
}

TEST_F(OroStringEditing, ParsingEndsWithTheWholeTextAtACountThatIsNone) {
  EXPECT_EQ(parsed(u"3 one0 x"), (Texts{u"one", u"3 one0 x"}));
  EXPECT_EQ(parsed(u"3 onex y"), (Texts{u"one", u"3 onex y"}));
  EXPECT_EQ(parsed(u"-5 abc"), (Texts{u"-5 abc"}));
  EXPECT_EQ(parsed(u" 3 abc"), (Texts{u" 3 abc"}));
}

TEST_F(OroStringEditing, ACountBeyondTheEndIsClipped) {
  EXPECT_EQ(parsed(u"9 abc"), (Texts{u"abc"}));
  EXPECT_EQ(parsed(u"2147483647 abc"), (Texts{u"abc"}));
  EXPECT_EQ(parsed(u"1 a5 "), (Texts{u"a", u""}));
}

TEST_F(OroStringEditing, ParsesAnElementOfTheOutputItself) {
  OroStringArray out = arrayOf({u"3 one3 two", u"x"});
  out[1] = owned(u"3 one3 two");
  out[1].parseList(out);
  EXPECT_EQ(contents(out), (Texts{u"one", u"two"}));
}

TEST_F(OroStringEditing, HostileListsEnd) {
  std::mt19937 random(23);
  for (int i = 0; i < 5000; ++i) {
    std::u16string text;
    for (int length = static_cast<int>(random() % 30); length > 0; --length) {
      text += u"0123 -x\u20AC"[random() % 9];
    }
    ASSERT_LE(parsed(text).size(), text.size() / 2 + 1);
  }
}

// Random edits against a plain model.

class OroStringModel : public OroStringEditing {
 protected:
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  std::u16string word(int longest) {
    std::u16string made;
    for (int length = below(longest + 1); length > 0; --length) made += u"ab\u20AC "[below(4)];
    return made;
  }
  void replaceInModel(const std::u16string& from, const std::u16string& to) {
    if (from.empty()) return;
    for (size_t at = 0; (at = model_.find(from, at)) != model_.npos; at += to.size()) {
      model_.replace(at, from.size(), to);
    }
  }
  void editOnce() {
    const std::u16string a = word(3);
    const std::u16string b = word(4);
    const int length = static_cast<int>(model_.size());
    const int start = below(length + 1);
    const auto at = static_cast<size_t>(start);
    const int count = below(6);
    switch (below(9)) {
      case 0:
        text_.append(owned(a));
        model_ += a;
        break;
      case 1:
        text_.replaceAll(owned(a), owned(b));
        replaceInModel(a, b);
        break;
      case 2:
        text_.erase(start, count);
        model_.erase(at, static_cast<size_t>(count));
        break;
      case 3:
        text_ = text_.splice(start, start + count, owned(b));
        model_.replace(at, static_cast<size_t>(count), b);
        break;
      case 4:
        text_.append(text_);
        model_ += model_;
        break;
      case 5:
        text_.assign(text_.wideText() + start, 40);
        model_ = model_.substr(at, 40);
        break;
      case 6:
        text_ = text_.left(start);
        model_.resize(at);
        break;
      case 7:
        text_ = text_.mid(start, count);
        model_ = model_.substr(at, static_cast<size_t>(count));
        break;
      default:
        text_ = text_.stripSpace();
        std::erase(model_, u' ');
        break;
    }
  }

  std::mt19937 random_{20240517};
  OroString text_{u""};
  std::u16string model_;
};

TEST_F(OroStringModel, EditsAgreeWithAStandardString) {
  for (int step = 0; step < 30000; ++step) {
    editOnce();
    ASSERT_EQ(units(text_), model_) << step;
    ASSERT_EQ(text_.length(), static_cast<int>(model_.size()));
  }
}

}  // namespace
