// IOroDataModelWriter: writes a model file, a tree of tagged elements.
//
//   writer->BeginElement(kCloudTag, 1);
//   writer->WriteInt32(count);
//   writer->WritePoint(origin);
//   writer->EndElement();
//   return writer->IsGood();
//
// Whoever opened it owns it; an object that is written gets it for the time of the call. Each
// operation gives whether the writer is good afterwards: once something failed it stays bad, and
// one test at the end is enough. Tags have 24 bits, versions 8. One thread at a time.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroDataModelWritable;
class KelCString;
class OroString;
struct GUID;

class IOroDataModelWriter : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroDataModelWriter"; }

  // Lets the object write itself, as values or as elements.
  virtual bool WriteObject(IOroDataModelWritable& object) = 0;
  virtual bool WriteObjectTo(IOroDataModelWritable& object) = 0;

  // --- Whole elements. A null text is written as an empty one.

  virtual bool WriteId(const GUID& id) = 0;
  virtual bool WriteFloatPair(const float* value) = 0;
  virtual bool WriteDoublePair(const double* value) = 0;
  virtual bool WriteMatrix(const double* value) = 0;  // sixteen, by rows
  virtual bool WritePoint(const double* value) = 0;   // three
  virtual bool WriteOroString(const OroString& text) = 0;
  virtual bool WriteText(const KelCString& text) = 0;

  // --- Values within the current element.

  virtual bool WriteDouble(double value) = 0;
  virtual bool WriteFloat(float value) = 0;
  virtual bool WriteUInt32(uint32_t value) = 0;
  virtual bool WriteInt32(int32_t value) = 0;
  virtual bool WriteInt8(int8_t value) = 0;
  virtual bool WriteUInt8(uint8_t value) = 0;

  // --- Objects: an element with the object's id in front.

  virtual bool BeginObject(IOroDataModelWritable& object, int32_t version) = 0;
  virtual bool EndObject() = 0;
  // The same for objects that are known by a text.
  virtual bool BeginStringObject(const KelCString& text) = 0;
  virtual bool EndStringObject() = 0;
  // The element of an object without the object. EndElement closes it.
  virtual bool BeginIdElement(const GUID& id, int32_t version) = 0;

  // --- Elements.

  virtual bool BeginElement(int32_t tag, int32_t version) = 0;
  // Closes the current element; nothing when none is open.
  virtual bool EndElement() = 0;

  virtual bool IsGood() = 0;
};
