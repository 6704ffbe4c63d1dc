#include "orobasictypes/oroelementreader.h"

#include <algorithm>
#include <utility>

#include "interfaces/IOroDataModelReadable.h"
#include "orobasictypes/bininput.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/orofiletags.h"
#include "orobasictypes/oropath.h"
#include "platform/filestatus.h"

namespace {

constexpr char readerSource[] = "orobasictypes/orofile";

constexpr int64_t longestText = 0x7FFFFFFE;  // bytes; one more for the terminator fits a block

}  // namespace

// Looks at what comes next and puts everything back when it goes, the position too.
class OroElementReader::Peek {
 public:
  explicit Peek(OroElementReader& reader)
      : reader_(reader),
        start_(reader.bi_->Tell()),
        tag_(reader.tag_),
        version_(reader.version_),
        id_(reader.id_),
        depth_(reader.end_.count()),
        good_(std::exchange(reader.good_, true)) {}
  ~Peek() {
    while (reader_.end_.count() > depth_) reader_.end_.pop();
    reader_.tag_ = tag_;
    reader_.version_ = version_;
    reader_.id_ = id_;
    reader_.good_ = good_;
    reader_.bi_->Seek(start_, true);
  }
  Peek(const Peek&) = delete;
  Peek& operator=(const Peek&) = delete;

 private:
  OroElementReader& reader_;
  const int64_t start_;
  const int32_t tag_;
  const int32_t version_;
  const std::optional<GUID> id_;
  const int32_t depth_;
  const bool good_;
};

// Opening and closing.

bool OroElementReader::prepare(const OroPath& path) {
  if (bi_ != nullptr) {
    kelAssertFail("!bi_", readerSource, __LINE__);
    Close();
  }
  return platform::pathAllows(path.toOsPath().wideText(), platform::accessRead);
}

bool OroElementReader::start(BinInput* input) {
  if (input == nullptr || !input->IsGood()) {
    delete input;
    return false;
  }
  bi_ = input;
  owned_ = true;
  good_ = true;
  BeginElement();
  constexpr int32_t newestVersion = 1;
  good_ = good_ && tag_ == orofiletags::kRoot && version_ <= newestVersion;
  return true;
}

void OroElementReader::Close() {
  if (owned_) delete bi_;
  bi_ = nullptr;
  owned_ = false;
  end_.setCount(0);
  nesting_.closeAll();
}

void OroElementReader::SetFileVersion(int32_t version) {
  if (!hasInput()) return;
  if (version == 0) {
    bi_->SetWordWidth32();
  } else {
    bi_->SetWordWidth64();
  }
}

// Nothing is touched without an input.
bool OroElementReader::hasInput() {
  if (bi_ != nullptr) return true;
  kelAssertFail("bi_", readerSource, __LINE__);
  good_ = false;
  return false;
}

bool OroElementReader::IsGood() { return good_ && (bi_ == nullptr || bi_->IsGood()); }

// Elements.

uint64_t OroElementReader::readSize(bool wide) {
  if (wide) {
    uint64_t size = 0;
    bi_->Read(&size, 1);
    return size;
  }
  uint32_t size = 0;
  bi_->Read(&size, 1);
  return size;
}

// The end is compared with the end of the file alone, not with the parent's: the parent's end is
// where the reading goes on in any case.
bool OroElementReader::BeginElement() {
  if (!hasInput()) return false;
  const int64_t start = bi_->Tell();
  uint32_t header = 0;
  bi_->Read(&header, 1);
  tag_ = static_cast<int32_t>(header >> 8);
  version_ = static_cast<int32_t>(header & 0xFF);
  const bool isRoot = tag_ == orofiletags::kRoot;
  if (isRoot) SetFileVersion(version_);
  const bool wide = bi_->GetWordWidth() == 64;
  const uint64_t size = readSize(wide);
  const auto fileSize = static_cast<uint64_t>(bi_->GetSize());
  const auto begin = static_cast<uint64_t>(start);
  const uint64_t end = begin + (isRoot && size == 0 ? fileSize : size);
  const uint64_t bodyBegin = begin + (wide ? 12 : 8);
  if (start < 0 || !bi_->IsGood() || end < bodyBegin || end > fileSize) {
    bi_->Seek(start, true);
    good_ = false;
    return false;
  }
  if (tag_ == orofiletags::kObject) {
    GUID id;
    if (readIdFields(id)) id_ = id;
  }
  end_.add(static_cast<int64_t>(end));
  return true;
}

bool OroElementReader::MatchTag(int32_t tag, int32_t& version) {
  const int32_t next = PeekTag();
  if (next < 0 || next != tag || !BeginElement()) return false;
  version = version_;
  return true;
}

bool OroElementReader::EndElement() {
  if (end_.isEmpty()) {
    if (good_) kelAssertFail("end_.size() > 0 || !good_", readerSource, __LINE__);
    return good_;
  }
  if (good_) bi_->Seek(end_.last(), true);
  end_.pop();
  good_ = good_ && bi_->IsGood();
  return good_;
}

bool OroElementReader::AtElementEnd() {
  if (!IsGood() || end_.isEmpty()) return true;
  return RemainingBytes() == 0;
}

int64_t OroElementReader::RemainingBytes() {
  if (end_.isEmpty()) return 0;
  return std::max<int64_t>(end_.last() - bi_->Tell(), 0);
}

int32_t OroElementReader::PeekTag() {
  if (!hasInput()) return -1;
  const int64_t start = bi_->Tell();
  if (!end_.isEmpty() && start >= end_.last()) return -1;
  uint32_t header = 0;
  const bool read = bi_->Read(&header, 1);
  bi_->Seek(start, true);
  return read ? static_cast<int32_t>(header >> 8) : -1;
}

// Objects.

const GUID* OroElementReader::PeekId() {
  peekedId_.reset();
  if (PeekTag() != orofiletags::kObject) return nullptr;
  const Peek peek(*this);
  if (BeginElement() && good_) peekedId_ = id_;
  return peekedId_.has_value() ? &*peekedId_ : nullptr;
}

bool OroElementReader::BeginObject(const GUID& id, int32_t& version) {
  if (!BeginElement()) return false;
  nesting_.open();
  version = version_;
  if (tag_ != orofiletags::kObject || id_ != id) good_ = false;
  return good_;
}

bool OroElementReader::MatchObject(const GUID& id, int32_t& version) {
  const GUID* const next = PeekId();
  if (next == nullptr || !(*next == id) || !BeginElement()) return false;
  nesting_.open();
  version = version_;
  return true;
}

bool OroElementReader::EndObject() {
  if (!end_.isEmpty()) nesting_.close();
  return EndElement();
}

// The element of the text stands in front of what the object holds.
bool OroElementReader::readStringId(KelCString& text) {
  if (tag_ != orofiletags::kStringObject) return false;
  return ReadText(text);
}

const KelCString* OroElementReader::PeekString() {
  if (PeekTag() != orofiletags::kStringObject) return nullptr;
  const Peek peek(*this);
  return BeginElement() && readStringId(peekedString_) ? &peekedString_ : nullptr;
}

bool OroElementReader::BeginStringObject(const KelCString& id) {
  if (!BeginElement()) return false;
  nesting_.open();
  KelCString text;
  if (!readStringId(text) || text != id.c_str()) good_ = false;
  return good_;
}

bool OroElementReader::ReadObject(IOroDataModelReadable& object) {
  if (!hasInput()) return false;
  const bool read = object.Read(*bi_);
  good_ = good_ && read;
  return good_;
}

bool OroElementReader::ReadObjectFrom(IOroDataModelReadable& object, IOroDataModelReader& reader) {
  if (!hasInput()) return false;
  const bool read = object.ReadFrom(reader);
  good_ = good_ && read;
  return good_;
}

// Values. What does not come whole leaves its place as it was and makes the reader bad.

template <class T>
bool OroElementReader::readValues(T* values, int count) {
  constexpr int most = 16;
  T read[most];
  if (!bi_->Read(read, count)) {
    good_ = false;
    return false;
  }
  std::copy_n(read, count, values);
  return true;
}

template <class T>
bool OroElementReader::readScalar(T& value) {
  if (hasInput()) readValues(&value, 1);
  return good_;
}

// An element of another tag makes the reader bad, but is read all the same.
template <class Body>
bool OroElementReader::readElement(int32_t tag, const Body& body) {
  if (!BeginElement()) return false;
  if (tag_ != tag) good_ = false;
  body();
  return EndElement();
}

bool OroElementReader::readIdFields(GUID& id) {
  GUID read;
  const bool whole = readValues(&read.data1, 1) && readValues(&read.data2, 1) &&
                     readValues(&read.data3, 1) && readValues(read.data4, 8);
  if (whole) id = read;
  return whole;
}

bool OroElementReader::ReadId(GUID& id) {
  return readElement(orofiletags::kId, [&] { readIdFields(id); });
}

bool OroElementReader::ReadFloatPair(float* value) {
  return readElement(orofiletags::kFloatPair, [&] { readValues(value, 2); });
}

bool OroElementReader::ReadDoublePair(double* value) {
  return readElement(orofiletags::kDoublePair, [&] { readValues(value, 2); });
}

bool OroElementReader::ReadMatrix(double* value) {
  return readElement(orofiletags::kMatrix, [&] { readValues(value, 16); });
}

bool OroElementReader::ReadPoint(double* value) {
  return readElement(orofiletags::kPoint, [&] { readValues(value, 3); });
}

bool OroElementReader::ReadOroString(OroString& text) {
  return readElement(orofiletags::kOroString, [&] {
    if (IsGood() && !text.read(*bi_, RemainingBytes())) good_ = false;
  });
}

bool OroElementReader::ReadText(KelCString& text) {
  return readElement(orofiletags::kText, [&] {
    if (IsGood() && !readTextBody(text)) good_ = false;
  });
}

bool OroElementReader::readTextBody(KelCString& text) {
  const int64_t length = RemainingBytes();
  if (length > longestText) return false;
  char* bytes = nullptr;
  kelMalloc(bytes, 1, static_cast<int32_t>(length) + 1);
  bytes[length] = '\0';
  const bool read = bi_->ReadBytes(bytes, length);
  if (read) text = KelCString(bytes);
  kelFree(bytes);
  return read;
}

bool OroElementReader::ReadDouble(double& value) { return readScalar(value); }
bool OroElementReader::ReadFloat(float& value) { return readScalar(value); }
bool OroElementReader::ReadUInt32(uint32_t& value) { return readScalar(value); }
bool OroElementReader::ReadInt32(int32_t& value) { return readScalar(value); }
bool OroElementReader::ReadInt8(int8_t& value) { return readScalar(value); }
bool OroElementReader::ReadUInt8(uint8_t& value) { return readScalar(value); }
