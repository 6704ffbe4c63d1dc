#include "orobasictypes/kelcstring.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/orostring.h"
#include "tests/orobasictypes/texts.h"
#include "tests/support/fakeheap.h"
#include "tests/support/pooloff.h"

namespace {

using tests::bytes;

constexpr KelCString constant = KelCString::borrow("constant");
constinit KelCString variable = KelCString::borrow("variable");

KelCString borrowed(const char* text) { return KelCString::borrow(text); }

TEST(KelCString, IsAPointerAndACapacity) {
  EXPECT_EQ(sizeof(KelCString), 16u);
  EXPECT_FALSE(std::has_virtual_destructor_v<KelCString>);
  const KelCString null;
  EXPECT_EQ(null.text(), nullptr);
  EXPECT_EQ(null.capacity(), 0);
  EXPECT_STREQ(null.c_str(), "");
}

TEST(KelCString, LiteralsAreConstantInitialised) {
  static_assert(constant.text()[0] == 'c' && constant.capacity() == 0);
  EXPECT_STREQ(variable.text(), "variable");
}

TEST(KelCString, BorrowingAndCopyingABorrowedTextNeverAllocates) {
  const char literal[] = "x";
  tests::FakeHeap heap;
  {
    KelCString first = KelCString::borrow(literal);
    KelCString copy = first;
    KelCString assigned;
    assigned = copy;
    KelCString moved = std::move(copy);
    EXPECT_EQ(assigned.text(), literal);
    EXPECT_EQ(moved.text(), literal);
    EXPECT_EQ(first.capacity(), 0);
    EXPECT_EQ(first.length(), 1);
    EXPECT_TRUE(first.equals("x"));
    EXPECT_NE(first.hash(), 0u);
    EXPECT_EQ(first.find("x"), 0);
  }
  EXPECT_EQ(heap.allocations + heap.reallocations, 0);
  EXPECT_EQ(heap.frees, 0);
}

TEST(KelCString, CopyOfAnOwnedTextIsADeepOneOfItsLength) {
  KelCString first("abc");
  first.append("defghijklmnopq");
  first.writableText()[2] = '\0';
  const KelCString copy = first;
  EXPECT_NE(copy.text(), first.text());
  EXPECT_EQ(bytes(copy), bytes(first));
  EXPECT_EQ(first.capacity(), 20);
  EXPECT_EQ(copy.capacity(), 4) << "room for what it holds, not for what the source had";
}

TEST(KelCString, CapacityIsWhatThePoolReported) {
  EXPECT_EQ(KelCString("").capacity(), 4);
  EXPECT_EQ(KelCString("abc").capacity(), 4);
  EXPECT_EQ(KelCString("abcd").capacity(), 8);
  EXPECT_EQ(KelCString(std::string(8191, 'x').c_str()).capacity(), 8192);
  EXPECT_EQ(KelCString(std::string(8192, 'x').c_str()).capacity(), 16384);
}

TEST(KelCString, DestructionFreesOnlyOwnedTexts) {
  const tests::PoolOff poolOff;
  tests::FakeHeap heap;
  { KelCString text("abc"); }
  EXPECT_EQ(heap.frees, 1);
  { KelCString text = borrowed("abc"); }
  EXPECT_EQ(heap.frees, 1);
}

TEST(KelCString, MovingTakesTheBufferAndNullsTheSource) {
  KelCString source("text");
  const char* const buffer = source.text();
  KelCString target(std::move(source));
  EXPECT_EQ(target.text(), buffer);
  EXPECT_TRUE(source.isNull());
  EXPECT_EQ(source.capacity(), 0);
  KelCString second("other");
  second = std::move(target);
  EXPECT_EQ(second.text(), buffer);
  KelCString& same = second;
  second = std::move(same);
  EXPECT_EQ(bytes(second), "text");
}

// Construction.

TEST(KelCString, MadeFromTexts) {
  EXPECT_TRUE(KelCString(static_cast<const char*>(nullptr)).isNull());
  const KelCString empty("");
  EXPECT_FALSE(empty.isNull());
  EXPECT_GT(empty.capacity(), 0);
  EXPECT_EQ(bytes(KelCString("abc", 2)), "ab");
  EXPECT_EQ(bytes(KelCString("abc", 9)), "abc");
  EXPECT_TRUE(KelCString(nullptr, 2).isNull());
  for (const int count : {0, -1, INT32_MIN}) {
    const KelCString none("abc", count);
    EXPECT_FALSE(none.isNull()) << count;
    EXPECT_TRUE(none.isEmpty()) << count;
  }
}

TEST(KelCString, MadeFromAPartIsClipped) {
  EXPECT_EQ(bytes(KelCString("abcdef", 2, 3)), "cde");
  EXPECT_EQ(bytes(KelCString("abcdef", 4, 9)), "ef");
  EXPECT_EQ(bytes(KelCString("abcdef", -3, 2)), "ab");
  EXPECT_EQ(bytes(KelCString("abcdef", 9, 2)), "");
  EXPECT_EQ(bytes(KelCString("abcdef", 2, -1)), "");
  EXPECT_TRUE(KelCString(nullptr, 1, 1).isNull());
}

TEST(KelCString, MadeFromSeveralTexts) {
  const char* const null = nullptr;
  EXPECT_EQ(bytes(KelCString("ab", "cd")), "abcd");
  EXPECT_EQ(bytes(KelCString(null, "cd")), "cd");
  EXPECT_EQ(bytes(KelCString("ab", null)), "ab");
  EXPECT_EQ(bytes(KelCString("a", "b", "c")), "abc");
  EXPECT_EQ(bytes(KelCString("a", null, "c")), "ac");
  EXPECT_TRUE(KelCString("", "").isNull());
  EXPECT_TRUE(KelCString(null, null).isNull());
  EXPECT_TRUE(KelCString("", null, "").isNull());
}

TEST(KelCString, MadeFromAList) {
  const char* const list[] = {"GUI", "/", "", "CommandLine", nullptr};
  EXPECT_EQ(bytes(KelCString::fromList(list)), "GUI/CommandLine");
  const char* const blanks[] = {"", "", nullptr};
  EXPECT_TRUE(KelCString::fromList(blanks).isNull());
  EXPECT_TRUE(KelCString::fromList(blanks + 2).isNull());
  EXPECT_TRUE(KelCString::fromList(nullptr).isNull());
}

TEST(KelCString, MadeFromCharactersAndNumbers) {
  EXPECT_EQ(bytes(KelCString('x')), "x");
  EXPECT_EQ(KelCString('x').capacity(), 4);
  EXPECT_EQ(bytes(KelCString(-42)), "-42");
  EXPECT_EQ(bytes(KelCString(0)), "0");
  EXPECT_EQ(bytes(KelCString(INT32_MIN)), "-2147483648");
  EXPECT_EQ(bytes(KelCString(0.1f)), "0.100000");
  EXPECT_EQ(bytes(KelCString(2.0)), "2.000000");
  EXPECT_EQ(bytes(KelCString(-1e308)).size(), 317u);
  EXPECT_EQ(bytes(KelCString::fromTextAndInt("MAIN_ARGV/", 12)), "MAIN_ARGV/12");
  EXPECT_EQ(bytes(KelCString::fromTextAndInt(nullptr, -1)), "-1");
}

TEST(KelCString, MadeExactlyFromRealNumbers) {
  EXPECT_EQ(bytes(KelCString(0.1f, true)), "0.1");
  EXPECT_EQ(bytes(KelCString(2.0f, true)), "2");
  EXPECT_EQ(bytes(KelCString(0.1, true)), "0.1");
}

TEST(KelCString, NeitherTruthNorWideCharacterPrintsAsANumber) {
  EXPECT_FALSE((std::is_constructible_v<KelCString, bool>));
  EXPECT_FALSE((std::is_constructible_v<KelCString, wchar_t>));
  EXPECT_FALSE((std::is_convertible_v<int, KelCString>));
  EXPECT_FALSE((std::is_convertible_v<char, KelCString>));
  EXPECT_FALSE((std::is_assignable_v<KelCString&, int>));
}

TEST(KelCString, MadeFromAnOutputStringStream) {
  std::ostringstream stream;
  EXPECT_EQ(bytes(KelCString(stream)), "");
  stream << "size " << 7;
  EXPECT_EQ(bytes(KelCString(stream)), "size 7");
}

TEST(KelCString, SharedEmptyStringIsBorrowedAndNotNull) {
  EXPECT_FALSE(KelCString::empty().isNull());
  EXPECT_EQ(KelCString::empty().capacity(), 0);
  EXPECT_TRUE(KelCString::empty().isEmpty());
}

// Assignment.

TEST(KelCString, AssigningItselfOrItsOwnPointerDoesNothing) {
  KelCString text("abc");
  const char* const buffer = text.text();
  const KelCString& same = text;
  text = same;
  EXPECT_EQ(text.text(), buffer);
  text = text.text();
  EXPECT_EQ(text.text(), buffer);
  KelCString literal = borrowed("abc");
  literal = literal.text();
  EXPECT_EQ(literal.capacity(), 0);
}

TEST(KelCString, AssignedFromTextsAndCharacters) {
  KelCString text("abc");
  text = "other text";
  EXPECT_EQ(bytes(text), "other text");
  text = 'c';
  EXPECT_EQ(bytes(text), "c");
  text = KelCString("from another");
  EXPECT_EQ(bytes(text), "from another");
  text = static_cast<const char*>(nullptr);
  EXPECT_TRUE(text.isNull());
  EXPECT_EQ(text.capacity(), 0);
}

TEST(KelCString, AssignedWithACount) {
  struct Row {
    int count;
    const char* result;
  };
  for (const Row& row : {Row{2, "ab"}, Row{3, "abc"}, Row{99, "abc"}, Row{-1, "abc"}}) {
    KelCString text("something");
    EXPECT_EQ(bytes(text.assign("abc", row.count)), row.result) << row.count;
  }
  KelCString text("something");
  EXPECT_TRUE(text.assign("abc", 0).isNull());
  text = "something";
  EXPECT_TRUE(text.assign(static_cast<const char*>(nullptr), 2).isNull());
  text = "something";
  EXPECT_TRUE(text.assign("", 5).isNull());
}

TEST(KelCString, AssigningTheOldLengthReusesTheOwnBufferAlone) {
  KelCString text("abcd");
  const char* const buffer = text.text();
  text.assign("wxyz", 4);
  EXPECT_EQ(text.text(), buffer);
  EXPECT_EQ(bytes(text), "wxyz");
  text.assign("xyz", 3);
  EXPECT_EQ(bytes(text), "xyz");
  KelCString literal = borrowed("abcd");
  literal.assign("wxyz", 4);
  EXPECT_GT(literal.capacity(), 0);
}

TEST(KelCString, AssignedFromItsOwnMiddle) {
  KelCString text("abcdef");
  text.assign(text.text() + 2, 3);
  EXPECT_EQ(bytes(text), "cde");
  KelCString whole("abcdef");
  whole = whole.text() + 1;
  EXPECT_EQ(bytes(whole), "bcdef");
}

TEST(KelCString, AssignedFromATextThatBorrowsItsOwnMiddle) {
  KelCString text("abcdef");
  const KelCString part = KelCString::borrow(text.text() + 2);
  text = part;
  EXPECT_EQ(bytes(text), "cdef");
  EXPECT_GT(text.capacity(), 0);
  text = KelCString::borrow(text.text() + 1);
  EXPECT_EQ(bytes(text), "def");
  EXPECT_GT(text.capacity(), 0);
}

TEST(KelCString, AssignedFromAList) {
  KelCString text("abcd");
  const char* const buffer = text.text();
  const char* const sameLength[] = {"wx", "yz", nullptr};
  text.assignList(sameLength);
  EXPECT_EQ(text.text(), buffer);
  EXPECT_EQ(bytes(text), "wxyz");
  const char* const longer[] = {"one ", "two ", "three", nullptr};
  EXPECT_EQ(bytes(text.assignList(longer)), "one two three");
  EXPECT_TRUE(text.assignList(nullptr).isNull());
}

TEST(KelCString, AssignedFromAListOfItsOwnParts) {
  KelCString text("abcd");
  const char* const turned[] = {text.text() + 2, "x", "y", nullptr};
  EXPECT_EQ(bytes(text.assignList(turned)), "cdxy");
}

TEST(KelCString, AssignedFromWideTextKeepsTheLowBytes) {
  KelCString text;
  EXPECT_EQ(bytes(text.assign(u"ab\u20AC", -1)), "ab\xAC");
  EXPECT_EQ(bytes(text.assign(u"abc", 2)), "ab");
  EXPECT_EQ(bytes(text.assign(u"abc", 9)), "abc");
  EXPECT_EQ(bytes(text.assign(u"a\u0100b", -1)), "a");
  EXPECT_TRUE(text.assign(u"abc", 0).isNull());
  EXPECT_TRUE(text.assign(u"", -1).isNull());
  text = "abc";
  EXPECT_TRUE(text.assign(static_cast<const char16_t*>(nullptr), 4).isNull());
}

TEST(KelCString, WideTextReusesABufferThatExceedsTheCount) {
  KelCString text("abcdefg");  // capacity 8
  const char* const buffer = text.text();
  text.assign(u"1234567", -1);
  EXPECT_EQ(text.text(), buffer);
  text.assign(u"12", -1);
  EXPECT_EQ(text.text(), buffer);
  text.assign(u"12345678", -1);
  EXPECT_GT(text.capacity(), 8);
  EXPECT_EQ(bytes(text), "12345678");
}

TEST(KelCString, TakesTheUtf8BufferOfAWideText) {
  const tests::PoolOff poolOff;
  const OroString wide(u"a\u20AC");
  const char* const buffer = wide.toUtf8();
  tests::FakeHeap heap;
  KelCString text("old");
  text = wide;
  EXPECT_EQ(bytes(text), "a\xE2\x82\xAC");
  EXPECT_EQ(text.capacity(), 9) << "four bytes a unit and one";
  EXPECT_EQ(heap.allocations, 2) << "the old text and the UTF-8 form";
  EXPECT_STREQ(wide.toUtf8(), "a\xE2\x82\xAC") << "the source makes itself a new one";
  EXPECT_NE(wide.toUtf8(), text.text());
  static_cast<void>(buffer);
}

TEST(KelCString, TakenFromANullWideTextIsEmptyAndNotNull) {
  KelCString text("old");
  text = OroString();
  EXPECT_FALSE(text.isNull());
  EXPECT_TRUE(text.isEmpty());
}

// Reading.

TEST(KelCString, ReadsDecimalIntegersAtTheFront) {
  struct Row {
    const char* text;
    int value;
  };
  for (const Row& row : {Row{"42", 42}, Row{"-7x", -7}, Row{"  +9", 9}, Row{"0x10", 0},
                         Row{"010", 10}, Row{"abc", 0}, Row{"", 0}, Row{nullptr, 0},
                         Row{"4294967297", 1}, Row{"99999999999999999999", -1}}) {
    EXPECT_EQ(borrowed(row.text).toInt(), row.value) << bytes(borrowed(row.text));
  }
}

TEST(KelCString, ReadsRealNumbers) {
  EXPECT_EQ(borrowed("1.5x").toFloat(), 1.5f);
  EXPECT_EQ(borrowed(" -2e3").toDouble(), -2000.0);
  EXPECT_EQ(KelCString().toFloat(), 0.0f);
  EXPECT_EQ(KelCString().toDouble(), 0.0);
  EXPECT_EQ(borrowed("1e-40").toFloat(), 1e-40f) << "too small for full accuracy, yet in range";
}

template <class Exception>
std::string messageOf(const char* text, bool isFloat) {
  try {
    isFloat ? static_cast<double>(borrowed(text).toFloat()) : borrowed(text).toDouble();
  } catch (const Exception& exception) {
    return exception.what();
  }
  return "nothing thrown";
}

TEST(KelCString, ThrowsForTextsThatAreNoRealNumber) {
  EXPECT_EQ(messageOf<std::invalid_argument>("abc", true), "invalid stof argument");
  EXPECT_EQ(messageOf<std::invalid_argument>("", false), "invalid stod argument");
  EXPECT_EQ(messageOf<std::out_of_range>("1e39", true), "stof argument out of range");
  EXPECT_EQ(messageOf<std::out_of_range>("1e-50", true), "stof argument out of range");
  EXPECT_EQ(messageOf<std::out_of_range>("1e400", false), "stod argument out of range");
}

TEST(KelCString, StreamsItsTextAndNothingForNull) {
  std::ostringstream stream;
  stream << '[' << borrowed("abc") << KelCString() << ']';
  EXPECT_EQ(stream.str(), "[abc]");
}

TEST(KelCString, ReadsLines) {
  std::istringstream stream("first\n\nthird\r\nlast");
  KelCString line("old");
  EXPECT_TRUE(line.readLine(stream));
  EXPECT_EQ(bytes(line), "first");
  EXPECT_TRUE(line.readLine(stream));
  EXPECT_FALSE(line.isNull());
  EXPECT_TRUE(line.isEmpty());
  EXPECT_TRUE(line.readLine(stream));
  EXPECT_EQ(bytes(line), "third\r");
  EXPECT_TRUE(line.readLine(stream));
  EXPECT_EQ(bytes(line), "last");
  EXPECT_FALSE(line.readLine(stream));
  EXPECT_TRUE(line.isNull());
}

TEST(KelCString, ReadsLinesOfUpTo4095Bytes) {
  std::istringstream fits(std::string(4095, 'x') + "\nnext");
  KelCString line;
  EXPECT_TRUE(line.readLine(fits));
  EXPECT_EQ(line.length(), 4095);
  std::istringstream tooLong(std::string(4096, 'x') + "\nnext");
  EXPECT_FALSE(line.readLine(tooLong));
  EXPECT_TRUE(line.isNull());
}

// Comparison.

TEST(KelCString, NullAndEmptyAreTwoKeys) {
  EXPECT_FALSE(KelCString().equals(""));
  EXPECT_FALSE(borrowed("").equals(KelCString()));
  EXPECT_TRUE(KelCString().equals(KelCString()));
  EXPECT_TRUE(borrowed("").equals(""));
  EXPECT_TRUE(KelCString().isEmpty());
  EXPECT_TRUE(borrowed("").isEmpty());
  EXPECT_TRUE(borrowed("a") == "a");
  EXPECT_TRUE(borrowed("a") != KelCString("b"));
}

TEST(KelCString, OrdersByUnsignedBytesWithNullFirst) {
  struct Row {
    const char* left;
    const char* right;
    int order;
    bool less;
    bool lessOrEqual;
  };
  for (const Row& row : {
           Row{nullptr, nullptr, 0, false, true},
           Row{nullptr, "", -1, true, true},
           Row{"", nullptr, 1, false, false},
           Row{"", "", 0, false, true},
           Row{"a", "b", -1, true, true},
           Row{"b", "a", 1, false, false},
           Row{"a", "ab", -1, true, true},
           Row{"a", "\xE9", -1, true, true},
           Row{"A", "a", -1, true, true},
       }) {
    const KelCString left = borrowed(row.left);
    EXPECT_EQ(left.compare(borrowed(row.right)), row.order) << left << " " << row.order;
    EXPECT_EQ(left.less(row.right), row.less) << left;
    EXPECT_EQ(left.lessOrEqual(row.right), row.lessOrEqual) << left;
  }
}

TEST(KelCString, ComparesWithAListBySignedBytes) {
  const char* const list[] = {"ab", "", "cd", nullptr};
  EXPECT_EQ(borrowed("abcd").compareList(list), 0);
  EXPECT_EQ(borrowed("abcc").compareList(list), -1);
  EXPECT_EQ(borrowed("abce").compareList(list), 1);
  EXPECT_EQ(borrowed("abc").compareList(list), -1);
  EXPECT_EQ(borrowed("abcde").compareList(list), 1);
  EXPECT_EQ(KelCString().compareList(list), -1);
  EXPECT_EQ(KelCString().compareList(nullptr), 0);
  EXPECT_EQ(borrowed("").compareList(list + 3), 0);
  const char* const high[] = {"\xE9", nullptr};
  EXPECT_EQ(borrowed("a").compareList(high), 1) << "as signed, E9 lies below a";
  EXPECT_EQ(borrowed("").compareList(high), 1) << "and below the end of a text";
  EXPECT_EQ(borrowed("\xE9").compareList(nullptr), -1);
}

TEST(KelCString, HashTakesBytesAsSigned) {
  EXPECT_EQ(KelCString().hash(), 0u);
  EXPECT_EQ(borrowed("").hash(), 5381u);
  EXPECT_EQ(borrowed("a").hash(), 5381u * 33 + 97);
  EXPECT_EQ(borrowed("\xFF").hash(), 177572u);
}

TEST(KelCString, HashOfAListIsThatOfTheJoinedText) {
  const char* const list[] = {"GUI", "/", "", "CommandLine", nullptr};
  EXPECT_EQ(KelCString::hashList(list), borrowed("GUI/CommandLine").hash());
  EXPECT_EQ(KelCString::hashList(list + 4), 5381u);
  EXPECT_EQ(KelCString::hashList(nullptr), 0u);
}

// Search.

TEST(KelCString, FindsCharacters) {
  const KelCString text = borrowed("a/b/c");
  EXPECT_EQ(text.find('/'), 1);
  EXPECT_EQ(text.find('/', 2), 3);
  EXPECT_EQ(text.find('/', 4), -1);
  EXPECT_EQ(text.find('/', -1), -1);
  EXPECT_EQ(text.find('c', 5), -1);
  EXPECT_EQ(text.find('\0'), -1);
  EXPECT_EQ(KelCString().find('a'), -1);
  EXPECT_EQ(borrowed("").find('a'), -1);
  EXPECT_EQ(text.findLast('/'), 3);
  EXPECT_EQ(text.findLast('x'), -1);
  EXPECT_EQ(text.findLast('\0'), -1);
  EXPECT_EQ(KelCString().findLast('a'), -1);
}

struct Assertion {
  std::string expression;
  std::string file;
};

class KelCStringAssertions : public testing::Test {
 protected:
  KelCStringAssertions() {
    kelSetAssertCallback(
        [](void* context, const char* expression, const char* file, int32_t) {
          static_cast<std::vector<Assertion>*>(context)->push_back({expression, file});
        },
        &seen_);
  }
  ~KelCStringAssertions() override { kelSetAssertCallback(nullptr, nullptr); }

  std::vector<Assertion> seen_;
};

TEST_F(KelCStringAssertions, FindsParts) {
  const KelCString text = borrowed("abcabc");
  EXPECT_EQ(text.find("bc"), 1);
  EXPECT_EQ(text.find("bc", 2), 4);
  EXPECT_EQ(text.find("bc", 5), -1);
  EXPECT_EQ(text.find("bc", 99), -1);
  EXPECT_EQ(text.find("bc", 4), 4) << "the last place where it fits";
  EXPECT_EQ(text.find("bc", INT32_MAX), -1);
  EXPECT_EQ(text.find("abcabcd", -1), -1) << "too long comes first";
  EXPECT_EQ(text.find("", -1), 0) << "then the empty part";
  EXPECT_EQ(text.find("", 4), 0);
  EXPECT_EQ(text.find(nullptr, 4), 0);
  EXPECT_EQ(KelCString().find("", 0), 0);
  EXPECT_EQ(KelCString().find("a", 0), -1);
  EXPECT_EQ(KelCString().find("a", -1), -1);
  EXPECT_EQ(borrowed("").find("", -1), 0);
  EXPECT_TRUE(seen_.empty());
}

TEST_F(KelCStringAssertions, NegativeStartIsAssertedAgainst) {
  EXPECT_EQ(borrowed("a").find("a", -1), -1);
  ASSERT_EQ(seen_.size(), 1u);
  EXPECT_EQ(seen_[0].expression, "start >= 0");
  EXPECT_EQ(seen_[0].file, "orobasictypes/kelcstring");
}

TEST(KelCString, FindsTheLastPart) {
  const KelCString text = borrowed("abcabc");
  EXPECT_EQ(text.findLast("bc"), 4);
  EXPECT_EQ(text.findLast("abcabc"), 0);
  EXPECT_EQ(text.findLast("abcabcd"), -1);
  EXPECT_EQ(text.findLast("x"), -1);
  EXPECT_EQ(text.findLast(""), 6);
  EXPECT_EQ(text.findLast(nullptr), 6);
  EXPECT_EQ(KelCString().findLast(""), 0);
  EXPECT_EQ(borrowed("aaaa").findLast("aa"), 2);
}

// Editing.

TEST(KelCString, AppendsInPlaceWhenTheCapacityHoldsIt) {
  KelCString text("abc");
  text.append("defg");
  EXPECT_EQ(text.capacity(), 8) << "exactly what is needed";
  text.writableText()[3] = '\0';
  const char* const buffer = text.text();
  text.append("xy");
  text.append('z');
  EXPECT_EQ(bytes(text), "abcxyz");
  text.append('.');
  EXPECT_EQ(text.text(), buffer);
  text.append('!');
  EXPECT_EQ(text.capacity(), 12);
  EXPECT_EQ(bytes(text), "abcxyz.!");
}

TEST(KelCString, AppendingNothingChangesNothing) {
  KelCString text = borrowed("abc");
  text.append("");
  text.append(static_cast<const char*>(nullptr));
  text.append('\0');
  EXPECT_EQ(text.capacity(), 0);
  KelCString null;
  null.append("");
  EXPECT_TRUE(null.isNull());
  null.append("a");
  EXPECT_EQ(bytes(null), "a");
}

TEST(KelCString, AppendsItselfAndItsOwnMiddle) {
  KelCString text("abcdefghij");
  for (int i = 0; i < 3; ++i) text.append(text.text());
  EXPECT_EQ(text.length(), 80);
  KelCString roomy("abcxefghijklmnop");
  roomy.writableText()[4] = '\0';
  roomy.append(roomy.text() + 1);  // in place
  EXPECT_EQ(bytes(roomy), "abcxbcx");
}

TEST(KelCString, ConcatLeavesTheStringAlone) {
  const KelCString text = borrowed("ab");
  EXPECT_EQ(bytes(text.concat("cd")), "abcd");
  EXPECT_EQ(bytes(text.concat('c')), "abc");
  EXPECT_EQ(text.concat("").text(), text.text()) << "a copy of a borrowed text shares it";
  EXPECT_EQ(bytes(text), "ab");
  EXPECT_EQ(bytes(KelCString().concat("x")), "x");
  EXPECT_TRUE(KelCString().concat("").isNull());
}

TEST(KelCString, ReplacesCharactersOfOwnedTextsAlone) {
  KelCString text("a/b/c");
  text.replaceChar('/', '.');
  EXPECT_EQ(bytes(text), "a.b.c");
  KelCString literal = borrowed("a/b");
  literal.replaceChar('/', '.');
  EXPECT_EQ(bytes(literal), "a/b");
  EXPECT_EQ(literal.capacity(), 0);
}

TEST(KelCString, ReplacesEveryOccurrenceAndGoesOnBehindTheInsertedText) {
  struct Row {
    const char* text;
    const char* from;
    const char* to;
    const char* result;
  };
  for (const Row& row : {
           Row{"aa", "a", "aa", "aaaa"},
           Row{"a%1b%1", "%1", "xyz", "axyzbxyz"},
           Row{"abab", "ab", "", ""},
           Row{"abc", "", "x", "abc"},
           Row{"abc", "b", "b", "abc"},
           Row{"abc", nullptr, "x", "abc"},
           Row{"abc", "b", nullptr, "abc"},
           Row{"aaa", "aa", "b", "ba"},
           Row{"abc", "x", "y", "abc"},
           Row{"", "x", "y", ""},
       }) {
    for (KelCString text : {borrowed(row.text), KelCString(row.text)}) {
      KelCString& result = text.replace(row.from, row.to);
      EXPECT_EQ(&result, &text);
      EXPECT_EQ(bytes(text), row.result) << row.text;
    }
  }
  EXPECT_TRUE(KelCString().replace("a", "b").isNull());
}

TEST(KelCString, ReplacesByItsOwnText) {
  KelCString text("axb");
  text.replace("x", text.text());
  EXPECT_EQ(bytes(text), "aaxbb");
}

TEST(KelCString, SplicesInPlaceWhenTheLengthStays) {
  KelCString text("abcdef");
  const char* const buffer = text.text();
  text.splice(1, 2, "XY");
  EXPECT_EQ(bytes(text), "aXYdef");
  EXPECT_EQ(text.text(), buffer);
  text.splice(1, 2, "-");
  EXPECT_EQ(bytes(text), "a-def");
  text.splice(2, 0, "++");
  EXPECT_EQ(bytes(text), "a-++def");
  text.splice(99, 5, "!");
  EXPECT_EQ(bytes(text), "a-++def!");
  text.splice(-5, 1, nullptr);
  EXPECT_EQ(bytes(text), "-++def!");
  text.splice(0, 99, "");
  EXPECT_EQ(bytes(text), "");
  KelCString null;
  null.splice(0, 1, "a");
  EXPECT_EQ(bytes(null), "a");
  KelCString own("abcdef");
  own.splice(0, 2, own.text() + 4);
  EXPECT_EQ(bytes(own), "efcdef");
}

TEST(KelCString, SplicingALiteralCopiesItFirst) {
  const char literal[] = "abc";
  KelCString text = KelCString::borrow(literal);
  text.splice(0, 1, "X");
  EXPECT_EQ(bytes(text), "Xbc");
  EXPECT_STREQ(literal, "abc");
}

TEST(KelCString, ChangesCaseOfAsciiOnACopyOfALiteral) {
  const char literal[] = "aZ\xE9[";
  KelCString text = KelCString::borrow(literal);
  text.toUpper();
  EXPECT_EQ(bytes(text), "AZ\xE9[");
  EXPECT_STREQ(literal, "aZ\xE9[");
  EXPECT_GT(text.capacity(), 0);
  text.toLower();
  EXPECT_EQ(bytes(text), "az\xE9[");
  KelCString null;
  null.toLower();
  EXPECT_TRUE(null.isNull());
}

TEST(KelCString, Reverses) {
  KelCString text = borrowed("abcd");
  text.reverse();
  EXPECT_EQ(bytes(text), "dcba");
  KelCString null;
  null.reverse();
  EXPECT_TRUE(null.isNull());
}

TEST(KelCString, WritableTextIsAnOwnCopyOfALiteral) {
  const char literal[] = "a/b";
  KelCString text = KelCString::borrow(literal);
  text.writableText()[1] = '.';
  EXPECT_EQ(bytes(text), "a.b");
  EXPECT_STREQ(literal, "a/b");
  const char* const buffer = text.text();
  EXPECT_EQ(text.writableText(), buffer);
  EXPECT_EQ(KelCString().writableText(), nullptr);
}

TEST(KelCString, Trims) {
  EXPECT_TRUE(KelCString().trim().isNull());
  EXPECT_FALSE(borrowed("   ").trim().isNull());
  EXPECT_TRUE(borrowed("   ").trim().isEmpty());
  EXPECT_EQ(bytes(borrowed("\t a b\n\v\f\r ").trim()), "a b");
  EXPECT_EQ(bytes(borrowed("\xA0 x\x85").trim()), "\xA0 x\x85");
}

TEST(KelCString, Simplifies) {
  struct Row {
    const char* text;
    char separator;
    const char* result;
  };
  for (const Row& row : {
           Row{" a  b ", ' ', "a b"},
           Row{"a\t\n b", '_', "a_b"},
           Row{"a-", '-', "a"},
           Row{"a- ", '-', "a-"},
           Row{"-a", '-', "-a"},
           Row{"  -a", '-', "-a"},
           Row{"   ", ' ', ""},
           Row{"", ' ', ""},
       }) {
    const KelCString simple = borrowed(row.text).simplify(row.separator);
    EXPECT_EQ(bytes(simple), row.result) << row.text;
    EXPECT_FALSE(simple.isNull());
  }
  EXPECT_FALSE(KelCString().simplify(' ').isNull());
  EXPECT_TRUE(KelCString().simplify(' ').isEmpty());
}

TEST_F(KelCStringAssertions, Elides) {
  struct Row {
    int maxLength;
    int where;
    int dots;
    const char* result;
  };
  for (const Row& row : {
           Row{10, 0, 3, "abcdefghij"},
           Row{9, 0, 3, "abcdef..."},
           Row{9, 1, 3, "...efghij"},
           Row{9, 2, 3, "abc...hij"},
           Row{8, 2, 3, "ab...hij"},
           Row{3, 0, 3, "..."},
           Row{2, 7, 3, ".."},
           Row{0, 0, 3, ""},
           Row{-4, 0, 3, ""},
           Row{4, 0, 0, "abcd"},
           Row{4, 0, -2, "abcd"},
           Row{12, 9, 3, "abcdefghij"},
       }) {
    EXPECT_EQ(bytes(borrowed("abcdefghij").elide(row.maxLength, row.where, row.dots)), row.result)
        << row.maxLength << " " << row.where;
  }
  EXPECT_TRUE(seen_.empty());
  EXPECT_TRUE(KelCString().elide(3, 0, 1).isNull());
}

TEST_F(KelCStringAssertions, ElidingNowhereIsAssertedAgainst) {
  EXPECT_EQ(bytes(borrowed("abcdef").elide(5, 3, 2)), "abcdef");
  EXPECT_EQ(bytes(borrowed("abcdef").elide(5, -1, 2)), "abcdef");
  ASSERT_EQ(seen_.size(), 2u);
  EXPECT_EQ(seen_[0].expression, "");
  EXPECT_EQ(seen_[0].file, "orobasictypes/kelcstring");
}

// Random edits against a plain model.

class KelCStringModel : public testing::Test {
 protected:
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  std::string word(int longest) {
    std::string made;
    for (int length = below(longest + 1); length > 0; --length) {
      made += "ab c"[below(4)];
    }
    return made;
  }

  std::mt19937 random_{20240517};
};

void replaceInModel(std::string& model, const std::string& from, const std::string& to) {
  if (from.empty()) return;
  for (size_t at = 0; (at = model.find(from, at)) != model.npos; at += to.size()) {
    model.replace(at, from.size(), to);
  }
}

TEST_F(KelCStringModel, EditsAgreeWithAStandardString) {
  KelCString text("");
  std::string model;
  for (int step = 0; step < 20000; ++step) {
    const std::string a = word(3);
    const std::string b = word(4);
    const int length = static_cast<int>(model.size());
    const int start = below(length + 1);
    switch (below(7)) {
      case 0:
        text.append(a.c_str());
        model += a;
        break;
      case 1:
        text.replace(a.c_str(), b.c_str());
        replaceInModel(model, a, b);
        break;
      case 2:
        text.splice(start, below(5), b.c_str());
        model = bytes(text);
        break;
      case 3:
        text.append(text.text() + start);
        model += model.substr(static_cast<size_t>(start));
        break;
      case 4:
        EXPECT_EQ(text.findLast(a.c_str()),
                  a.size() > model.size() ? -1 : static_cast<int>(model.rfind(a)));
        break;
      case 5:
        text.assign(text.text() + start, 40);
        model = model.substr(static_cast<size_t>(start), 40);
        break;
      default:
        text.reverse();
        std::reverse(model.begin(), model.end());
        break;
    }
    ASSERT_EQ(bytes(text), model) << step;
  }
}

TEST_F(KelCStringModel, SplicingAgreesWithAStandardString) {
  for (int step = 0; step < 5000; ++step) {
    const std::string old = word(12);
    const std::string inserted = word(6);
    const int start = below(14);
    const int count = below(14);
    std::string model = old;
    model.replace(std::min(static_cast<size_t>(start), old.size()), static_cast<size_t>(count),
                  inserted);
    KelCString text(old.c_str());
    text.splice(start, count, inserted.c_str());
    ASSERT_EQ(bytes(text), model) << old << " " << start << " " << count << " " << inserted;
  }
}

}  // namespace
