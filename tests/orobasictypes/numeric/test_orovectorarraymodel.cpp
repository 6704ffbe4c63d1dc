// OroVectorArray beside a model of single points: a million random steps on the lowest and the
// highest level of the processor. The model knows which blocks exist.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "orobasictypes/bitvector.h"
#include "orobasictypes/oromatrix.h"
#include "orobasictypes/orovectorarray.h"
#include "orobasictypes/testaccess.h"
#include "tests/orobasictypes/memorymedia.h"
#include "tests/support/countingmanager.h"

namespace {

using Points = std::vector<OroVector>;

constexpr int32_t perBlock = 1024;

class PointModel {
 public:
  int32_t size() const { return static_cast<int32_t>(elements.size()); }
  OroVector get(int32_t i) const {
    return i >= 0 && i < size() ? elements[static_cast<size_t>(i)] : OroVector();
  }
  void resize(int32_t wanted) {
    elements.resize(static_cast<size_t>((wanted + perBlock - 1) / perBlock * perBlock));
    blocks.resize(elements.size() / perBlock);
  }
  void store(int32_t i, const OroVector& point, bool always) {
    const auto block = static_cast<size_t>(i / perBlock);
    if (!blocks[block] && !always && point == OroVector()) return;
    blocks[block] = true;
    elements[static_cast<size_t>(i)] = point;
  }
  void reserve(int32_t n) {
    if (n <= size()) return;
    resize(n);
    count = std::min(count, n);
  }
  void add(const OroVector& point) {
    ++count;
    while (count >= size()) reserve(std::max(size() * 2, 16));
    store(count, point, false);
  }
  void set(int32_t i, const OroVector& point) {
    if (i >= count) {
      if (i >= size()) reserve(i + 1);
      count = i;
    }
    store(i, point, false);
  }
  void insert(int32_t i, const OroVector& point) {
    if (i < 1 || i > count + 1) return;
    const bool isLast = i == count + 1;
    add(point);
    if (isLast) return;
    for (int32_t k = count; k > i; --k) store(k, get(k - 1), false);
    store(i, point, false);
  }
  void remove(int32_t i) {
    if (i < 1 || i > count) return;
    for (int32_t k = i; k <= count; ++k) store(k, get(k + 1), false);
    --count;
  }
  void reverse() {
    for (int32_t k = 1; k <= count / 2; ++k) {
      const OroVector point = get(k);
      store(k, get(count - k + 1), false);
      store(count - k + 1, point, false);
    }
  }
  void transform(const OroMatrix& matrix) {
    for (int32_t i = 1; i <= count; ++i) store(i, matrix.TransformPoint(get(i)), false);
  }
  void compress(const std::vector<bool>& mask) {
    int32_t kept = 0;
    for (int32_t i = 1; i < count; ++i) {
      if (mask[static_cast<size_t>(i)]) store(++kept, get(i), false);
    }
    count = kept;
  }
  // The order is told by whoever sorted.
  void order(const OroMM::IntArray& index) {
    const Points old = elements;
    for (int32_t i = 1; i <= count; ++i) {
      const int32_t from = index.Get(i);
      if (from != i) store(i, old[static_cast<size_t>(from)], true);
    }
  }
  int existing() const { return static_cast<int>(std::count(blocks.begin(), blocks.end(), true)); }

  Points elements;
  std::vector<bool> blocks;
  int32_t count = 0;
};

bool isSameBytes(const OroVector& a, const OroVector& b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

class ArrayPair {
 public:
  void expectSame() const {
    ASSERT_EQ(real->GetCount(), model.count);
    ASSERT_EQ(real->GetCapacity(), model.size());
    for (int32_t i = 0; i < model.size(); ++i) {
      ASSERT_TRUE(isSameBytes(real->GetVector(i), model.get(i))) << i;
    }
    for (size_t block = 0; block < model.blocks.size(); ++block) {
      ASSERT_EQ(real->Blocks()->Block(static_cast<int32_t>(block)) != nullptr, model.blocks[block]);
    }
  }

  IPtr<OroVectorArray> real{new OroVectorArray};
  PointModel model;
};

class ArrayWalk {
 public:
  explicit ArrayWalk(const tests::CountingManager& manager) : manager_(manager) {}

  void run(int steps) {
    for (int step = 0; step < steps; ++step) {
      ArrayPair& pair = pairs_[draw(2)];
      const uint32_t choice = draw(10000);
      if (choice < 10) {
        changeAll(pair);
        pair.expectSame();
        ASSERT_EQ(manager_.living(), pairs_[0].model.existing() + pairs_[1].model.existing());
      } else if (choice < 60) {
        move(pair);
      } else {
        touch(pair, choice);
      }
      if (pair.model.size() > 6000) clear(pair);
      if (testing::Test::HasFatalFailure()) FAIL() << "step " << step;
    }
    for (const ArrayPair& pair : pairs_) pair.expectSame();
  }

 private:
  uint32_t draw(uint32_t limit) { return static_cast<uint32_t>(random_() % limit); }
  double drawValue() { return draw(3) == 0 ? 0.0 : static_cast<double>(draw(9)) - 4; }
  OroVector drawPoint() {
    if (draw(4) == 0) return draw(50) == 0 ? OroVector(0, -0.0, 0) : OroVector();
    return {drawValue(), drawValue(), drawValue()};
  }
  int32_t drawIndex(const ArrayPair& pair) {
    return static_cast<int32_t>(draw(static_cast<uint32_t>(pair.model.count) + 2));
  }
  static void clear(ArrayPair& pair) {
    pair.real->ClearAll();
    pair.model.count = 0;
    pair.model.resize(0);
  }

  // Single points.
  void touch(ArrayPair& pair, uint32_t choice) {
    const OroVector point = drawPoint();
    const int32_t i = drawIndex(pair);
    if (choice < 2500) {
      pair.model.add(point);
      ASSERT_EQ(pair.real->Add(point), pair.model.count);
    } else if (choice < 4500) {
      pair.real->Set(i, point);
      pair.model.set(i, point);
    } else if (choice < 6000) {
      if (i >= pair.model.size()) return;
      pair.real->SetExisting(i, point);
      pair.model.store(i, point, true);
    } else if (choice < 9000) {
      OroVector found;
      ASSERT_EQ(pair.real->GetChecked(i, found), i >= 1 && i <= pair.model.count);
      ASSERT_TRUE(isSameBytes(pair.real->GetVector(i), pair.model.get(i)));
    } else if (choice < 9900) {
      const int32_t gone = std::min(static_cast<int32_t>(draw(5)), pair.model.count);
      pair.real->RemoveLast(static_cast<int32_t>(gone));
      pair.model.count -= gone;
    } else {
      Points points(draw(40));
      for (OroVector& each : points) each = drawPoint();
      pair.real->AddAll(points.data(), static_cast<int32_t>(points.size()));
      for (const OroVector& each : points) pair.model.add(each);
    }
  }

  // What moves many points, or all room.
  void move(ArrayPair& pair) {
    const int32_t i = drawIndex(pair);
    switch (draw(7)) {
      case 0:
      case 1: {
        const OroVector point = drawPoint();
        pair.real->Insert(i, point);
        return pair.model.insert(i, point);
      }
      case 2:
      case 3:
        pair.real->Remove(i);
        return pair.model.remove(i);
      case 4:
        pair.real->Reserve(i + 500);
        return pair.model.reserve(i + 500);
      case 5:
        if (draw(8) != 0) return;
        pair.real->Clear();
        pair.model.count = 0;
        return;
      default:
        if (i >= pair.model.size()) return;
        pair.real->SetCount(i);
        pair.model.count = i;
    }
  }

  void changeAll(ArrayPair& pair) {
    switch (draw(8)) {
      case 0:
        pair.real->Reverse();
        return pair.model.reverse();
      case 1:
        return transform(pair);
      case 2:
        return compress(pair);
      case 3:
        return sort(pair);
      case 4:
        return look(pair);
      case 5:
        return copy(pair);
      case 6:
        return save(pair);
      default: {
        ArrayPair& other = pairs_[&pair == &pairs_[0] ? 1 : 0];
        pair.real->Swap(*other.real);
        std::swap(pair.model, other.model);
      }
    }
  }

  void transform(ArrayPair& pair) {
    OroMatrix matrix;
    for (int i = 0; i < 12; ++i) matrix.m[i] = draw(3) == 0 ? 0 : 0.25 * draw(5) - 0.5;
    if (draw(2) == 0) matrix.SetTranslation(OroVector());
    pair.real->Transform(matrix);
    pair.model.transform(matrix);
  }
  void compress(ArrayPair& pair) {
    BitVector mask;
    std::vector<bool> plain(static_cast<size_t>(pair.model.count) + 1);
    const uint32_t rarity = 1 + draw(10);
    const bool isFlipped = draw(2) == 0;
    for (int32_t i = 0; i <= pair.model.count; ++i) {
      if ((draw(rarity) == 0) == isFlipped) continue;
      mask.Set(i);
      plain[static_cast<size_t>(i)] = true;
    }
    pair.real->Compress(mask);
    pair.model.compress(plain);
  }
  // Into the right order, whichever it is among equal points.
  void sort(ArrayPair& pair) {
    OroMM::IntArray index;
    pair.real->Sort(false, &index, nullptr);
    std::vector<bool> met(static_cast<size_t>(pair.model.count) + 1);
    for (int32_t i = 1; i <= pair.model.count; ++i) {
      const int32_t from = index.Get(i);
      ASSERT_TRUE(from >= 1 && from <= pair.model.count && !met[static_cast<size_t>(from)]);
      met[static_cast<size_t>(from)] = true;
    }
    pair.model.order(index);
    for (int32_t i = 2; i <= pair.model.count; ++i) {
      ASSERT_LE(RealPArray::Compare(pair.model.get(i - 1), pair.model.get(i)), 0);
    }
  }
  void look(ArrayPair& pair) {
    OroVector min(1e42, 1e42, 1e42);
    OroVector max(-1e42, -1e42, -1e42);
    double most = 1e-16;
    if (pair.model.count == 0) min = max = OroVector();
    for (int32_t i = 1; i <= pair.model.count; ++i) {
      const OroVector p = pair.model.get(i);
      min = OroVector(std::min(min.x, p.x), std::min(min.y, p.y), std::min(min.z, p.z));
      max = OroVector(std::max(max.x, p.x), std::max(max.y, p.y), std::max(max.z, p.z));
      most = std::max({most, std::abs(p.x), std::abs(p.y), std::abs(p.z)});
    }
    OroVector low;
    OroVector high;
    pair.real->GetBounds(low, high);
    ASSERT_EQ(low, min);
    ASSERT_EQ(high, max);
    ASSERT_EQ(pair.real->AbsoluteMaximum(), most);
  }
  void copy(ArrayPair& pair) {
    pair.real = new OroVectorArray(*pair.real);
    if (draw(2) == 0) return;
    const IPtr<OroVectorArray> other(new OroVectorArray);
    other->Assign(*pair.real);
    ASSERT_TRUE(*other == *pair.real);
  }
  void save(ArrayPair& pair) {
    tests::MemoryOutput output;
    ASSERT_TRUE(pair.real->Write(output) && output.FlushBuffer());
    for (int32_t i = 1; i <= pair.model.count; ++i) pair.model.store(i, pair.model.get(i), true);
    tests::MemoryInput input(output.bytes);
    const IPtr<OroVectorArray> read(new OroVectorArray);
    ASSERT_TRUE(read->Read(input));
    ASSERT_TRUE(*read == *pair.real);
  }

  std::mt19937_64 random_{23};
  const tests::CountingManager& manager_;
  ArrayPair pairs_[2];
};

class PointSteps : public testing::TestWithParam<KelProcessorLevel> {
 protected:
  ~PointSteps() override { testaccess::limitProcessorLevel(kKelAvx512); }
};

INSTANTIATE_TEST_SUITE_P(All, PointSteps, testing::Values(kKelBaseline, kKelAvx512));

TEST_P(PointSteps, GiveWhatTheModelGives) {
  testaccess::limitProcessorLevel(GetParam());
  const tests::ManagedMemory memory;
  memory.manager->logs = false;
  ArrayWalk(*memory.manager).run(1000000);
  EXPECT_EQ(memory.manager->living(), 0);
}

}  // namespace
