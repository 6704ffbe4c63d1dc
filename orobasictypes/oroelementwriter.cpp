#include "orobasictypes/oroelementwriter.h"

#include "interfaces/IOroDataModelWritable.h"
#include "orobasictypes/binoutput.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/orofiletags.h"
#include "orobasictypes/oroguid.h"
#include "orobasictypes/orostring.h"

namespace {

constexpr char writerSource[] = "orobasictypes/orofile";

constexpr uint64_t largestNarrowSize = 0xFFFFFFFF;
constexpr int64_t sizeOffset = 4;  // of the size field in an element

}  // namespace

// Opening and closing.

OroElementWriter::OroElementWriter(BinOutput* output, int32_t fileVersion, bool flag)
    : bo_(output), flag_(flag), fileVersion_(fileVersion) {}

void OroElementWriter::prepare() {
  if (bo_ == nullptr) return;
  kelAssertFail("!bo_", writerSource, __LINE__);
  drop();
}

bool OroElementWriter::start(BinOutput* output) {
  if (output != nullptr) output->SetFileVersion(fileVersion_);
  if (output == nullptr || !output->IsGood()) {
    delete output;
    return false;
  }
  bo_ = output;
  owned_ = true;
  good_ = true;
  if (isWide()) {
    bo_->SetWordWidth64();
  } else {
    bo_->SetWordWidth32();
  }
  BeginElement(orofiletags::kRoot, isWide() ? 1 : 0);
  return true;
}

// Leaves the file as it is; what is open in it stays without a size.
void OroElementWriter::drop() {
  if (owned_) delete bo_;
  bo_ = nullptr;
  owned_ = false;
  start_.setCount(0);
  nesting_.closeAll();
}

bool OroElementWriter::Close() {
  if (bo_ == nullptr) return false;
  while (!start_.isEmpty()) EndElement();
  good_ = IsGood();
  const bool closed = bo_->FlushAndClose();
  good_ = good_ && closed;
  drop();
  return good_;
}

bool OroElementWriter::hasOutput() {
  if (bo_ != nullptr) return true;
  kelAssertFail("bo_", writerSource, __LINE__);
  good_ = false;
  return false;
}

bool OroElementWriter::IsGood() { return good_ && (bo_ == nullptr || bo_->IsGood()); }

// Elements. The size is not known at the beginning: a zero holds its place.

bool OroElementWriter::writeSize(uint64_t size) {
  if (isWide()) return bo_->Write(&size, 1);
  const bool fits = size <= largestNarrowSize;
  const auto narrow = static_cast<uint32_t>(fits ? size : largestNarrowSize);
  return bo_->Write(&narrow, 1) && fits;
}

bool OroElementWriter::BeginElement(int32_t tag, int32_t version) {
  if (!hasOutput()) return false;
  const int64_t start = bo_->CurrentPosition();
  const uint32_t header = static_cast<uint32_t>(tag) << 8 | (static_cast<uint32_t>(version) & 0xFF);
  const bool written = bo_->Write(&header, 1);
  start_.add(start);
  good_ = writeSize(0) && written && good_;
  return good_;
}

bool OroElementWriter::EndElement() {
  if (start_.isEmpty()) return good_;
  const int64_t end = bo_->CurrentPosition();
  const int64_t start = start_.last();
  const bool there = bo_->SeekFlushed(start + sizeOffset, true);
  const bool written = writeSize(static_cast<uint64_t>(end - start));
  const bool back = bo_->SeekFlushed(end, true);
  start_.pop();
  good_ = good_ && there && written && back;
  return good_;
}

// Objects.

bool OroElementWriter::BeginIdElement(const GUID& id, int32_t version) {
  if (!hasOutput()) return false;
  BeginElement(orofiletags::kObject, version);
  good_ = writeIdFields(id) && good_;
  return good_;
}

bool OroElementWriter::BeginObject(IOroDataModelWritable& object, int32_t version) {
  if (!hasOutput()) return false;
  nesting_.open();
  return BeginIdElement(object.GetId(), version);
}

bool OroElementWriter::EndObject() {
  if (!start_.isEmpty()) nesting_.close();
  return EndElement();
}

bool OroElementWriter::BeginStringObject(const KelCString& text) {
  if (!hasOutput()) return false;
  nesting_.open();
  BeginElement(orofiletags::kStringObject, 0);
  return WriteText(text);
}

bool OroElementWriter::WriteObject(IOroDataModelWritable& object) {
  if (!hasOutput()) return false;
  const bool written = object.Write(*bo_);
  good_ = good_ && written;
  return good_;
}

bool OroElementWriter::WriteObjectTo(IOroDataModelWritable& object, IOroDataModelWriter& writer) {
  if (!hasOutput()) return false;
  const bool written = object.WriteTo(writer);
  good_ = good_ && written;
  return good_;
}

// Values.

template <class T>
bool OroElementWriter::writeScalar(T value) {
  if (!hasOutput()) return false;
  good_ = bo_->Write(&value, 1) && good_;
  return good_;
}

template <class T>
bool OroElementWriter::writeValues(int32_t tag, const T* values, int count) {
  if (!hasOutput()) return false;
  BeginElement(tag, 0);
  good_ = bo_->Write(values, count) && good_;
  return EndElement();
}

bool OroElementWriter::writeIdFields(const GUID& id) {
  return bo_->Write(&id.data1, 1) && bo_->Write(&id.data2, 1) && bo_->Write(&id.data3, 1) &&
         bo_->Write(id.data4, 8);
}

bool OroElementWriter::WriteId(const GUID& id) {
  if (!hasOutput()) return false;
  BeginElement(orofiletags::kId, 0);
  good_ = writeIdFields(id) && good_;
  return EndElement();
}

bool OroElementWriter::WriteFloatPair(const float* value) {
  return writeValues(orofiletags::kFloatPair, value, 2);
}

bool OroElementWriter::WriteDoublePair(const double* value) {
  return writeValues(orofiletags::kDoublePair, value, 2);
}

bool OroElementWriter::WriteMatrix(const double* value) {
  return writeValues(orofiletags::kMatrix, value, 16);
}

bool OroElementWriter::WritePoint(const double* value) {
  return writeValues(orofiletags::kPoint, value, 3);
}

bool OroElementWriter::WriteOroString(const OroString& text) {
  if (!hasOutput()) return false;
  BeginElement(orofiletags::kOroString, 0);
  good_ = text.write(*bo_) && good_;
  return EndElement();
}

bool OroElementWriter::WriteText(const KelCString& text) {
  if (!hasOutput()) return false;
  BeginElement(orofiletags::kText, 0);
  good_ = bo_->WriteBytes(text.c_str(), text.length()) && good_;
  return EndElement();
}

bool OroElementWriter::WriteDouble(double value) { return writeScalar(value); }
bool OroElementWriter::WriteFloat(float value) { return writeScalar(value); }
bool OroElementWriter::WriteUInt32(uint32_t value) { return writeScalar(value); }
bool OroElementWriter::WriteInt32(int32_t value) { return writeScalar(value); }
bool OroElementWriter::WriteInt8(int8_t value) { return writeScalar(value); }
bool OroElementWriter::WriteUInt8(uint8_t value) { return writeScalar(value); }
