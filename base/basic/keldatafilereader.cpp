#include "base/basic/keldatafilereader.h"

#include <cstddef>
#include <string>

#include "interfaces/IKelDataBlob.h"
#include "interfaces/IKelDataFloat.h"
#include "interfaces/IKelDataInt.h"
#include "interfaces/IKelDataItem.h"
#include "interfaces/IKelDataOroString.h"
#include "interfaces/IKelDataString.h"
#include "orobasictypes/rawfile.h"

template <class Item, class... Values>
bool KelDataFileReader::store(Item* item, const Values&... values) {
  if (notify_) {
    item->Update(values..., nullptr, false);
  } else {
    item->Set(values...);
  }
  return true;
}

// The length in front of a value, if it is one.
bool KelDataFileReader::readLength(int64_t most, int64_t& length) {
  int16_t field = 0;
  if (!oroRead(stream(), &field) || field < 0 || field > most) return false;
  length = field;
  return true;
}

// To read nothing is a failure; kept, so that an empty value leaves its item alone as ever.
bool KelDataFileReader::readBytes(char* to, int64_t count) {
  return count > 0 && std::fread(to, static_cast<size_t>(count), 1, stream()) == 1;
}

template <class Item, class Value>
bool KelDataFileReader::visitNumber(Item* item) {
  auto* const any = oroQuery<IKelDataItem>(item);
  if (!Participates(any)) return true;
  Value value = 0;
  return findRecord(any->GetPath(), sizeof value) && oroRead(stream(), &value) &&
         store(item, value);
}

bool KelDataFileReader::VisitInt(IKelDataInt* item) {
  return visitNumber<IKelDataInt, int32_t>(item);
}

bool KelDataFileReader::VisitFloat(IKelDataFloat* item) {
  return visitNumber<IKelDataFloat, double>(item);
}

bool KelDataFileReader::VisitString(IKelDataString* item) {
  auto* const any = oroQuery<IKelDataItem>(item);
  if (!Participates(any)) return true;
  const int64_t capacity = item->GetCapacity();
  int64_t length = 0;
  if (!findRecord(any->GetPath(), capacity + 1) || !readLength(capacity, length)) return false;
  std::string text(static_cast<size_t>(length), '\0');
  return readBytes(text.data(), length) && store(item, text.c_str());
}

bool KelDataFileReader::VisitOroString(IKelDataOroString* item) {
  auto* const any = oroQuery<IKelDataItem>(item);
  if (!Participates(any)) return true;
  const int64_t most = int64_t{item->GetCapacity()} * 2;
  int64_t bytes = 0;
  if (!findRecord(any->GetPath(), most + 2) || !readLength(most, bytes)) return false;
  std::u16string text;
  for (int64_t i = 0; i < bytes / 2; ++i) {
    uint16_t unit = 0;
    if (!oroRead(stream(), &unit)) return false;
    if (unit == 0) break;
    text += static_cast<char16_t>(unit);
  }
  return store(item, OroString(text.c_str()));
}

bool KelDataFileReader::VisitBlob(IKelDataBlob* item) {
  auto* const any = oroQuery<IKelDataItem>(item);
  if (!Participates(any)) return true;
  int64_t size = 0;
  if (!findRecord(any->GetPath(), kBlobArea) || !readLength(INT16_MAX, size)) return false;
  std::string data(static_cast<size_t>(size), '\0');
  return readBytes(data.data(), size) &&
         store(item, static_cast<const void*>(data.data()), static_cast<int32_t>(size));
}
