// OroElementReader: what OroFileRead reads with, the elements of a model file on a BinInput. Take
// OroFileRead; this is the class without the interface, which headers of this folder do not know.
//
// It owns the input that it is given to start with, and not the one of its constructor. One thread
// at a time.
#pragma once

#include <cstdint>
#include <optional>

#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/orofilenesting.h"
#include "orobasictypes/oroguid.h"

class BinInput;
class IOroDataModelReadable;
class IOroDataModelReader;
class OroPath;
class OroString;

class OroElementReader {
 public:
  OroElementReader() = default;
  explicit OroElementReader(BinInput* input) : bi_(input) {}
  ~OroElementReader() { Close(); }
  OroElementReader(const OroElementReader&) = delete;
  OroElementReader& operator=(const OroElementReader&) = delete;

  // Before opening: asserts that nothing is open, closes what is, and is true if the file may be
  // read. Then start() takes the input over and begins the root; false for one that is not good.
  bool prepare(const OroPath& path);
  bool start(BinInput* input);
  void Close();
  void SetFileVersion(int32_t version);

  // The operations of OroFileRead.
  bool ReadObject(IOroDataModelReadable& object);
  bool ReadObjectFrom(IOroDataModelReadable& object, IOroDataModelReader& reader);
  bool ReadId(GUID& id);
  bool ReadFloatPair(float* value);
  bool ReadDoublePair(double* value);
  bool ReadMatrix(double* value);
  bool ReadPoint(double* value);
  bool ReadOroString(OroString& text);
  bool ReadText(KelCString& text);
  bool ReadDouble(double& value);
  bool ReadFloat(float& value);
  bool ReadUInt32(uint32_t& value);
  bool ReadInt32(int32_t& value);
  bool ReadInt8(int8_t& value);
  bool ReadUInt8(uint8_t& value);
  const GUID* PeekId();
  bool BeginObject(const GUID& id, int32_t& version);
  bool MatchObject(const GUID& id, int32_t& version);
  bool EndObject();
  const KelCString* PeekString();
  bool BeginStringObject(const KelCString& id);
  bool EndStringObject() { return EndObject(); }
  bool BeginElement();
  bool MatchTag(int32_t tag, int32_t& version);
  bool AtElementEnd();
  bool EndElement();
  int64_t RemainingBytes();
  int32_t GetTag() const { return tag_; }
  int32_t GetVersion() const { return version_; }
  const GUID* GetId() const { return id_.has_value() ? &*id_ : nullptr; }
  bool IsGood();
  int32_t PeekTag();

 private:
  class Peek;

  bool hasInput();
  uint64_t readSize(bool wide);
  bool readIdFields(GUID& id);
  bool readStringId(KelCString& text);
  bool readTextBody(KelCString& text);
  template <class T>
  bool readValues(T* values, int count);
  template <class T>
  bool readScalar(T& value);
  template <class Body>
  bool readElement(int32_t tag, const Body& body);

  OroArray<int64_t> end_{3};  // where each open element ends, the innermost last
  BinInput* bi_ = nullptr;    // null when closed
  int32_t tag_ = 0;           // of the element that was begun last
  int32_t version_ = 0;
  std::optional<GUID> id_;  // of the object that was begun last
  bool good_ = true;        // nothing was wrong since the file was opened
  bool owned_ = false;      // the input is deleted by this
  std::optional<GUID> peekedId_;
  KelCString peekedString_;
  OroFileNesting nesting_;
};
