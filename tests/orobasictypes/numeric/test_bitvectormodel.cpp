// BitVector beside a model of single bits: a million random steps, with and without a memory
// manager, on the lowest and the highest level of the processor.

#include <algorithm>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "orobasictypes/bitvector.h"
#include "orobasictypes/testaccess.h"
#include "tests/orobasictypes/numeric/bitmodel.h"
#include "tests/support/countingmanager.h"

namespace {

using tests::BitModel;

struct BitPair {
  BitPair(int32_t maximum, bool hasManager) : real(maximum), model(maximum, hasManager) {}

  BitVector real;
  BitModel model;
};

class Walk {
 public:
  Walk(uint32_t seed, bool hasManager) : random_(seed) {
    for (const int32_t maximum : {100, 5000, 150000}) pairs_.emplace_back(maximum, hasManager);
  }

  void run(int steps) {
    for (int step = 0; step < steps; ++step) {
      BitPair& pair = pairs_[draw(3)];
      const uint32_t choice = draw(100000);
      if (choice < 25) {
        change(pair, pairs_[draw(3)]);
        if (pair.model.maximum() > 400000) both(pair, 3000);
        ASSERT_TRUE(tests::agree(pair.real, pair.model)) << "step " << step;
      } else if (choice < 50) {
        ask(pair);
      } else {
        touch(pair, choice);
      }
      if (testing::Test::HasFatalFailure()) FAIL() << "step " << step;
    }
    for (BitPair& pair : pairs_) EXPECT_TRUE(tests::agree(pair.real, pair.model));
  }

 private:
  uint32_t draw(uint32_t limit) { return static_cast<uint32_t>(random_() % limit); }
  // Now and then a bit that there is no room for.
  int32_t someBit(const BitPair& pair) {
    const auto room = static_cast<uint32_t>(pair.model.maximum()) + 1;
    return static_cast<int32_t>(draw(draw(5000) == 0 ? room + room / 2 : room));
  }
  static void both(BitPair& pair, int32_t maximum) {
    pair.real.Resize(maximum);
    pair.model.resize(maximum);
  }

  // Single bits.
  void touch(BitPair& pair, uint32_t choice) {
    const int32_t b = someBit(pair);
    if (choice < 45000) {
      pair.real.Set(b);
      pair.model.set(b);
    } else if (choice < 60000) {
      pair.real.Clear(b);
      pair.model.clear(b);
    } else if (choice < 90000) {
      ASSERT_EQ(pair.real.Test(b), pair.model.test(b)) << b;
    } else if (choice < 95000) {
      const int32_t next = choice % 2 == 0 ? pair.real.NextSet(b) : pair.real.NextClear(b);
      expectFirst(pair, b, next, 1, choice % 2 == 0);
    } else {
      const int32_t last = choice % 2 == 0 ? pair.real.PrevSet(b) : pair.real.PrevClear(b);
      expectFirst(pair, std::min(b, pair.model.maximum() + 1), last, -1, choice % 2 == 0);
    }
  }
  // That `found` is what is met first from b on, in one direction.
  static void expectFirst(const BitPair& pair, int32_t b, int32_t found, int step, bool value) {
    int32_t at = b + step;
    while (at >= 0 && at <= pair.model.maximum() && pair.model.test(at) != value) at += step;
    const bool isInside = at >= 0 && at <= pair.model.maximum();
    ASSERT_EQ(found, isInside ? at : -1) << "from " << b << " by " << step;
  }

  void ask(BitPair& pair) {
    const int32_t b = someBit(pair);
    const std::vector<char>& bits = pair.model.bits;
    const auto end = bits.begin() + std::min<int64_t>(b, pair.model.maximum());
    const auto below = static_cast<int32_t>(std::count(bits.begin(), end, 1));
    ASSERT_EQ(pair.real.CountSet(), pair.model.count());
    if (b <= pair.model.maximum()) {
      ASSERT_EQ(pair.real.CountBelow(b), pair.model.test(0) ? 0 : below);
      ASSERT_EQ(pair.real.CountAfter(b), pair.model.count() - below - pair.model.test(b));
    }
    int32_t first[8];
    int32_t start[8];
    pair.real.Partition(7, first, start);
    for (int j = 0; j < 7; ++j) {
      ASSERT_EQ(start[j], static_cast<int32_t>(j / 7.0 * pair.model.count()));
      if (start[j] < start[7]) {
        ASSERT_TRUE(pair.model.test(first[j]));
        ASSERT_EQ(std::count(bits.begin(), bits.begin() + first[j], 1), start[j]);
      }
    }
  }

  // Whole vectors. The other may be the same one.
  void change(BitPair& pair, BitPair& other) {
    BitModel& model = pair.model;
    const auto n = static_cast<int32_t>(draw(static_cast<uint32_t>(model.maximum()) + 1000));
    switch (draw(20)) {
      case 0:
        pair.real = other.real;
        model = other.model;
        break;
      case 1:
        copyValues(pair, other);
        break;
      case 2:
        pair.real &= other.real;
        forAll(model, [&](int64_t b, bool bit) { return bit && other.model.test(b); });
        break;
      case 3:
        grow(pair, other);
        pair.real |= other.real;
        forAll(model, [&](int64_t b, bool bit) { return bit || other.model.test(b); });
        break;
      case 4:
        grow(pair, other);
        pair.real ^= other.real;
        forAll(model, [&](int64_t b, bool bit) { return bit != other.model.test(b); });
        break;
      case 5:
        pair.real -= other.real;
        forAll(model, [&](int64_t b, bool bit) { return bit && !other.model.test(b); });
        break;
      case 6:
        pair.real.Not();
        forAll(model, [](int64_t, bool bit) { return !bit; });
        break;
      case 7:
        pair.real.Complement(n);
        model.resize(n);
        forAll(model, [&](int64_t b, bool bit) { return bit != (b >= 1 && b <= n); });
        break;
      case 8:
        pair.real.SetAll(n);
        model.resize(n);
        forAll(model, [&](int64_t b, bool) { return b >= 1 && b <= n; });
        ASSERT_EQ(pair.real.KnownCount(), n);
        break;
      case 9:
        pair.real.SetCapacity();
        forAll(model, [](int64_t b, bool) { return b >= 1; });
        break;
      case 10:
        pair.real.Zero();
        forAll(model, [](int64_t, bool) { return false; });
        break;
      case 11:
      case 12:
        changeRange(pair, n);
        break;
      case 13:
        shift(pair, static_cast<int32_t>(draw(3000)));
        break;
      case 14:
        if (&pair != &other) compact(pair, other);
        break;
      case 15:
        if (&pair != &other) removeMasked(pair, other);
        break;
      case 16:
        both(pair, static_cast<int32_t>(draw(250000)));
        break;
      case 17:
        keepEvenly(pair, n / 2);
        break;
      case 18:
        pair.real.Swap(other.real);
        if (&pair != &other) std::swap(model.bits, other.model.bits);
        swapKinds(pair, other);
        break;
      default:
        compare(pair, other);
    }
  }

  template <class Change>
  static void forAll(BitModel& model, const Change& change) {
    char* const bits = model.bits.data();
    for (int64_t b = 0; b <= model.maximum(); ++b) bits[b] = change(b, bits[b] != 0) ? 1 : 0;
  }
  // What the real one does on its own.
  static void grow(BitPair& pair, const BitPair& other) {
    const int64_t last = other.model.lastUsedWord();
    if (last >= pair.model.words()) pair.model.resize(last * 32 + 31);
  }
  static void copyValues(BitPair& pair, const BitPair& other) {
    const bool isEmpty = other.real.KnownCount() == 0;
    pair.real.CopyValues(other.real);
    if (&pair == &other) return;
    if (isEmpty) {
      forAll(pair.model, [](int64_t, bool) { return false; });
    } else if (pair.model.isLarge() == other.model.isLarge()) {
      pair.model = other.model;
    } else {
      pair.model.makeRoom(other.model.words());
      forAll(pair.model, [&](int64_t b, bool) { return other.model.test(b); });
    }
  }
  void changeRange(BitPair& pair, int32_t n) {
    const bool set = draw(2) == 0;
    const int32_t to = n + static_cast<int32_t>(draw(5000)) - 100;
    const bool done = set ? pair.real.SetRange(n, to) : pair.real.ClearRange(n, to);
    ASSERT_EQ(done, n <= pair.model.maximum());
    forAll(pair.model, [&](int64_t b, bool bit) { return b >= n && b <= to ? set : bit; });
  }
  static void shift(BitPair& pair, int32_t n) {
    pair.real.Shift(n);
    if (n == 0) return;
    pair.model.resize(int64_t{pair.model.maximum()} + n);
    const BitModel old = pair.model;
    forAll(pair.model, [&](int64_t b, bool) { return old.test(b - n); });
  }
  static void compact(BitPair& pair, const BitPair& mask) {
    pair.real.Compact(mask.real);
    int64_t place = 0;
    for (int64_t b = 0; b <= mask.model.maximum(); ++b) {
      if (mask.model.test(b)) pair.model.assign(++place, pair.model.test(b));
    }
    for (int64_t b = place + 1; b <= pair.model.maximum(); ++b) pair.model.clear(b);
    pair.model.resize(place);
  }
  static void removeMasked(BitPair& pair, const BitPair& mask) {
    pair.real.RemoveMasked(mask.real);
    int64_t place = 0;
    for (int64_t b = 0; b <= pair.model.maximum(); ++b) {
      if (!mask.model.test(b)) pair.model.assign(place++, pair.model.test(b));
    }
    const int64_t last = place - 1;
    if (last < pair.model.maximum() / 2) pair.model.resize(last);
    for (int64_t b = std::max<int64_t>(last, 0); b <= pair.model.maximum(); ++b) {
      pair.model.clear(b);
    }
  }
  static void keepEvenly(BitPair& pair, int32_t n) {
    pair.real.KeepEvenly(n);
    const int64_t count = pair.model.count();
    if (count <= n) return;
    int64_t error = count / 2;
    forAll(pair.model, [&](int64_t, bool bit) {
      if (!bit) return false;
      error += n;
      if (error < count) return false;
      error -= count;
      return true;
    });
    ASSERT_EQ(pair.real.KnownCount(), n);
  }
  static void swapKinds(BitPair& pair, BitPair& other) {
    if (&pair != &other) pair.model.swapKind(other.model);
    ASSERT_TRUE(tests::agree(other.real, other.model));
  }
  static void compare(const BitPair& pair, const BitPair& other) {
    bool isEqual = true;
    bool isDisjoint = true;
    for (int64_t b = 0; b <= std::max(pair.model.maximum(), other.model.maximum()); ++b) {
      isEqual = isEqual && pair.model.test(b) == other.model.test(b);
      isDisjoint = isDisjoint && !(pair.model.test(b) && other.model.test(b));
    }
    ASSERT_EQ(pair.real == other.real, isEqual);
    ASSERT_EQ(pair.real.Disjoint(other.real), isDisjoint);
  }

  std::mt19937 random_;
  std::vector<BitPair> pairs_;
};

class BitsBesideTheModel : public testing::TestWithParam<int> {
 protected:
  BitsBesideTheModel() {
    testaccess::limitProcessorLevel(static_cast<KelProcessorLevel>(GetParam()));
  }
  ~BitsBesideTheModel() override { testaccess::limitProcessorLevel(kKelAvx512); }
};

TEST_P(BitsBesideTheModel, BehaveTheSameInBlocks) {
  const tests::ManagedMemory memory;
  memory.manager->logs = false;
  Walk(1, true).run(1000000);
  EXPECT_EQ(memory.manager->living(), 0);
}

TEST_P(BitsBesideTheModel, BehaveTheSameInOnePiece) {
  const tests::UnmanagedMemory memory;
  Walk(2, false).run(1000000);
}

// The levels between are those of the kernels alone, which have their own test.
INSTANTIATE_TEST_SUITE_P(OnLevels, BitsBesideTheModel, testing::Values(kKelBaseline, kKelAvx512));

}  // namespace
