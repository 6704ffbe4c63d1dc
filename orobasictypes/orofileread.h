// OroFileRead: reads model files, the trees of tagged elements that applications save.
//
//   #include "interfaces/IOroDataModelReader.h"
//   OroFileRead<> reader;
//   if (!reader.Open(path) || !reader.IsGood()) return false;
//   while (!reader.AtElementEnd()) readOne(reader);
//
// Damage that shows ends in IsGood() false and in the end of loops over elements. It owns the input
// that Open makes, and not one that it is given. A template only because headers of this folder
// know no interface: whoever makes one includes that of the reader. One thread at a time.
#pragma once

#include <cstdint>

#include "orobasictypes/bininputfile.h"
#include "orobasictypes/oroelementreader.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/oropath.h"

class IOroDataModelReader;

template <class Interface = IOroDataModelReader>
class OroFileRead : public Interface {
 public:
  static constexpr const char* className() { return "OroFileRead"; }

  OroFileRead() = default;
  // On an open input, which stays the caller's; no root is begun.
  explicit OroFileRead(BinInput* input) : elements_(input) {}

  // False when the file may not be read or does not open; true for every other file: IsGood() tells
  // whether it is a model file. Stands behind the root's header.
  bool Open(const OroPath& path) {
    return elements_.prepare(path) && elements_.start(OpenInput(path));
  }
  void Close() { elements_.Close(); }
  // For an input without a root: sizes of 32 bits for 0, else of 64. The first to say decides.
  void SetFileVersion(int32_t version) { elements_.SetFileVersion(version); }
  // Begins the next object, or element, if it is that one; else nothing moves.
  bool MatchObject(const GUID& id, int32_t& version) { return elements_.MatchObject(id, version); }
  bool MatchTag(int32_t tag, int32_t& version) { return elements_.MatchTag(tag, version); }
  // Bytes up to the end of the current element, 0 behind it and without one.
  int64_t RemainingBytes() { return elements_.RemainingBytes(); }

  bool ReadObject(IOroDataModelReadable& object) override { return elements_.ReadObject(object); }
  bool ReadObjectFrom(IOroDataModelReadable& object) override {
    return elements_.ReadObjectFrom(object, *this);
  }
  bool ReadId(GUID& id) override { return elements_.ReadId(id); }
  bool ReadFloatPair(float* value) override { return elements_.ReadFloatPair(value); }
  bool ReadDoublePair(double* value) override { return elements_.ReadDoublePair(value); }
  bool ReadMatrix(double* value) override { return elements_.ReadMatrix(value); }
  bool ReadPoint(double* value) override { return elements_.ReadPoint(value); }
  bool ReadOroString(OroString& text) override { return elements_.ReadOroString(text); }
  bool ReadText(KelCString& text) override { return elements_.ReadText(text); }
  bool ReadDouble(double& value) override { return elements_.ReadDouble(value); }
  bool ReadFloat(float& value) override { return elements_.ReadFloat(value); }
  bool ReadUInt32(uint32_t& value) override { return elements_.ReadUInt32(value); }
  bool ReadInt32(int32_t& value) override { return elements_.ReadInt32(value); }
  bool ReadInt8(int8_t& value) override { return elements_.ReadInt8(value); }
  bool ReadUInt8(uint8_t& value) override { return elements_.ReadUInt8(value); }
  const GUID* PeekId() override { return elements_.PeekId(); }
  bool BeginObject(const GUID& id, int32_t& version) override {
    return elements_.BeginObject(id, version);
  }
  bool EndObject() override { return elements_.EndObject(); }
  const KelCString* PeekString() override { return elements_.PeekString(); }
  bool BeginStringObject(const KelCString& id) override { return elements_.BeginStringObject(id); }
  bool EndStringObject() override { return elements_.EndStringObject(); }
  bool BeginElement() override { return elements_.BeginElement(); }
  bool AtElementEnd() override { return elements_.AtElementEnd(); }
  bool EndElement() override { return elements_.EndElement(); }
  int32_t GetTag() override { return elements_.GetTag(); }
  int32_t GetVersion() override { return elements_.GetVersion(); }
  const GUID* GetId() override { return elements_.GetId(); }
  bool IsGood() override { return elements_.IsGood(); }
  int32_t PeekTag() override { return elements_.PeekTag(); }

  // A new input on the path, which Open then owns; null or one that is not good fails Open.
  virtual BinInput* OpenInput(const OroPath& path) { return new BinInputFile(path); }

  using Offers = OroOffers<OroFileRead, Interface>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 private:
  OroElementReader elements_;
};
