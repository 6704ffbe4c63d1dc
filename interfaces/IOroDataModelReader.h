// IOroDataModelReader: reads a model file, a tree of tagged elements.
//
//   reader->BeginElement();
//   while (!reader->AtElementEnd()) {
//     if (reader->PeekTag() == kPointTag) reader->ReadPoint(point);
//     else if (reader->BeginElement()) reader->EndElement();  // not ours
//   }
//   reader->EndElement();
//   return reader->IsGood();
//
// Whoever opened it owns it; an object that is read gets it for the time of the call. Operations
// with no result of their own give whether the reader is good afterwards: once something was wrong
// it stays bad until the next file, and loops over elements end. Whoever enters elements that it
// does not know limits levels and elements: those of a damaged file may overlap. Ids and texts that
// are lent are good until the next call. One thread at a time.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroDataModelReadable;
class KelCString;
class OroString;
struct GUID;

class IOroDataModelReader : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IOroDataModelReader"; }

  // Lets the object read itself, as values or as elements.
  virtual bool ReadObject(IOroDataModelReadable& object) = 0;
  virtual bool ReadObjectFrom(IOroDataModelReadable& object) = 0;

  // --- Whole elements. A value that does not come whole stays as it was. An element with another
  // tag makes the reader bad, but its bytes are read all the same; texts are not.

  virtual bool ReadId(GUID& id) = 0;
  virtual bool ReadFloatPair(float* value) = 0;
  virtual bool ReadDoublePair(double* value) = 0;
  virtual bool ReadMatrix(double* value) = 0;  // sixteen, by rows
  virtual bool ReadPoint(double* value) = 0;   // three
  virtual bool ReadOroString(OroString& text) = 0;
  virtual bool ReadText(KelCString& text) = 0;

  // --- Values within the current element. Read whether or not the reader is good.

  virtual bool ReadDouble(double& value) = 0;
  virtual bool ReadFloat(float& value) = 0;
  virtual bool ReadUInt32(uint32_t& value) = 0;
  virtual bool ReadInt32(int32_t& value) = 0;
  virtual bool ReadInt8(int8_t& value) = 0;
  virtual bool ReadUInt8(uint8_t& value) = 0;

  // --- Objects: an element with an id in front. Begin makes the reader bad when something else
  // comes next; the element is open even so, unless it is broken.

  // The id of the object that comes next, null when something else does. Nothing moves.
  virtual const GUID* PeekId() = 0;
  virtual bool BeginObject(const GUID& id, int32_t& version) = 0;
  virtual bool EndObject() = 0;
  // The same for objects that are known by a text.
  virtual const KelCString* PeekString() = 0;
  virtual bool BeginStringObject(const KelCString& id) = 0;
  virtual bool EndStringObject() = 0;

  // --- Elements.

  // False, with nothing moved and the reader bad, when the element does not lie in the file.
  virtual bool BeginElement() = 0;
  // True when the current element has nothing more, when there is none, and on a bad reader.
  virtual bool AtElementEnd() = 0;
  // Goes behind the current element, unless the reader is bad, and closes it.
  virtual bool EndElement() = 0;
  // Of the element that was begun last.
  virtual int32_t GetTag() = 0;
  virtual int32_t GetVersion() = 0;
  // Of the object that was begun last, null before the first.
  virtual const GUID* GetId() = 0;

  virtual bool IsGood() = 0;
  // The tag of the element that comes next, -1 when none does. Nothing moves.
  virtual int32_t PeekTag() = 0;
};
