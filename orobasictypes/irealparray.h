// IRealPArray: a cloud of points, each with a position and perhaps a colour, as component libraries
// see it.
//
// Points are numbered from 1 to the count. RealPArray has what can be said of all clouds, its
// derived classes the storage (OroVectorArray). New arrays have a count of 0 references: whoever
// asked for one takes the first. One user at a time.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class BinInput;
class BinOutput;
class BitVector;
struct OroVector;

class IRealPArray : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IRealPArray"; }

  // The number of points.
  virtual int32_t GetCount() const = 0;
  // No points; the storage may stay for new ones.
  virtual void Clear() = 0;
  // Room for n points. Never takes any away.
  virtual bool Reserve(int32_t n) = 0;
  // A new array with the same points and colours.
  virtual IRealPArray* Clone() const = 0;
  // Each appends a point and returns its number; 0 when it could not.
  virtual int32_t Add(const OroVector& point) = 0;
  virtual int32_t AddF(const float* position) = 0;   // three floats; not offered by every class
  virtual int32_t AddD(const double* position) = 0;  // three doubles; null is the origin
  virtual int32_t Add(double x, double y, double z) = 0;
  // Not checked, and no storage is made or given back.
  virtual void SetCount(int32_t n) = 0;
  // Each stores a point at i and makes room for it; behind the last point the count becomes i.
  virtual bool Set(int32_t i, const OroVector& point) = 0;
  virtual bool SetF(int32_t i, const float* position) = 0;
  // Stores at i, where there is room already; the count stays.
  virtual bool SetExisting(int32_t i, const OroVector& point) = 0;
  virtual bool Set(int32_t i, double x, double y, double z) = 0;
  // Each reads point i; what was never stored is the origin.
  virtual void Get(int32_t i, OroVector& out) const = 0;
  virtual void Get(int32_t i, float out[3]) const = 0;
  // Not called by the host; the place counts. Implementations return 0.
  virtual int32_t unusedSlot16() = 0;
  virtual void Get(int32_t i, double& x, double& y, double& z) const = 0;

  // Turns colours on or off. False when they are already as wanted, or cannot be had.
  virtual bool SetHasColors(bool wanted) = 0;
  // Red, green and blue from 0 to 1. False, and nothing is stored, when there are no colours.
  virtual bool GetColorF(int32_t i, float out[3]) const = 0;
  virtual bool GetColorD(int32_t i, double out[3]) const = 0;
  virtual bool GetColor(int32_t i, double& r, double& g, double& b) const = 0;
  virtual bool HasColors() const = 0;

  // The smallest box around the points that the mask has, or around all. (0, 0, 0) for both corners
  // without points; 1e42 and -1e42 where there are some but the mask has none of them.
  virtual void GetBounds(OroVector& min, OroVector& max, const BitVector& mask) const = 0;
  virtual void GetBounds(OroVector& min, OroVector& max) const = 0;
  // One of the two above; a null mask is all points.
  virtual void GetBoundsExtra(OroVector& min, OroVector& max, const BitVector* mask) const = 0;

  // The array's chunk, without colours. Reading is false for another or a damaged chunk.
  virtual bool Read(BinInput& input) = 0;
  // Without the points that the mask has; not offered by every class.
  virtual bool Write(BinOutput& output, const BitVector& skipMask) = 0;
  virtual bool Write(BinOutput& output) = 0;
  // A new empty array of the same class.
  virtual IRealPArray* NewLike() const = 0;
};
