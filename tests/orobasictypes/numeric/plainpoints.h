// PlainPoints: a storage class of points that has single points alone, in a std::vector, and tells
// which of its operations were called. FakeExtraInfo: colours that tell what they were asked.
#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "interfaces/IOroPointExtraInfo.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/realparray.h"

namespace tests {

class PlainPoints : public RealPArray {
 public:
  static constexpr const char* className() { return "PlainPoints"; }
  using Offers = OroOffersOver<PlainPoints, RealPArray>;

  PlainPoints() = default;
  explicit PlainPoints(const std::vector<OroVector>& points) {
    for (const OroVector& point : points) Add(point);
    log.clear();
  }
  PlainPoints(const PlainPoints& other, bool withExtra)
      : RealPArray(other, withExtra), points_(other.points_), count_(other.count_) {}

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  int32_t GetCount() const override { return count_; }
  void Clear() override {
    log.push_back("Clear");
    count_ = 0;
  }
  bool Reserve(int32_t n) override {
    log.push_back("Reserve " + std::to_string(n));
    return true;
  }
  using RealPArray::Add;
  int32_t Add(const OroVector& point) override {
    log.push_back("Add");
    at(++count_) = point;
    return count_;
  }
  int32_t AddD(const double* p) override { return Add(OroVector(p[0], p[1], p[2])); }
  int32_t Add(double x, double y, double z) override { return Add(OroVector(x, y, z)); }
  void SetCount(int32_t n) override {
    log.push_back("SetCount " + std::to_string(n));
    count_ = n;
  }
  using RealPArray::Set;
  bool Set(int32_t i, const OroVector& point) override {
    log.push_back("Set " + std::to_string(i));
    count_ = std::max(count_, i);
    at(i) = point;
    return true;
  }
  bool Set(int32_t i, double x, double y, double z) override { return Set(i, OroVector(x, y, z)); }
  bool SetExisting(int32_t i, const OroVector& point) override {
    log.push_back("SetExisting " + std::to_string(i));
    at(i) = point;
    return true;
  }
  using RealPArray::Get;
  void Get(int32_t i, OroVector& out) const override {
    out = static_cast<size_t>(i) < points_.size() ? points_[static_cast<size_t>(i)] : OroVector();
  }
  RealPArray* Clone(bool withExtra) const override { return new PlainPoints(*this, withExtra); }
  using RealPArray::Clone;
  RealPArray* NewArray(int32_t) const override { return new PlainPoints; }
  using RealPArray::Write;
  bool Write(BinOutput&) override { return true; }

  std::vector<OroVector> points() const {
    std::vector<OroVector> all;
    for (int32_t i = 1; i <= count_; ++i) all.push_back(GetVector(i));
    return all;
  }

  std::vector<std::string> log;

 private:
  OroVector& at(int32_t i) {
    if (static_cast<size_t>(i) >= points_.size()) points_.resize(static_cast<size_t>(i) + 1);
    return points_[static_cast<size_t>(i)];
  }

  std::vector<OroVector> points_;  // element 0 is no point
  int32_t count_ = 0;
};

class FakeExtraInfo : public IOroPointExtraInfo {
 public:
  static constexpr const char* className() { return "FakeExtraInfo"; }
  using Offers = OroOffers<FakeExtraInfo, IOroPointExtraInfo>;
  struct Color {
    float r = 0;
    float g = 0;
    float b = 0;
    friend bool operator==(const Color&, const Color&) = default;
  };

  FakeExtraInfo() { ++living; }
  FakeExtraInfo(const FakeExtraInfo& other)
      : IOroUnknown(), colors(other.colors), hasColors(other.hasColors) {
    ++living;
  }
  ~FakeExtraInfo() override { --living; }

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  IOroPointExtraInfo* Clone() override {
    note("Clone");
    return new FakeExtraInfo(*this);
  }
  bool HasColors() override { return hasColors; }
  void SetCapacity(int32_t count) override {
    note("SetCapacity " + std::to_string(count));
    hasColors = true;
  }
  void ClearColors() override {
    note("ClearColors");
    hasColors = false;
    colors.clear();
  }
  void SetColorD(int32_t i, const double* color) override {
    note("SetColorD " + std::to_string(i));
    at(i) = {static_cast<float>(color[0]), static_cast<float>(color[1]),
             static_cast<float>(color[2])};
  }
  void SetColorF(int32_t i, const float* color) override {
    note("SetColorF " + std::to_string(i));
    at(i) = {color[0], color[1], color[2]};
  }
  int32_t unusedSlot7() override { return 0; }
  void GetColorD(int32_t i, double* color) override {
    const Color found = at(i);
    color[0] = found.r;
    color[1] = found.g;
    color[2] = found.b;
  }
  void GetColorF(int32_t i, float* color) override {
    const Color found = at(i);
    color[0] = found.r;
    color[1] = found.g;
    color[2] = found.b;
  }
  uint32_t GetPackedColor(int32_t i) override {
    note("GetPackedColor " + std::to_string(i));
    return packed[static_cast<size_t>(i)];
  }
  int32_t GetCount() override { return static_cast<int32_t>(colors.size()); }
  bool Equals(IOroPointExtraInfo* other, int32_t count) override {
    note("Equals " + std::to_string(count));
    return colors == static_cast<FakeExtraInfo*>(other)->colors;
  }
  void CopyColor(int32_t to, int32_t from) override {
    note("CopyColor " + std::to_string(to) + " " + std::to_string(from));
    const Color color = at(from);
    at(to) = color;
  }
  void SetCount(int32_t count) override {
    note("SetCount " + std::to_string(count));
    colors.resize(static_cast<size_t>(count) + 1);
  }
  bool CanDiscard() override { return canDiscard; }
  void Remove(int32_t first, int32_t count) override { noteTwo("Remove", first, count); }
  void Insert(int32_t first, int32_t count) override { noteTwo("Insert", first, count); }
  int32_t unusedSlot18() override { return 0; }
  void Swap(IOroPointExtraInfo*) override { note("Swap"); }
  void Assign(IOroPointExtraInfo* other) override {
    note("Assign");
    colors = static_cast<FakeExtraInfo*>(other)->colors;
  }
  void Permute(const OroMM::IntArray& index, int32_t first, int32_t last) override {
    noteTwo("Permute", first, last);
    const std::vector<Color> old = colors;
    for (int32_t i = first; i <= last; ++i) {
      const auto from = static_cast<size_t>(index.Get(i));
      at(i) = from < old.size() ? old[from] : Color();
    }
  }
  void Compact(const BitVector&) override { note("Compact"); }
  void Reorder(const OroMM::IntArray&, int32_t count) override {
    note("Reorder " + std::to_string(count));
  }
  bool Validate() override { return isValid; }
  uint32_t* GetPackedArray() override {
    note("GetPackedArray");
    return packed.data();
  }

  // What was called since the last time, without mere questions.
  std::vector<std::string> take() { return std::exchange(log_, {}); }

  std::vector<Color> colors;
  std::vector<uint32_t> packed;
  bool hasColors = false;
  bool canDiscard = true;
  bool isValid = true;
  static inline int living = 0;

 private:
  void note(const std::string& text) { log_.push_back(text); }
  void noteTwo(const std::string& name, int32_t a, int32_t b) {
    note(name + " " + std::to_string(a) + " " + std::to_string(b));
  }
  Color& at(int32_t i) {
    if (static_cast<size_t>(i) >= colors.size()) colors.resize(static_cast<size_t>(i) + 1);
    return colors[static_cast<size_t>(i)];
  }

  std::vector<std::string> log_;
};

}  // namespace tests
