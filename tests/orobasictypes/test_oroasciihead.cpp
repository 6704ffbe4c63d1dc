#include "orobasictypes/oroasciihead.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/fakeheap.h"
#include "tests/support/pooloff.h"

namespace {

struct Row {
  const char16_t* text;
  const char* head;
};

TEST(OroAsciiHead, EndsAtWhatNoNumberCanHold) {
  for (const Row& row : {
           Row{u" \t\n12.5e3\u20AC4", "12.5e3"},
           Row{u"12,5", "12"},
           Row{u"-0x1.8p+1 rest", "-0x1.8p+1"},
           Row{u"nan(12)]", "nan(12)"},
           Row{u"\u00A012", ""},
           Row{u"12\u0663", "12"},
           Row{u"   ", ""},
           Row{u"", ""},
       }) {
    EXPECT_EQ(OroAsciiHead(row.text).text(), row.head);
  }
}

TEST(OroAsciiHead, OnlyALongHeadTakesABlock) {
  const tests::PoolOff poolOff;
  tests::FakeHeap heap;
  EXPECT_EQ(OroAsciiHead(std::u16string(64, u'1')).text(), std::string(64, '1'));
  EXPECT_EQ(heap.allocations, 0);
  EXPECT_EQ(OroAsciiHead(std::u16string(1000, u'1')).text(), std::string(1000, '1'));
  EXPECT_EQ(heap.allocations, 1);
  EXPECT_EQ(heap.frees, 1);
}

}  // namespace
