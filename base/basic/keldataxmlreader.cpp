#include "base/basic/keldataxmlreader.h"

#include <string_view>
#include <vector>

#include "base/basic/kelbase64.h"
#include "interfaces/IKelDataBlob.h"
#include "interfaces/IKelDataFloat.h"
#include "interfaces/IKelDataInt.h"
#include "interfaces/IKelDataItem.h"
#include "interfaces/IKelDataOroString.h"
#include "interfaces/IKelDataString.h"

KelDataXMLReader::KelDataXMLReader(const OroString& path, bool notify)
    : KelDataXMLFile(kReading, path, OroString(), false, true), notify_(notify) {}

const OroString* KelDataXMLReader::textOf(const IKelDataItem& item) const {
  std::string_view path = item.GetPath();
  if (path.starts_with('/')) path.remove_prefix(1);
  const KelDataXMLValue* const value = path.empty() ? nullptr : values_.find(path);
  return value == nullptr ? nullptr : &value->text;
}

template <class Item, class... Values>
void KelDataXMLReader::assign(Item& typed, IKelDataItem& item, const Values&... values) const {
  if (notify_) {
    typed.Update(values..., nullptr, false);
    return;
  }
  typed.Set(values...);
  item.CopyLayer(0, 1);
}

template <class Item, class Read>
bool KelDataXMLReader::visit(Item* typed, const Read& read) {
  auto* const item = oroQuery<IKelDataItem>(typed);
  if (item == nullptr || !takesPart(*item)) return true;
  const OroString* const text = textOf(*item);
  return text != nullptr && read(*item, *text);
}

bool KelDataXMLReader::VisitBlob(IKelDataBlob* blob) {
  visit(blob, [&](IKelDataItem& item, const OroString& text) {
    const std::vector<unsigned char> data = kelBase64Decode(text.wideText());
    const void* const bytes = data.empty() ? nullptr : data.data();
    assign(*blob, item, bytes, static_cast<int32_t>(data.size()));
    return true;
  });
  return true;
}

bool KelDataXMLReader::VisitOroString(IKelDataOroString* wide) {
  return visit(wide, [&](IKelDataItem& item, const OroString& text) {
    assign(*wide, item, text);
    return true;
  });
}

bool KelDataXMLReader::VisitString(IKelDataString* narrow) {
  return visit(narrow, [&](IKelDataItem& item, const OroString& text) {
    KelCString bytes;
    bytes.assign(text.wideText(), -1);
    if (bytes.isEmpty()) return false;
    assign(*narrow, item, bytes.c_str());
    return true;
  });
}

bool KelDataXMLReader::VisitFloat(IKelDataFloat* number) {
  return visit(number, [&](IKelDataItem& item, const OroString& text) {
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (ok) assign(*number, item, value);
    return ok;
  });
}

bool KelDataXMLReader::VisitInt(IKelDataInt* number) {
  return visit(number, [&](IKelDataItem& item, const OroString& text) {
    bool ok = false;
    const int32_t value = text.toInt(&ok);
    if (ok) assign(*number, item, value);
    return ok;
  });
}
