#include "orobasictypes/wordkernels.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <random>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "orobasictypes/bitwords.h"
#include "orobasictypes/testaccess.h"

namespace {

using Words = std::vector<uint32_t>;

// Each test runs on every level that the processor has.
class KernelTest : public testing::TestWithParam<int> {
 protected:
  KernelTest() {
    level_ = testaccess::limitProcessorLevel(static_cast<KelProcessorLevel>(GetParam()));
  }
  ~KernelTest() override { testaccess::limitProcessorLevel(kKelAvx512); }

  // Words of which a share is 0 and a share all ones.
  Words words(size_t count) {
    Words result(count);
    for (uint32_t& word : result) {
      word = random_() % 3 == 0 ? 0 : random_() % 3 == 0 ? UINT32_MAX : random_();
    }
    return result;
  }
  // Calls check(count, offset) for short and long runs at every alignment of a word.
  void forSizes(const std::function<void(size_t, size_t)>& check) {
    for (size_t count = 0; count <= 140; ++count) check(count, count % 9);
    for (const size_t count : {255U, 256U, 257U, 1000U, 1023U, 2048U, 5003U}) check(count, 3);
  }

  KelProcessorLevel level_;
  std::mt19937 random_{17};
};

TEST_P(KernelTest, AreThoseOfTheLevel) {
  EXPECT_LE(level_, GetParam());
  EXPECT_EQ(kelProcessorLevel, level_);
  EXPECT_EQ(&wordKernels(), &wordKernelTable[level_]);
}

TEST_P(KernelTest, CombineWordsAndTouchNoOthers) {
  struct Row {
    void (*kernel)(uint32_t*, const uint32_t*, int64_t);
    uint32_t (*expected)(uint32_t, uint32_t);
  };
  const WordKernels& kernels = wordKernels();
  const Row rows[] = {
      {kernels.conjoin, [](uint32_t a, uint32_t b) { return a & b; }},
      {kernels.unite, [](uint32_t a, uint32_t b) { return a | b; }},
      {kernels.differ, [](uint32_t a, uint32_t b) { return a ^ b; }},
      {kernels.subtract, [](uint32_t a, uint32_t b) { return a & ~b; }},
  };
  for (const Row& row : rows) {
    forSizes([&](size_t count, size_t offset) {
      Words a = words(count + 20);
      const Words b = words(count + 20);
      Words expected = a;
      for (size_t i = 0; i < count; ++i) {
        expected[offset + i] = row.expected(a[offset + i], b[i + 1]);
      }
      row.kernel(a.data() + offset, b.data() + 1, static_cast<int64_t>(count));
      ASSERT_EQ(a, expected) << count;
      row.kernel(a.data(), a.data(), static_cast<int64_t>(count));
      for (size_t i = 0; i < count; ++i) {
        ASSERT_EQ(a[i], row.expected(expected[i], expected[i])) << "with itself";
      }
    });
  }
}

TEST_P(KernelTest, InvertWords) {
  forSizes([&](size_t count, size_t offset) {
    Words a = words(count + 20);
    Words expected = a;
    for (size_t i = offset; i < offset + count; ++i) expected[i] = ~expected[i];
    wordKernels().invert(a.data() + offset, static_cast<int64_t>(count));
    ASSERT_EQ(a, expected) << count;
  });
}

TEST_P(KernelTest, CountBits) {
  forSizes([&](size_t count, size_t offset) {
    const Words a = words(count + 20);
    int64_t expected = 0;
    for (size_t i = offset; i < offset + count; ++i) expected += std::popcount(a[i]);
    ASSERT_EQ(wordKernels().population(a.data() + offset, static_cast<int64_t>(count)), expected);
  });
  const Words ones(100000, UINT32_MAX);
  EXPECT_EQ(wordKernels().population(ones.data(), 100000), 3200000);
}

TEST_P(KernelTest, FindCommonBits) {
  forSizes([&](size_t count, size_t offset) {
    Words a(count + 20);
    Words b(count + 20, UINT32_MAX);
    a[offset + count] = 1;  // behind the end
    const auto size = static_cast<int64_t>(count);
    ASSERT_FALSE(wordKernels().isAnyCommon(a.data() + offset, b.data(), size));
    for (size_t i = 0; i < count; i += 1 + count / 50) {
      a[offset + i] = 0x10000;
      ASSERT_TRUE(wordKernels().isAnyCommon(a.data() + offset, b.data(), size)) << i;
      b[i] = ~0x10000U;
      ASSERT_FALSE(wordKernels().isAnyCommon(a.data() + offset, b.data(), size)) << i;
      a[offset + i] = 0;
    }
  });
}

TEST_P(KernelTest, OutlineLinesOfSixteenWords) {
  for (const size_t lines : {0U, 1U, 5U, 63U, 64U}) {
    Words a(lines * 16 + 1);
    uint64_t empty = 0;
    uint64_t full = 0;
    for (size_t line = 0; line < lines; ++line) {
      const uint32_t kind = random_() % 4;
      std::fill_n(a.begin() + static_cast<std::ptrdiff_t>(1 + line * 16), 16,
                  kind % 2 == 0 ? 0 : UINT32_MAX);
      if (kind > 1) a[1 + line * 16 + random_() % 16] ^= 1U << random_() % 32;
      if (kind == 0) empty |= uint64_t{1} << line;
      if (kind == 1) full |= uint64_t{1} << line;
    }
    const WordOutline outline =
        wordKernels().outline(a.data() + 1, static_cast<int64_t>(lines * 16));
    ASSERT_EQ(outline.empty, empty) << lines;
    ASSERT_EQ(outline.full, full) << lines;
  }
}

TEST_P(KernelTest, FindTheFirstAndTheLastOtherWord) {
  for (const uint32_t skipped : {0U, UINT32_MAX}) {
    forSizes([&](size_t count, size_t offset) {
      Words a(count + 20, ~skipped);
      std::fill_n(a.begin() + static_cast<std::ptrdiff_t>(offset), count, skipped);
      const uint32_t* const start = a.data() + offset;
      const auto size = static_cast<int64_t>(count);
      ASSERT_EQ(wordKernels().firstOther(start, size, skipped), size);
      ASSERT_EQ(wordKernels().lastOther(start, size, skipped), -1);
      for (size_t i = 0; i < count; i += 1 + count / 50) {
        a[offset + i] = skipped ^ 0x100;
        const size_t second = (i + count) / 2;
        a[offset + second] = skipped ^ 1;
        ASSERT_EQ(wordKernels().firstOther(start, size, skipped), static_cast<int64_t>(i));
        ASSERT_EQ(wordKernels().lastOther(start, size, skipped), static_cast<int64_t>(second));
        a[offset + i] = a[offset + second] = skipped;
      }
    });
  }
}

TEST_P(KernelTest, GatherBits) {
  for (const uint32_t flip : {0U, UINT32_MAX}) {
    forSizes([&](size_t count, size_t offset) {
      const Words a = words(count + 20);
      const Words mask = words(count + 20);
      std::vector<bool> expected = {true, false, true};  // what was gathered before
      for (size_t i = 0; i < count * 32; ++i) {
        const uint32_t chosen = mask[offset + i / 32] ^ flip;
        if ((chosen >> i % 32 & 1) != 0) expected.push_back((a[i / 32] >> i % 32 & 1) != 0);
      }
      GatheredBits gathered;
      gathered.bits = 0b101;
      gathered.count = 3;
      Words out(count + 1, 0xABABABAB);
      const int64_t made = wordKernels().gather(a.data(), mask.data() + offset, flip,
                                                static_cast<int64_t>(count), gathered, out.data());
      ASSERT_EQ(static_cast<size_t>(made), expected.size() / 32);
      ASSERT_EQ(static_cast<size_t>(gathered.count), expected.size() % 32);
      ASSERT_EQ(gathered.bits >> gathered.count, 0U);
      ASSERT_EQ(out[count], 0xABABABAB) << "never more words than were read";
      for (size_t i = 0; i < expected.size(); ++i) {
        const uint64_t word = i / 32 < static_cast<size_t>(made) ? out[i / 32] : gathered.bits;
        ASSERT_EQ((word >> i % 32 & 1) != 0, expected[i]) << i;
      }
    });
  }
}

TEST_P(KernelTest, FindThePairsInUse) {
  for (int32_t count = 1; count <= 128; ++count) {
    for (int round = 0; round < 20; ++round) {
      Words used(static_cast<size_t>(count) + 1, UINT32_MAX);
      uint64_t expected = 0;
      for (int32_t i = 0; i < count; ++i) {
        const bool isUsed = random_() % 8 == 0;
        used[static_cast<size_t>(i)] = isUsed ? 1U << random_() % 32 : 0;
        if (isUsed) expected |= uint64_t{1} << (i / 2);
      }
      ASSERT_EQ(wordKernels().usedPairs(used.data(), count), expected) << count;
    }
  }
}

TEST_P(KernelTest, VisitSetBits) {
  forSizes([&](size_t count, size_t) {
    const Words set = words(count);
    std::vector<int32_t> expected;
    for (size_t i = 0; i < count * 32; ++i) {
      if ((set[i / 32] >> i % 32 & 1) != 0) expected.push_back(static_cast<int32_t>(i) + 7);
    }
    std::vector<int32_t> visited;
    const auto visit = [&](int32_t b) { visited.push_back(b); };
    bitwords::forEachSet(set.data(), static_cast<int32_t>(count), 7, visit);
    ASSERT_EQ(visited, expected) << count;
  });
}

INSTANTIATE_TEST_SUITE_P(OnEveryLevel, KernelTest, testing::Range(0, kKelProcessorLevels));

}  // namespace
