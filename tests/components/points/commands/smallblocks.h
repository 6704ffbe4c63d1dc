#pragma once

// A cloud in blocks of a few points, so that every loop over runs meets their borders.

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <vector>

#include "components/points/commands/pointset.h"
#include "components/points/commands/pointwork.h"
#include "orobasictypes/bitvector.h"

namespace tests {

using Point = std::array<double, 3>;

class SmallBlocks : public PointSet {
 public:
  static constexpr int64_t kBlock = 5;

  SmallBlocks() = default;
  SmallBlocks(std::initializer_list<Point> points) {
    for (const Point& point : points) add(point);
  }
  void add(const Point& point) {
    resize(count_ + 1);
    int64_t size = 0;
    std::copy(point.begin(), point.end(), run(count_ - 1, size));
  }
  void colour(std::vector<uint32_t> colors) { colors_ = std::move(colors), hasColors_ = true; }

  std::vector<Point> points() {
    std::vector<Point> all;
    for (int64_t i = 0, size = 0; i < count_; ++i) {
      const double* p = run(i, size);
      all.push_back({p[0], p[1], p[2]});
    }
    return all;
  }
  /// The numbers of the selected points, from 0.
  std::vector<int> selected() const {
    std::vector<int> all;
    selection_.ForEachSet([&](int32_t item) { all.push_back(item - 1); });
    return all;
  }
  const std::vector<uint32_t>& colors() const { return colors_; }
  int owned() const { return owned_; }
  int changed() const { return changed_; }

  int64_t count() const override { return count_; }
  double* run(int64_t first, int64_t& size) override {
    const int64_t inBlock = first % kBlock;
    size = std::min(kBlock - inBlock, count_ - first);
    return (*blocks_[static_cast<size_t>(first / kBlock)])[static_cast<size_t>(inBlock)].data();
  }
  bool hasColors() const override { return hasColors_; }
  void setHasColors(bool wanted) override {
    hasColors_ = wanted;
    colors_.assign(wanted ? static_cast<size_t>(count_) : 0, 0xFF000000);
  }
  void getColors(int64_t first, int64_t size, uint32_t* out) const override {
    std::copy_n(colors_.begin() + first, size, out);
  }
  void setColors(int64_t first, int64_t size, const uint32_t* colors) override {
    std::copy_n(colors, size, colors_.begin() + first);
  }
  void resize(int64_t count) override {
    count_ = count;
    while (static_cast<int64_t>(blocks_.size()) * kBlock < count) {
      blocks_.push_back(std::make_unique<std::array<Point, kBlock>>());
    }
    if (hasColors_) colors_.resize(static_cast<size_t>(count), 0xFF000000);
  }
  void own() override { ++owned_; }
  void coordinatesChanged() override { ++changed_; }
  BitVector& selection() override { return selection_; }

 private:
  int64_t count_ = 0;
  bool hasColors_ = false;
  int owned_ = 0;
  int changed_ = 0;
  std::vector<std::unique_ptr<std::array<Point, kBlock>>> blocks_;
  std::vector<uint32_t> colors_;
  BitVector selection_;
};

/// The numbers of the set items, from 0.
inline std::vector<int> numbersOf(const BitVector& bits) {
  std::vector<int> all;
  bits.ForEachSet([&](int32_t item) { all.push_back(item - 1); });
  return all;
}

/// Work that is stopped after so many looks.
inline PointWork stoppingAfter(int looks) {
  return PointWork([looks](double) mutable { return looks-- > 0; });
}

}  // namespace tests
