// OroFileWrite: writes model files, the trees of tagged elements that applications save.
//
//   #include "interfaces/IOroDataModelWriter.h"
//   OroFileWrite<> writer;
//   if (!writer.Open(path)) return false;
//   writer.BeginElement(kCloudTag, 1);
//   writer.WriteInt32(count);
//   writer.EndElement();
//   return writer.Close();
//
// Without Close the file is cut off: elements that were ended can be read. It owns the output that
// Open makes, and not one that it is given. A template only because headers of this folder know no
// interface: whoever makes one includes that of the writer. One thread at a time.
#pragma once

#include <cstdint>

#include "orobasictypes/binoutputfile.h"
#include "orobasictypes/oroelementwriter.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/oropath.h"

class IOroDataModelWriter;

template <class Interface = IOroDataModelWriter>
class OroFileWrite : public Interface {
 public:
  static constexpr const char* className() { return "OroFileWrite"; }

  // File versions 1 to 9 give element sizes of 32 bits, all others of 64. The flag is the caller's.
  explicit OroFileWrite(int32_t fileVersion = 0, bool flag = false)
      : OroFileWrite(nullptr, fileVersion, flag) {}
  // On an open output, which stays the caller's; no root is begun.
  explicit OroFileWrite(BinOutput* output, int32_t fileVersion = 0, bool flag = false)
      : elements_(output, fileVersion, flag) {}

  // Makes the file, or empties it, and begins the root. False when that is not possible.
  bool Open(const OroPath& path) {
    elements_.prepare();
    return elements_.start(OpenOutput(path));
  }
  // Ends what is open and closes the output, a given one too. True if all that was ever written is
  // in the file.
  bool Close() { return elements_.Close(); }
  bool GetFlag() const { return elements_.GetFlag(); }

  bool WriteObject(IOroDataModelWritable& object) override { return elements_.WriteObject(object); }
  bool WriteObjectTo(IOroDataModelWritable& object) override {
    return elements_.WriteObjectTo(object, *this);
  }
  bool WriteId(const GUID& id) override { return elements_.WriteId(id); }
  bool WriteFloatPair(const float* value) override { return elements_.WriteFloatPair(value); }
  bool WriteDoublePair(const double* value) override { return elements_.WriteDoublePair(value); }
  bool WriteMatrix(const double* value) override { return elements_.WriteMatrix(value); }
  bool WritePoint(const double* value) override { return elements_.WritePoint(value); }
  bool WriteOroString(const OroString& text) override { return elements_.WriteOroString(text); }
  bool WriteText(const KelCString& text) override { return elements_.WriteText(text); }
  bool WriteDouble(double value) override { return elements_.WriteDouble(value); }
  bool WriteFloat(float value) override { return elements_.WriteFloat(value); }
  bool WriteUInt32(uint32_t value) override { return elements_.WriteUInt32(value); }
  bool WriteInt32(int32_t value) override { return elements_.WriteInt32(value); }
  bool WriteInt8(int8_t value) override { return elements_.WriteInt8(value); }
  bool WriteUInt8(uint8_t value) override { return elements_.WriteUInt8(value); }
  bool BeginObject(IOroDataModelWritable& object, int32_t version) override {
    return elements_.BeginObject(object, version);
  }
  bool EndObject() override { return elements_.EndObject(); }
  bool BeginStringObject(const KelCString& text) override {
    return elements_.BeginStringObject(text);
  }
  bool EndStringObject() override { return elements_.EndStringObject(); }
  bool BeginIdElement(const GUID& id, int32_t version) override {
    return elements_.BeginIdElement(id, version);
  }
  bool BeginElement(int32_t tag, int32_t version) override {
    return elements_.BeginElement(tag, version);
  }
  bool EndElement() override { return elements_.EndElement(); }
  bool IsGood() override { return elements_.IsGood(); }

  // A new output on the path, which Open then owns; null or one that is not good fails Open.
  virtual BinOutput* OpenOutput(const OroPath& path) { return new BinOutputFile(path); }

  using Offers = OroOffers<OroFileWrite, Interface>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 private:
  OroElementWriter elements_;
};
