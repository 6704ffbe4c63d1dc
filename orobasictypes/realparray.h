// RealPArray: all of a cloud of points that needs no storage of its own: colours, sorting,
// transforming, bounds. Derived classes bring the storage; for clouds take OroVectorArray.
//
//   IPtr<OroVectorArray> cloud(new OroVectorArray);
//   cloud->Add(1, 2, 3);
//   cloud->Transform(matrix);
//
// A storage class needs the operations on single points alone; one whose points lie in the blocks
// of a split array is worked on at the speed of memory (Blocks). The array holds a reference on its
// extra info, which has the colours; without a component that offers one there are none. One
// thread.
#pragma once

#include <cstdint>

#include "orobasictypes/array.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/irealparray.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/pointrecords.h"
#include "orobasictypes/progresscallbackbase.h"

class IOroPointExtraInfo;
class PointColorObserver;
class VertexArrayImp;
struct OroMatrix;

class RealPArray : public ProgressCallbackBase, public virtual IRealPArray {
 public:
  static constexpr const char* className() { return "RealPArray"; }
  using Offers = OroOffers<RealPArray, IRealPArray>;

  RealPArray() = default;
  RealPArray(const RealPArray&) = delete;
  RealPArray& operator=(const RealPArray&) = delete;
  ~RealPArray() override;

  // What a storage class may offer beyond IRealPArray; asserted and 0 or false where it does not.
  // A point comes out or in at i, and those behind it move. Outside the points: nothing.
  virtual bool Remove(int32_t i);
  virtual bool Insert(int32_t i, const OroVector& point);
  virtual bool RemoveLast(int32_t n);
  virtual bool Materialize();
  virtual int32_t GetCapacity() const;

  // Appends origins until there are n points.
  virtual void AddUntil(int32_t n);
  // Position and, in an array that has colours, colour. Adding gives the point's number.
  virtual int32_t AddPointF(const OroPointF& record);
  virtual int32_t AddPointD(const OroPointD& record);
  // Makes each colour its gray. False without colours.
  virtual bool ColorsToGray();
  // Turn colours on where there are none; false when they cannot be had.
  virtual bool SetColor(int32_t i, const float color[3]);
  virtual bool SetColorNotify(int32_t i, const float color[3]);  // tells the observer first
  virtual bool SetColor(int32_t i, double r, double g, double b);
  virtual bool SetPointF(int32_t i, const OroPointF& record);
  virtual bool SetPointD(int32_t i, const OroPointD& record);
  virtual OroVector GetVector(int32_t i) const;
  virtual OroFloat4 GetFloat4(int32_t i) const;
  // Black without colours. In the gray forms w is 0.3 r + 0.59 g + 0.11 b.
  virtual void GetPointF(int32_t i, OroPointF& record) const;
  virtual void GetPointD(int32_t i, OroPointD& record) const;
  virtual void GetPointGrayF(int32_t i, OroPointF& record) const;
  virtual void GetPointGrayD(int32_t i, OroPointD& record) const;
  // Multiplies all colours, place 0 among them, without a limit. False without colours.
  virtual bool ScaleColors(float factor);
  // A new array of the same points, with or without a copy of the colours.
  virtual RealPArray* Clone(bool withExtra) const = 0;
  // Brings points and colours into the order of Compare; equal points end in an order of the
  // sort's own. index[p] then tells where the point at p stood before. With `removeDuplicates` one
  // of equal points stays, and the mask tells which places of the sorted points stayed; without, it
  // has all points. Both may be null.
  virtual void Sort(bool removeDuplicates, OroMM::IntArray* index, BitVector* keptMask);
  // A new empty array of this class with room for so many points.
  virtual RealPArray* NewArray(int32_t size) const = 0;
  // A number that the array carries for its users.
  virtual double GetScale() const;
  virtual void SetScale(double scale);
  // Keeps the points that the mask has. The last one is not looked at and always goes, kept for
  // those who put a spare point there. No colour moves: see CompactColors.
  virtual void Compress(const BitVector& mask);

  // The operations of the extra info of these names. Nothing without one.
  virtual void RemoveColors(int32_t first, int32_t count);
  virtual void InsertColors(int32_t first, int32_t count);
  virtual void CompactColors(const BitVector& mask);
  virtual void ReorderColors(const OroMM::IntArray& map, int32_t count);
  virtual bool ValidateColors() const;  // true without one

  // The split array that the points lie in, for loops block by block; null where they do not. Who
  // derives from a class that has one and stores elsewhere gives null again.
  virtual const OroMM::VectorArray* Blocks() const;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  IRealPArray* Clone() const override { return Clone(true); }
  using IRealPArray::Add;
  int32_t AddF(const float* position) override;
  using IRealPArray::Set;
  bool SetF(int32_t i, const float* position) override;
  using IRealPArray::Get;
  void Get(int32_t i, float out[3]) const override;
  int32_t unusedSlot16() override { return 0; }
  void Get(int32_t i, double& x, double& y, double& z) const override;
  bool SetHasColors(bool wanted) override;
  bool GetColorF(int32_t i, float out[3]) const override;
  bool GetColorD(int32_t i, double out[3]) const override;
  bool GetColor(int32_t i, double& r, double& g, double& b) const override;
  bool HasColors() const override;
  void GetBounds(OroVector& min, OroVector& max, const BitVector& mask) const override;
  void GetBounds(OroVector& min, OroVector& max) const override;
  void GetBoundsExtra(OroVector& min, OroVector& max, const BitVector* mask) const override;
  bool Read(BinInput& input) override;
  using IRealPArray::Write;
  bool Write(BinOutput& output, const BitVector& skipMask) override;
  IRealPArray* NewLike() const override { return NewArray(0); }

  // The points, colours and scale of the other, one by one. Nobody observes this array then.
  void Assign(const RealPArray& other);
  // The same points and colours; a coordinate that is not a number equals nothing.
  bool operator==(const RealPArray& other) const;
  // The largest coordinate without its sign, at least 1e-16: what tolerances are relative to.
  double AbsoluteMaximum() const;
  void Transform(const OroMatrix& matrix);
  // Below 0: a stands before b in the order of Sort; 0: they are equal.
  static int32_t Compare(const OroVector& a, const OroVector& b) {
    if (a.x > b.x) return -1;
    if (a.x < b.x) return 1;
    if (a.y > b.y) return -1;
    if (a.y < b.y) return 1;
    return a.z > b.z ? -1 : a.z < b.z ? 1 : 0;
  }

  // Borrowed, null without one. Taking it hands over the array's reference.
  IOroPointExtraInfo* ExtraInfo() const { return extra_; }
  IOroPointExtraInfo* TakeExtraInfo();
  void SetExtraInfo(IOroPointExtraInfo* info);
  // Whether the extra info is in packed form, and colours go to files in that form.
  bool HasPackedColors() const { return packed_; }
  void SetPackedColors(bool packed) { packed_ = packed; }
  // Not owned; null is nobody.
  PointColorObserver* ColorObserver() const { return observer_; }
  void SetColorObserver(PointColorObserver* observer) { observer_ = observer; }
  // Exchanges extra info, scale, observer and form of the colours.
  void Swap(RealPArray& other);
  // The points as vertices; the array must live as long.
  void MakeVertexArray(IPtr<VertexArrayImp>& out) const;

  // The chunk of the colours of the places 0 to `lastIndex`, without those that the mask has; null
  // is no mask. Reading is 1, or 0 when the chunk is damaged or colours cannot be had.
  bool WriteColors(BinOutput& output, int32_t lastIndex, const BitVector* skipMask) const;
  int32_t ReadColors(BinInput& input);

 protected:
  // A copy is observed by nobody; its progress is off.
  RealPArray(const RealPArray& other, bool withExtra);

 private:
  bool makeExtraInfo();
  bool needExtraInfo() { return extra_ != nullptr || SetHasColors(true); }
  void dropExtraInfo();
  OroMM::VectorArray* blocks() { return const_cast<OroMM::VectorArray*>(Blocks()); }
  void removeDuplicatesOf(int32_t count, BitVector* keptMask);
  bool readFloatColors(BinInput& input, int32_t count);
  bool readPackedColors(BinInput& input, int32_t count);

  IOroPointExtraInfo* extra_ = nullptr;     // one reference is the array's
  double scale_ = 1.0;                      // of its users' meaning
  PointColorObserver* observer_ = nullptr;  // not owned
  bool packed_ = false;
};
