#include "orobasictypes/orostring.h"

#include <gtest/gtest.h>

#include <cwctype>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>

#include "orobasictypes/kelcstring.h"
#include "orobasictypes/kelpool.h"
#include "orobasictypes/testaccess.h"
#include "tests/orobasictypes/texts.h"
#include "tests/support/fakeheap.h"
#include "tests/support/pooloff.h"

namespace {

using tests::borrowed;
using tests::owned;
using tests::units;

constinit OroString pair(u"Open File", "Open File");
constinit const OroString wideAlone(u"caf\u00E9", nullptr);

// A process in which no component offers locale-aware text operations.
class OroStringTest : public testing::Test {
 protected:
  OroStringTest() { testaccess::resetStrSupport(); }
};

TEST_F(OroStringTest, IsSixFieldsWithoutVirtualOperations) {
  EXPECT_EQ(sizeof(OroString), 48u);
  EXPECT_FALSE(std::is_polymorphic_v<OroString>);
  const OroString null;
  EXPECT_TRUE(null.isNull());
  EXPECT_TRUE(null.isEmpty());
  EXPECT_EQ(null.text(), nullptr);
  EXPECT_EQ(*null.wideText(), 0);
  EXPECT_EQ(null.length(), 0);
  EXPECT_EQ(null.textCapacity(), 0);
}

TEST_F(OroStringTest, LiteralPairAllocatesNothing) {
  const tests::PoolOff poolOff;
  tests::FakeHeap heap;
  {
    const OroString text(u"abc", "abc");
    const OroString copy(text);
    EXPECT_STREQ(copy.toNarrow(), "abc");
    EXPECT_EQ(copy.text(), text.text());
    EXPECT_EQ(copy.length(), 3);
    EXPECT_TRUE(copy == text);
    EXPECT_STREQ(pair.toNarrow(), "Open File");
  }
  EXPECT_EQ(heap.allocations + heap.reallocations + heap.frees, 0);
}

TEST_F(OroStringTest, SharedEmptyStringIsNotNullAndAllocatesNothing) {
  const tests::PoolOff poolOff;
  tests::FakeHeap heap;
  const OroString copy = OroString::empty();
  EXPECT_FALSE(copy.isNull());
  EXPECT_TRUE(copy.isEmpty());
  EXPECT_EQ(copy.textCapacity(), 0);
  EXPECT_EQ(heap.allocations, 0);
}

TEST_F(OroStringTest, SharedEmptyStringIsNoPairWhoseNarrowFormWouldStay) {
  OroString text = OroString::empty();
  text.append("abc");
  EXPECT_STREQ(text.toNarrow(), "abc");
}

TEST_F(OroStringTest, CleanupFreesWhatTheSharedStringsHold) {
  const tests::PoolOff poolOff;
  EXPECT_STREQ(OroString::empty().toNarrow(), "");
  EXPECT_STREQ(OroString::empty().toUtf8(), "");
  tests::FakeHeap heap;
  oroStringCleanup();
  EXPECT_EQ(heap.frees, 2);
  oroStringCleanup();
  EXPECT_EQ(heap.frees, 2);
  EXPECT_FALSE(OroString::empty().isNull());
}

TEST_F(OroStringTest, NarrowTextIsWidenedWithItsSign) {
  EXPECT_EQ(units(OroString("a\x80\xFF")), u"a\xFF80\xFFFF");
  EXPECT_EQ(units(OroString("abc", 2)), u"ab");
  EXPECT_EQ(units(OroString("abc", 9)), u"abc");
  EXPECT_EQ(units(OroString("abc", -5)), u"abc");
  const OroString none("abc", 0);
  EXPECT_FALSE(none.isNull());
  EXPECT_TRUE(none.isEmpty());
  EXPECT_GT(none.textCapacity(), 0);
  EXPECT_TRUE(OroString(static_cast<const char*>(nullptr)).isNull());
  EXPECT_TRUE(OroString(static_cast<const char*>(nullptr), 4).isNull());
}

TEST_F(OroStringTest, WideTextIsCopiedOrBorrowed) {
  const char16_t literal[] = u"abc";
  EXPECT_NE(OroString(literal).text(), literal);
  EXPECT_EQ(units(OroString(literal, 2)), u"ab");
  EXPECT_EQ(units(OroString(literal, 9)), u"abc");
  EXPECT_EQ(units(OroString(literal, -7)), u"abc");
  const OroString shared(literal, 0);
  EXPECT_EQ(shared.text(), literal);
  EXPECT_EQ(shared.textCapacity(), 0);
  EXPECT_TRUE(OroString(static_cast<const char16_t*>(nullptr)).isNull());
  const OroString empty(u"");
  EXPECT_FALSE(empty.isNull());
}

TEST_F(OroStringTest, MadeFromOneCharacter) {
  EXPECT_EQ(units(OroString('x')), u"x");
  EXPECT_EQ(units(OroString('\xE9')), u"\xFFE9");
  EXPECT_EQ(units(OroString(u'\u20AC')), u"\u20AC");
  EXPECT_EQ(units(OroString(KelCString::borrow("k\xE9y"))), u"k\xFFE9y");
  EXPECT_TRUE(OroString(KelCString()).isNull());
}

TEST_F(OroStringTest, MadeFromNumbersOfEveryType) {
  EXPECT_EQ(units(OroString(-42)), u"-42");
  EXPECT_EQ(units(OroString(4294967295u)), u"4294967295");
  EXPECT_EQ(units(OroString(-7L)), u"-7");
  EXPECT_EQ(units(OroString(7UL)), u"7");
  EXPECT_EQ(units(OroString(INT64_MIN)), u"-9223372036854775808");
  EXPECT_EQ(units(OroString(18446744073709551615ULL)), u"18446744073709551615");
  EXPECT_EQ(units(OroString(static_cast<short>(-3))), u"-3");
  EXPECT_FALSE((std::is_constructible_v<OroString, bool>));
  EXPECT_FALSE((std::is_constructible_v<OroString, wchar_t>));
  EXPECT_FALSE((std::is_convertible_v<int, OroString>));
  EXPECT_FALSE((std::is_convertible_v<char16_t, OroString>));
}

TEST_F(OroStringTest, RealsTakeTheExponentFormAboveTenToTheTen) {
  EXPECT_EQ(units(OroString(1.5)), u"1.500000");
  EXPECT_EQ(units(OroString(0.1f)), u"0.100000");
  EXPECT_EQ(units(OroString(1e10)), u"10000000000.000000");
  EXPECT_EQ(units(OroString(-1e10)), u"-10000000000.000000");
  EXPECT_EQ(units(OroString(1e11)), u"1.000000e+11");
  EXPECT_EQ(units(OroString(-1e11)), u"-1.000000e+11");
  EXPECT_EQ(units(OroString(1e-11)), u"0.000000");
  EXPECT_EQ(units(OroString(-std::numeric_limits<double>::infinity())), u"-inf");
  EXPECT_TRUE(units(OroString(std::numeric_limits<double>::quiet_NaN())).ends_with(u"nan"));
}

// Copying and moving.

TEST_F(OroStringTest, CopyOfAnOwnedTextHasItsOwnBuffer) {
  const tests::PoolOff poolOff;
  const OroString source(u"abc");
  source.toNarrow();
  source.toUtf8();
  tests::FakeHeap heap;
  const OroString copy(source);
  EXPECT_NE(copy.text(), source.text());
  EXPECT_EQ(units(copy), u"abc");
  EXPECT_EQ(heap.allocations, 1) << "the narrow forms are not copied";
}

TEST_F(OroStringTest, AnOwnedTextKeepsItsBorrowedNarrowFormInCopies) {
  OroString text(u"abc", "other");
  text.append(u'd');
  const OroString copy(text);
  EXPECT_EQ(units(copy), u"abcd");
  EXPECT_STREQ(copy.toNarrow(), "other");
}

TEST_F(OroStringTest, MovingTakesAllFieldsAndNullsTheSource) {
  const tests::PoolOff poolOff;
  OroString source(u"abc");
  const char16_t* const buffer = source.text();
  const char* const narrow = source.toNarrow();
  source.toUtf8();
  tests::FakeHeap heap;
  {
    OroString target(std::move(source));
    EXPECT_EQ(target.text(), buffer);
    EXPECT_TRUE(source.isNull());
    EXPECT_EQ(source.textCapacity(), 0);
    OroString& same = target;
    target = std::move(same);
    EXPECT_EQ(target.text(), buffer);
    EXPECT_STREQ(narrow, "abc");
  }
  EXPECT_EQ(heap.allocations, 0);
  EXPECT_EQ(heap.frees, 3);
}

TEST_F(OroStringTest, MoveAssignmentFreesTheOwnThreeBuffers) {
  const tests::PoolOff poolOff;
  OroString target(u"old");
  target.toNarrow();
  target.toUtf8();
  OroString source(u"new", "new");
  tests::FakeHeap heap;
  target = std::move(source);
  EXPECT_EQ(heap.frees, 3);
  EXPECT_STREQ(target.toNarrow(), "new");
  EXPECT_TRUE(source.isNull());
}

TEST_F(OroStringTest, DestructionFreesNarrowThenUtf8ThenText) {
  const tests::PoolOff poolOff;
  void* order[3] = {};
  static void** next;
  next = order;
  const KelHeapCalls before = kelHeapCalls;
  void* blocks[3] = {};
  {
    OroString text(u"abc");
    blocks[2] = const_cast<char16_t*>(text.text());
    blocks[0] = const_cast<char*>(text.toNarrow());
    blocks[1] = const_cast<char*>(text.toUtf8());
    kelHeapCalls.release = [](void* block) {
      *next++ = static_cast<char*>(block) + 8;  // behind the pool's header
      std::free(block);
    };
  }
  kelHeapCalls = before;
  for (int i = 0; i < 3; ++i) EXPECT_EQ(order[i], blocks[i]) << i;
}

TEST_F(OroStringTest, AssigningReplacesTheTextAlone) {
  OroString text(u"abc", "literal");
  text = OroString::empty();
  const OroString other(u"other");
  text = other;
  EXPECT_EQ(units(text), u"other");
  EXPECT_NE(text.text(), other.text());
  EXPECT_STREQ(text.toNarrow(), "literal");
  text.assign(borrowed(u"third"));
  EXPECT_EQ(text.textCapacity(), 0);
  EXPECT_STREQ(text.toNarrow(), "literal");
}

TEST_F(OroStringTest, AssigningItselfDoesNothing) {
  OroString text(u"abc");
  const char16_t* const buffer = text.text();
  const OroString& same = text;
  text = same;
  EXPECT_EQ(text.text(), buffer);
}

TEST_F(OroStringTest, AssignedFromWideText) {
  const char16_t literal[] = u"abc";
  OroString text(u"old");
  text.assign(literal, 2);
  EXPECT_EQ(units(text), u"ab");
  text.assign(literal, 0);
  EXPECT_EQ(text.text(), literal);
  EXPECT_EQ(text.textCapacity(), 0);
  text.assign(literal);
  EXPECT_EQ(units(text), u"abc");
  EXPECT_GT(text.textCapacity(), 0);
  text.assign(static_cast<const char16_t*>(nullptr));
  EXPECT_TRUE(text.isNull());
  EXPECT_EQ(text.textCapacity(), 0);
}

TEST_F(OroStringTest, AssignedFromItsOwnMiddle) {
  OroString text(u"abcdef");
  text.assign(text.text() + 2, 3);
  EXPECT_EQ(units(text), u"cde");
  text.assign(text.text() + 1, 0);
  EXPECT_EQ(units(text), u"de") << "its own buffer cannot be borrowed";
  EXPECT_GT(text.textCapacity(), 0);
}

TEST_F(OroStringTest, AssignedFromATextThatBorrowsItsOwnMiddle) {
  OroString text(u"abcdef");
  const OroString part(text.text() + 2, 0);
  text = part;
  EXPECT_EQ(units(text), u"cdef");
  EXPECT_GT(text.textCapacity(), 0);
  text = OroString(text.text() + 1, 0);
  EXPECT_EQ(units(text), u"def");
  EXPECT_GT(text.textCapacity(), 0);
}

TEST_F(OroStringTest, CapacityIsInBytesAsThePoolReportedThem) {
  EXPECT_EQ(OroString(u"").textCapacity(), 4);
  EXPECT_EQ(OroString(u"a").textCapacity(), 4);
  EXPECT_EQ(OroString(u"ab").textCapacity(), 8);
  EXPECT_EQ(OroString(std::u16string(4096, u'x').c_str()).textCapacity(), 16384);
}

// The narrow forms.

TEST_F(OroStringTest, NarrowFormDropsWhatIsNotAscii) {
  EXPECT_STREQ(wideAlone.toNarrow(), "caf");
  EXPECT_STREQ(OroString(u"\u20ACa\u0080b\u007F").toNarrow(), "ab\x7F");
}

TEST_F(OroStringTest, BorrowedNarrowFormStaysForEver) {
  OroString text(u"abc", "narrow");
  text.append("def");
  text.setAt(0, u'X');
  text.replaceAll(owned(u"b"), owned(u"q"));
  EXPECT_EQ(units(text), u"Xqcdef");
  EXPECT_STREQ(text.toNarrow(), "narrow");
}

TEST_F(OroStringTest, OwnedNarrowFormIsMadeAnewAtEachCall) {
  OroString text(u"abc");
  EXPECT_STREQ(text.toNarrow(), "abc");
  text.append("de");
  EXPECT_STREQ(text.toNarrow(), "abcde");
  text.truncateAt(1);
  EXPECT_STREQ(text.toNarrow(), "a");
  text.append(OroString(std::string(500, 'x').c_str()));
  EXPECT_STREQ(text.toNarrow(), ("a" + std::string(500, 'x')).c_str());
}

TEST_F(OroStringTest, NullHasEmptyNarrowForms) {
  const OroString null;
  EXPECT_STREQ(null.toNarrow(), "");
  EXPECT_STREQ(null.toUtf8(), "");
}

TEST_F(OroStringTest, Utf8FormEncodesEachUnitByItself) {
  EXPECT_STREQ(owned(u"\u20AC").toUtf8(), "\xE2\x82\xAC");
  EXPECT_STREQ(owned(u"a\u00E9").toUtf8(), "a\xC3\xA9");
  EXPECT_STREQ(owned(u"\U0001F600").toUtf8(), "\xED\xA0\xBD\xED\xB8\x80");
}

TEST_F(OroStringTest, Utf8FormIsMadeAnewAndCanBeTaken) {
  const tests::PoolOff poolOff;
  OroString text(u"abc");
  tests::FakeHeap heap;
  EXPECT_STREQ(text.toUtf8(), "abc");
  EXPECT_EQ(heap.sizes.back(), 13u + 8u) << "four bytes a unit and one, and the header";
  text.append("d");
  EXPECT_STREQ(text.toUtf8(), "abcd");
  int32_t capacity = 0;
  char* const taken = text.takeUtf8(capacity);
  EXPECT_STREQ(taken, "abcd");
  EXPECT_EQ(capacity, 17);
  EXPECT_STREQ(text.toUtf8(), "abcd");
  EXPECT_NE(text.toUtf8(), taken);
  kelPoolFree(capacity, taken);
}

struct Utf8Row {
  const char* bytes;
  const char16_t* units;
};

TEST_F(OroStringTest, DecodesUtf8) {
  for (const Utf8Row& row : {
           Utf8Row{"abc", u"abc"},
           Utf8Row{"a\xC3\xA9z", u"a\u00E9z"},
           Utf8Row{"\xE2\x82\xAC", u"\u20AC"},
           Utf8Row{"\xED\xA0\xBD\xED\xB8\x80", u"\U0001F600"},
           Utf8Row{"\xC3\x29", u"\u00E9"},
           Utf8Row{"a\xA9z", u"a\u0029z"},
           Utf8Row{"0123456789abcdef\xC3\xA9", u"0123456789abcdef\u00E9"},
           // Refused as a whole.
           Utf8Row{"abc\xF0\x9F\x98\x80", u""},
           Utf8Row{"abc\xFF", u""},
           Utf8Row{"abc\xE2\x82", u""},
           Utf8Row{"abc\xC3", u""},
           Utf8Row{"\xC1\x81", u""},
           Utf8Row{"\xE0\x81\x81", u""},
           Utf8Row{"\xE0\x9F\xBF", u""},
           Utf8Row{"", u""},
           Utf8Row{nullptr, u""},
       }) {
    const OroString text = OroString::fromUtf8(row.bytes);
    EXPECT_EQ(units(text), row.units) << (row.bytes != nullptr ? row.bytes : "null");
    EXPECT_FALSE(text.isNull());
  }
}

TEST_F(OroStringTest, ALoneContinuationByte80EndsTheTextForItsLength) {
  const OroString text = OroString::fromUtf8("ab\x80yz");
  EXPECT_EQ(text.length(), 2);
  EXPECT_EQ(text.text()[3], u'y');
}

TEST_F(OroStringTest, DecodedTextDoesNotHoldThreeTimesWhatItNeeds) {
  std::string euros;
  for (int i = 0; i < 1000; ++i) euros += "\xE2\x82\xAC";
  const OroString text = OroString::fromUtf8(euros.c_str());
  EXPECT_EQ(text.length(), 1000);
  EXPECT_EQ(text.textCapacity(), 2004);
}

TEST_F(OroStringTest, Utf8RoundTripsForUnitsOtherThanZero) {
  std::mt19937 random(1);
  for (int i = 0; i < 2000; ++i) {
    std::u16string expected;
    for (int length = static_cast<int>(random() % 60); length > 0; --length) {
      expected += static_cast<char16_t>(1 + random() % (random() % 2 == 0 ? 0x7F : 0xFFFF));
    }
    const OroString text = owned(expected);
    ASSERT_EQ(units(OroString::fromUtf8(text.toUtf8())), expected);
  }
}

TEST_F(OroStringTest, StreamsItsNarrowForm) {
  std::ostringstream stream;
  stream << wideAlone << '|' << OroString() << '|' << pair;
  EXPECT_EQ(stream.str(), "caf||Open File");
}

// Access.

TEST_F(OroStringTest, UnitsOutsideAreZeroAndAreNotWritten) {
  OroString text(u"abc");
  EXPECT_EQ(text.at(0), u'a');
  EXPECT_EQ(text.at(2), u'c');
  for (const int index : {-1, 3, 4, 1000000, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(text.at(index), 0) << index;
    text.setAt(index, u'x');
  }
  EXPECT_EQ(units(text), u"abc");
  text.truncateAt(1);
  EXPECT_EQ(text.at(2), 0) << "behind the terminator";
  EXPECT_EQ(OroString().at(0), 0);
}

TEST_F(OroStringTest, SettingAUnitOfALiteralCopiesItFirst) {
  const char16_t literal[] = u"abc";
  OroString text(literal, nullptr);
  text.setAt(1, u'X');
  EXPECT_EQ(units(text), u"aXc");
  EXPECT_EQ(literal[1], u'b');
}

TEST_F(OroStringTest, ClassifiesUnits) {
  const OroString text = borrowed(u"7 \tx\u00A0");
  EXPECT_TRUE(text.isDigit(0));
  EXPECT_FALSE(text.isDigit(3));
  EXPECT_TRUE(text.isSpace(1));
  EXPECT_TRUE(text.isSpace(2));
  EXPECT_FALSE(text.isSpace(3));
  EXPECT_EQ(text.isSpace(4), std::iswspace(0xA0) != 0) << "the C library decides";
  for (const int index : {-1, 5, 99}) {
    EXPECT_FALSE(text.isDigit(index));
    EXPECT_FALSE(text.isSpace(index));
  }
  EXPECT_FALSE(OroString().isDigit(0));
}

// Comparison.

TEST_F(OroStringTest, EqualityTakesNullAndEmptyAsOne) {
  EXPECT_TRUE(OroString() == OroString::empty());
  EXPECT_TRUE(OroString() == OroString());
  EXPECT_TRUE(owned(u"abc") == borrowed(u"abc"));
  EXPECT_TRUE(owned(u"abc") != borrowed(u"abd"));
  EXPECT_TRUE(owned(u"abc") != borrowed(u"abcd"));
}

TEST_F(OroStringTest, EqualityWithNarrowTextWidensItsBytes) {
  const char* const null = nullptr;
  EXPECT_TRUE(OroString() == "");
  EXPECT_TRUE(OroString() == null);
  EXPECT_TRUE(OroString::empty() == null);
  EXPECT_FALSE(owned(u"a") == null);
  EXPECT_TRUE(owned(u"a\xFFE9") == "a\xE9");
  EXPECT_TRUE(owned(u"a\u00E9") != "a\xE9");
  EXPECT_TRUE(owned(u"ab") != "a");
  EXPECT_TRUE(owned(u"a") != "ab");
}

TEST_F(OroStringTest, OrdersByUnsignedUnitsWithEmptyFirst) {
  struct Row {
    const char16_t* left;
    const char16_t* right;
    int order;
  };
  for (const Row& row : {
           Row{nullptr, nullptr, 0},
           Row{nullptr, u"", 0},
           Row{u"", nullptr, 0},
           Row{u"", u"a", -1},
           Row{u"a", nullptr, 1},
           Row{u"a", u"a", 0},
           Row{u"a", u"ab", -1},
           Row{u"b", u"ab", 1},
           Row{u"z", u"\u00E9", -1},
           Row{u"\uFF80", u"\u20AC", 1},
           Row{u"A", u"a", -1},
       }) {
    const OroString left = borrowed(row.left);
    const OroString right = borrowed(row.right);
    EXPECT_EQ(left.compareOrdinal(right), row.order);
    EXPECT_EQ(left < right, row.order < 0);
    EXPECT_EQ(left > right, row.order > 0);
  }
}

TEST_F(OroStringTest, StartsWithNeedsThatManyUnitsOfBoth) {
  const OroString text = borrowed(u"abc");
  EXPECT_TRUE(text.startsWith(borrowed(u"abx"), 2));
  EXPECT_FALSE(text.startsWith(borrowed(u"abx"), 3));
  EXPECT_TRUE(text.startsWith(borrowed(u"abc"), 3));
  EXPECT_FALSE(text.startsWith(borrowed(u"abc"), 4)) << "both end together";
  EXPECT_FALSE(text.startsWith(borrowed(u"ab"), 3));
  EXPECT_TRUE(text.startsWith(borrowed(u"x"), 0));
  EXPECT_TRUE(text.startsWith(borrowed(u"x"), -1));
  EXPECT_TRUE(OroString().startsWith(OroString(), 0));
  EXPECT_FALSE(OroString().startsWith(OroString(), 1));
}

TEST_F(OroStringTest, ContainsNeverTriesTheLastPosition) {
  const OroString text = borrowed(u"abc");
  EXPECT_FALSE(text.contains(text, true));
  EXPECT_FALSE(text.contains(borrowed(u"c"), true));
  EXPECT_FALSE(text.contains(borrowed(u"bc"), true));
  EXPECT_TRUE(text.contains(borrowed(u"ab"), true));
  EXPECT_TRUE(text.contains(borrowed(u"b"), true));
  EXPECT_FALSE(text.contains(borrowed(u"abcd"), true));
  EXPECT_FALSE(text.contains(borrowed(u""), true));
  EXPECT_FALSE(text.contains(OroString(), false));
  EXPECT_FALSE(OroString().contains(borrowed(u"a"), true));
}

TEST_F(OroStringTest, ContainsFoldsAsciiAlone) {
  EXPECT_FALSE(borrowed(u"xAbCx").contains(borrowed(u"aBc"), true));
  EXPECT_TRUE(borrowed(u"xAbCx").contains(borrowed(u"aBc"), false));
  EXPECT_FALSE(borrowed(u"xx\u00C9x").contains(borrowed(u"\u00E9"), false));
  EXPECT_FALSE(borrowed(u"x[x").contains(borrowed(u"{"), false));
  EXPECT_FALSE(borrowed(u"ABC").contains(borrowed(u"abc"), false));
}

TEST_F(OroStringTest, HashIsTheSumOfTheUnits) {
  EXPECT_EQ(OroString().hash(), 0u);
  EXPECT_EQ(OroString::empty().hash(), 0u);
  EXPECT_EQ(borrowed(u"ab").hash(), 195u);
  EXPECT_EQ(borrowed(u"ab").hash(), borrowed(u"ba").hash());
  EXPECT_EQ(owned(std::u16string(70000, u'\xFFFF')).hash(), 70000u * 65535u);
}

// Search.

TEST_F(OroStringTest, FindsParts) {
  const OroString text = borrowed(u"abcabc");
  EXPECT_EQ(text.find(borrowed(u"bc")), 1);
  EXPECT_EQ(text.find(borrowed(u"bc"), 2), 4);
  EXPECT_EQ(text.find(borrowed(u"bc"), 5), -1);
  EXPECT_EQ(text.find(borrowed(u"bc"), -1), -1);
  EXPECT_EQ(text.find(borrowed(u"bc"), 6), -1);
  EXPECT_EQ(text.find(borrowed(u"abcabcd"), 0), -1);
  EXPECT_EQ(text.find(borrowed(u""), 4), 0) << "not the start";
  EXPECT_EQ(text.find(borrowed(u""), -1), 0);
  EXPECT_EQ(OroString().find(OroString()), 0);
  EXPECT_EQ(OroString::empty().find(borrowed(u""), 3), 0);
  EXPECT_EQ(OroString().find(borrowed(u"a")), -1);
}

TEST_F(OroStringTest, FindsUnits) {
  const OroString text = borrowed(u"abcabc");
  EXPECT_EQ(text.find(u'c'), 2);
  EXPECT_EQ(text.find(u'c', 3), 5);
  EXPECT_EQ(text.find(u'c', 6), -1);
  EXPECT_EQ(text.find(u'c', -1), -1);
  EXPECT_EQ(text.find(u'x'), -1);
  EXPECT_EQ(text.find(u'\0'), -1);
  EXPECT_EQ(OroString().find(u'a'), -1);
}

TEST_F(OroStringTest, FindsTheLastPartUpToALimit) {
  const OroString text = borrowed(u"aaaa");
  EXPECT_EQ(text.findLast(borrowed(u"aa")), 2) << "hits may overlap";
  EXPECT_EQ(text.findLast(borrowed(u"aa"), 1), 1) << "the limit is inclusive";
  EXPECT_EQ(text.findLast(borrowed(u"aa"), 0), 0);
  EXPECT_EQ(text.findLast(borrowed(u"aa"), -5), 2);
  EXPECT_EQ(text.findLast(borrowed(u"aaaaa")), -1);
  EXPECT_EQ(text.findLast(borrowed(u"b")), -1);
  EXPECT_EQ(borrowed(u"ba").findLast(borrowed(u"a"), 0), -1);
  EXPECT_EQ(text.findLast(borrowed(u"")), -1);
  EXPECT_EQ(OroString().findLast(OroString()), -1);
}

TEST_F(OroStringTest, SearchAgreesWithAStandardString) {
  std::mt19937 random(17);
  const auto word = [&random](unsigned longest) {
    std::u16string made;
    for (unsigned length = random() % (longest + 1); length > 0; --length) {
      made += u"ab"[random() % 2];
    }
    return made;
  };
  for (int i = 0; i < 20000; ++i) {
    const std::u16string text = word(12);
    const std::u16string part = word(4);
    const int start = static_cast<int>(random() % 15) - 1;
    const int length = static_cast<int>(text.size());
    const int partLength = static_cast<int>(part.size());
    int expected = -1;
    if (partLength <= length && partLength == 0) {
      expected = 0;
    } else if (start >= 0 && start <= length - partLength) {
      expected = static_cast<int>(text.find(part, static_cast<size_t>(start)));
    }
    const OroString own = owned(text);
    ASSERT_EQ(own.find(owned(part), start), expected);
    int last = -1;
    if (partLength > 0) {
      for (int hit = -1; (hit = own.find(owned(part), hit + 1)) >= 0;) {
        if (start < 0 || hit <= start) last = hit;
      }
    }
    ASSERT_EQ(own.findLast(owned(part), start), last);
    const bool inFront = length > 0 && partLength > 0 &&
                         text.substr(0, text.size() - 1).find(part) != std::u16string::npos;
    ASSERT_EQ(own.contains(owned(part), true), inFront);
    ASSERT_EQ(own.compareOrdinal(owned(part)), text < part ? -1 : text > part ? 1 : 0);
    ASSERT_EQ(own == owned(part), text == part);
  }
}

// Numbers at the front.

TEST_F(OroStringTest, ReadsIntegers) {
  struct Row {
    const char16_t* text;
    int value;
    bool ok;
  };
  for (const Row& row : {
           Row{u"42", 42, true},
           Row{u" -7 apples", -7, true},
           Row{u"0x10", 16, true},
           Row{u"010", 8, true},
           Row{u"08", 0, true},
           Row{u"0x", 0, true},
           Row{u"12\u0663", 12, true},
           Row{u"abc", 0, false},
           Row{u"", 0, false},
           Row{nullptr, 0, false},
           Row{u"\u00A01", 0, false},
           Row{u"4294967295", -1, true},
           Row{u"99999999999", 1215752191, true},
       }) {
    bool ok = !row.ok;
    EXPECT_EQ(borrowed(row.text).toInt(&ok), row.value);
    EXPECT_EQ(ok, row.ok);
    EXPECT_EQ(borrowed(row.text).toInt(), row.value);
  }
}

TEST_F(OroStringTest, ReadsReals) {
  struct Row {
    const char16_t* text;
    double value;
    bool ok;
  };
  for (const Row& row : {
           Row{u"1.5", 1.5, true},
           Row{u"\t-2.5e3;", -2500, true},
           Row{u"1e", 1, true},
           Row{u"12,5", 12, true},
           Row{u"-0.696975654", -0.696975654, true},
           Row{u".", 0, false},
           Row{u"abc", 0, false},
           Row{u"", 0, false},
           Row{nullptr, 0, false},
       }) {
    bool ok = !row.ok;
    EXPECT_EQ(borrowed(row.text).toDouble(&ok), row.value);
    EXPECT_EQ(ok, row.ok);
    EXPECT_EQ(borrowed(row.text).toDouble(), row.value);
  }
}

}  // namespace
