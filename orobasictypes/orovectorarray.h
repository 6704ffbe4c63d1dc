// OroVectorArray: a cloud of points in the blocks of the memory manager.
//
//   IPtr<OroVectorArray> cloud(new OroVectorArray);
//   cloud->Add(1, 2, 3);
//   cloud->Write(file);
//
// Blocks of 1024 points that were never written do not exist and read as origins. The room for
// points is above the count, except behind SetCount, which nobody checks. Without a memory manager
// the first point that is not the origin ends the process. See realparray.h for the rest.
#pragma once

#include "orobasictypes/realparray.h"

class BinMagic;

class OroVectorArray : public RealPArray {
 public:
  static constexpr const char* className() { return "OroVectorArray"; }
  using Offers = OroOffersOver<OroVectorArray, RealPArray>;

  OroVectorArray() = default;
  // With room for `size` points and none in it.
  explicit OroVectorArray(int32_t size) : points_(size) {}
  // `withExtra`: with a copy of the colours.
  OroVectorArray(const OroVectorArray& other, bool withExtra = true)
      : RealPArray(other, withExtra), points_(other.points_), count_(other.count_) {}
  OroVectorArray& operator=(const OroVectorArray&) = delete;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  int32_t GetCount() const override { return count_; }
  using RealPArray::Get;
  void Get(int32_t i, OroVector& out) const override { out = points_.Get(i); }
  bool GetChecked(int32_t i, OroVector& out) const;  // false outside the points
  const OroMM::VectorArray* Blocks() const override { return &points_; }
  OroMM::VectorArray& Points() { return points_; }

  // The blocks stay; ClearAll gives them back.
  void Clear() override;
  void ClearAll();
  bool Reserve(int32_t n) override;
  int32_t GetCapacity() const override { return points_.Size(); }
  bool Materialize() override;
  void SetCount(int32_t n) override { count_ = n; }

  using RealPArray::Add;
  int32_t Add(const OroVector& point) override;
  int32_t AddD(const double* position) override;
  int32_t Add(double x, double y, double z) override { return Add(OroVector(x, y, z)); }
  // n points at once; the number of the last one, or 0 when there is no room for all.
  int32_t AddAll(const OroVector* points, int32_t n);
  using RealPArray::Set;
  bool Set(int32_t i, const OroVector& point) override;
  bool SetF(int32_t i, const float* position) override;
  bool Set(int32_t i, double x, double y, double z) override { return Set(i, OroVector(x, y, z)); }
  // Makes the block of i.
  bool SetExisting(int32_t i, const OroVector& point) override;

  bool Insert(int32_t i, const OroVector& point) override;
  bool Remove(int32_t i) override;
  bool RemoveLast(int32_t n) override;
  void Reverse();
  // Point i goes to place map[i], for the points up to `count`, -1 for all that the map has. 0
  // leaves the point out; a place that none goes to keeps its own. The count stays.
  void Permute(const OroMM::IntArray& map, int32_t count);
  // Exchanges points and what RealPArray::Swap exchanges.
  void Swap(OroVectorArray& other);

  RealPArray* Clone(bool withExtra) const override { return new OroVectorArray(*this, withExtra); }
  using RealPArray::Clone;
  RealPArray* NewArray(int32_t size) const override { return new OroVectorArray(size); }

  // A chunk: the tag, the count, the points. Writing makes the blocks that are absent. What was not
  // read whole is false; another chunk leaves an empty array.
  static bool IsVectorArrayTag(int32_t tag) { return tag == chunkId; }
  using RealPArray::Write;
  bool Write(BinOutput& output) override;
  bool Read(BinInput& input) override;

 private:
  static constexpr int32_t chunkId = 0xB916B;
  static constexpr int32_t chunkVersion = 0;
  static constexpr int32_t leastRoom = 16;  // points

  void setAll(int32_t first, const OroVector* points, int32_t n);

  OroMM::VectorArray points_;  // element 0 is no point
  int32_t count_ = 0;          // the highest point in use
};

// A new array of the class that writes such chunks, which nobody holds yet; null without the
// service IRealPArrayFactory, or when that does not know the header.
IRealPArray* oroMakePointArray(const BinMagic& header);
