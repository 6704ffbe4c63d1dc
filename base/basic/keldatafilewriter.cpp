#include "base/basic/keldatafilewriter.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "interfaces/IKelDataBlob.h"
#include "interfaces/IKelDataFloat.h"
#include "interfaces/IKelDataInt.h"
#include "interfaces/IKelDataItem.h"
#include "interfaces/IKelDataOroString.h"
#include "interfaces/IKelDataString.h"
#include "platform/filestream.h"

namespace {

// The bytes as they stand in memory, which is little-endian on both systems.
template <class Value>
std::string bytesOf(Value value) {
  static_assert(std::endian::native == std::endian::little);
  std::string bytes(sizeof value, '\0');
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}

// A length field keeps the low 16 bits of what is too long for it.
std::string lengthField(int64_t length) { return bytesOf(static_cast<uint16_t>(length)); }

bool put(std::FILE* stream, const std::string& bytes) {
  return platform::writeBlock(stream, bytes.data(), bytes.size()) == bytes.size();
}

bool putZeros(std::FILE* stream, int64_t count) {
  constexpr int64_t kBlock = 4096;
  const std::string zeros(static_cast<size_t>(std::clamp<int64_t>(count, 0, kBlock)), '\0');
  for (; count > 0; count -= kBlock) {
    const auto bytes = static_cast<size_t>(std::min(count, kBlock));
    if (platform::writeBlock(stream, zeros.data(), bytes) != bytes) return false;
  }
  return true;
}

}  // namespace

bool KelDataFileWriter::Participates(IKelDataItem* item) {
  if (!KelDataFile::Participates(item)) return false;
  return isNewFile() || (item->GetFlags() & IKelDataItem::kInitialiseAll) != 0 ||
         item->LayersDiffer(0, 1);
}

bool KelDataFileWriter::write(const IKelDataItem& item, int64_t area, const std::string& value,
                              int64_t zeros) {
  if (stream() == nullptr) return false;
  if (!findRecord(item.GetPath(), area) && !appendHeader(item.GetPath(), area)) return false;
  return turnToWriting() && put(stream(), value) && putZeros(stream(), zeros) &&
         std::fflush(stream()) == 0;
}

bool KelDataFileWriter::appendHeader(const char* name, int64_t area) {
  const auto length = static_cast<int64_t>(std::strlen(name));
  return platform::seekStream(stream(), 0, platform::SeekFrom::end) &&
         put(stream(), lengthField(length + 4 + area) + lengthField(length) + name) &&
         std::fflush(stream()) == 0;
}

// A stream that was read takes writes only after a seek.
bool KelDataFileWriter::turnToWriting() {
  const int64_t position = platform::tellStream(stream());
  return position >= 0 && std::fflush(stream()) == 0 &&
         platform::seekStream(stream(), position, platform::SeekFrom::start);
}

bool KelDataFileWriter::VisitInt(IKelDataInt* item) {
  auto* const any = oroQuery<IKelDataItem>(item);
  return !Participates(any) || write(*any, sizeof(int32_t), bytesOf(item->Get()), 0);
}

bool KelDataFileWriter::VisitFloat(IKelDataFloat* item) {
  auto* const any = oroQuery<IKelDataItem>(item);
  return !Participates(any) || write(*any, sizeof(double), bytesOf(item->Get()), 0);
}

// The field in front of a text is the room for it, not its length.
bool KelDataFileWriter::VisitString(IKelDataString* item) {
  auto* const any = oroQuery<IKelDataItem>(item);
  if (!Participates(any)) return true;
  const std::string text = item->Get();
  const int64_t capacity = item->GetCapacity();
  return write(*any, capacity + 2, lengthField(capacity) + text,
               capacity - static_cast<int64_t>(text.size()));
}

bool KelDataFileWriter::VisitOroString(IKelDataOroString* item) {
  auto* const any = oroQuery<IKelDataItem>(item);
  if (!Participates(any)) return true;
  const int64_t room = int64_t{item->GetCapacity()} * 2;
  const OroString& text = item->Get();
  const int64_t bytes = int64_t{text.length()} * 2;
  std::string value = lengthField(room);
  value.append(reinterpret_cast<const char*>(text.wideText()), static_cast<size_t>(bytes));
  return write(*any, room + 2, value, room - bytes);
}

bool KelDataFileWriter::VisitBlob(IKelDataBlob* item) {
  auto* const any = oroQuery<IKelDataItem>(item);
  if (!Participates(any)) return true;
  const int64_t size = item->GetSize();
  std::string value = lengthField(size);
  if (size > 0) value.append(static_cast<const char*>(item->Get()), static_cast<size_t>(size));
  return write(*any, kBlobArea, value, kBlobRoom - size);
}
