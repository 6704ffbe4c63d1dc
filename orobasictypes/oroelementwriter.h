// OroElementWriter: what OroFileWrite writes with, the elements of a model file on a BinOutput.
// Take OroFileWrite; this is the class without the interface, which headers of this folder do not
// know.
//
// It owns the output that it is given to start with, and not the one of its constructor. One thread
// at a time.
#pragma once

#include <cstdint>

#include "orobasictypes/oroarray.h"
#include "orobasictypes/orofilenesting.h"

class BinOutput;
class IOroDataModelWritable;
class IOroDataModelWriter;
class KelCString;
class OroString;
struct GUID;

class OroElementWriter {
 public:
  OroElementWriter(BinOutput* output, int32_t fileVersion, bool flag);
  ~OroElementWriter() { drop(); }
  OroElementWriter(const OroElementWriter&) = delete;
  OroElementWriter& operator=(const OroElementWriter&) = delete;

  // Before opening: asserts that nothing is open and drops what is. Then start() takes the output
  // over and begins the root; false for one that is not good.
  void prepare();
  bool start(BinOutput* output);
  bool Close();
  bool GetFlag() const { return flag_; }

  // The operations of OroFileWrite.
  bool WriteObject(IOroDataModelWritable& object);
  bool WriteObjectTo(IOroDataModelWritable& object, IOroDataModelWriter& writer);
  bool WriteId(const GUID& id);
  bool WriteFloatPair(const float* value);
  bool WriteDoublePair(const double* value);
  bool WriteMatrix(const double* value);
  bool WritePoint(const double* value);
  bool WriteOroString(const OroString& text);
  bool WriteText(const KelCString& text);
  bool WriteDouble(double value);
  bool WriteFloat(float value);
  bool WriteUInt32(uint32_t value);
  bool WriteInt32(int32_t value);
  bool WriteInt8(int8_t value);
  bool WriteUInt8(uint8_t value);
  bool BeginObject(IOroDataModelWritable& object, int32_t version);
  bool EndObject();
  bool BeginStringObject(const KelCString& text);
  bool EndStringObject() { return EndObject(); }
  bool BeginIdElement(const GUID& id, int32_t version);
  bool BeginElement(int32_t tag, int32_t version);
  bool EndElement();
  bool IsGood();

 private:
  bool hasOutput();
  bool isWide() const { return fileVersion_ < 1 || fileVersion_ > 9; }
  bool writeSize(uint64_t size);
  bool writeIdFields(const GUID& id);
  template <class T>
  bool writeScalar(T value);
  template <class T>
  bool writeValues(int32_t tag, const T* values, int count);
  void drop();

  OroArray<int64_t> start_{2};  // where each open element begins, the innermost last
  BinOutput* bo_ = nullptr;     // null when closed
  bool owned_ = false;          // the output is deleted by this
  bool good_ = true;            // nothing failed since the file was opened
  bool flag_ = false;           // a mark for whoever made the writer; nothing here looks at it
  int32_t fileVersion_ = 0;     // 1 to 9: sizes of 32 bits, else of 64
  OroFileNesting nesting_;
};
