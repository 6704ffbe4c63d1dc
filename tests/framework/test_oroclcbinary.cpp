#include "components/kit/oroclcbinary.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "orobasictypes/iptr.h"
#include "orobasictypes/kelrealloc.h"
#include "tests/support/slotnumber.h"

namespace {

TEST(OroClcBinary, HandsOutTheBlockThatItWasGivenAndFreesIt) {
  char* block = nullptr;
  kelMalloc(block, 1, 5);
  std::memcpy(block, "bytes", 5);
  IPtr<IOroClcBinary> binary(new OroClcBinary(block, 5));
  EXPECT_EQ(binary->data(), block);
  EXPECT_EQ(binary->size(), 5u);
  static void* freed = nullptr;
  const KelHeapCalls before = kelHeapCalls;
  kelHeapCalls.release = [](void* pointer) {
    freed = pointer;
    std::free(pointer);
  };
  binary = nullptr;
  kelHeapCalls = before;
  EXPECT_EQ(freed, block);
}

TEST(OroClcBinary, MayBeEmpty) {
  IPtr<IOroClcBinary> binary(new OroClcBinary(nullptr, 0));
  EXPECT_EQ(binary->data(), nullptr);
  EXPECT_EQ(binary->size(), 0u);
}

TEST(OroClcBinary, AnswersForItsClassAndItsInterface) {
  IPtr<OroClcBinary> binary(new OroClcBinary(nullptr, 0));
  EXPECT_EQ(oroQueryClass<OroClcBinary>(binary.get()), binary.get());
  EXPECT_EQ(oroQuery<IOroClcBinary>(binary.get()), binary.get());
  EXPECT_EQ(oroQuery<IOroUnknown>(binary.get()), binary.object());
  EXPECT_EQ(tests::slotNumber(&IOroClcBinary::size), 1);
  EXPECT_EQ(tests::slotNumber(&IOroClcBinary::data), 2);
}

}  // namespace
