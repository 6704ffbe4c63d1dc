// IOroPointExtraInfo: the colours of the points of one array (RealPArray), kept beside them.
//
// A component library makes one for each array that has colours. Places count as the points do:
// place 0 belongs to no point. A colour is red, green and blue from 0 to 1, held as floats or
// packed: red in the lowest byte of 32 bits, then green, blue, and 255. One user at a time.
#pragma once

#include <cstdint>

#include "orobasictypes/array.h"
#include "orobasictypes/iorounknown.h"

class BitVector;

class IOroPointExtraInfo : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroPointExtraInfo"; }

  // A new object with the same contents, which nobody holds yet.
  virtual IOroPointExtraInfo* Clone() = 0;
  virtual bool HasColors() = 0;
  // From here on there are colours, and room for so many places.
  virtual void SetCapacity(int32_t count) = 0;
  // From here on there are none.
  virtual void ClearColors() = 0;
  // Makes the place when it is missing.
  virtual void SetColorD(int32_t i, const double* color) = 0;
  virtual void SetColorF(int32_t i, const float* color) = 0;
  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot7() = 0;
  // Black where there is no such place.
  virtual void GetColorD(int32_t i, double* color) = 0;
  virtual void GetColorF(int32_t i, float* color) = 0;
  virtual uint32_t GetPackedColor(int32_t i) = 0;
  // The number of places, place 0 among them.
  virtual int32_t GetCount() = 0;
  // Whether the colours of the points 1 to `count` are the same.
  virtual bool Equals(IOroPointExtraInfo* other, int32_t count) = 0;
  virtual void CopyColor(int32_t to, int32_t from) = 0;
  // Places for so many points.
  virtual void SetCount(int32_t count) = 0;
  // Whether nothing is lost with this object when it has no colours.
  virtual bool CanDiscard() = 0;
  // Takes out, or puts in, `count` places from `first` on; the places behind move.
  virtual void Remove(int32_t first, int32_t count) = 0;
  virtual void Insert(int32_t first, int32_t count) = 0;
  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot18() = 0;
  virtual void Swap(IOroPointExtraInfo* other) = 0;
  virtual void Assign(IOroPointExtraInfo* other) = 0;
  // Place p of the range takes the colour that stands at index[p].
  virtual void Permute(const OroMM::IntArray& index, int32_t first, int32_t last) = 0;
  // The colours at the places of the mask move to the places 1, 2, 3 and so on; the rest goes.
  virtual void Compact(const BitVector& mask) = 0;
  // The colour at i moves to map[i], for the places up to `count`; 0 leaves it out.
  virtual void Reorder(const OroMM::IntArray& map, int32_t count) = 0;
  // Whether all of this holds together.
  virtual bool Validate() = 0;
  // The packed colours by place, GetCount of them; what is held as floats becomes packed by this.
  // Borrowed, until the next operation.
  virtual uint32_t* GetPackedArray() = 0;
};
