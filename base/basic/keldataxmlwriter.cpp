#include "base/basic/keldataxmlwriter.h"

#include <charconv>

#include "base/basic/kelbase64.h"
#include "base/basic/keldataxmltypes.h"
#include "base/basic/kelxmlescape.h"
#include "interfaces/IKelDataBlob.h"
#include "interfaces/IKelDataFloat.h"
#include "interfaces/IKelDataInt.h"
#include "interfaces/IKelDataItem.h"
#include "interfaces/IKelDataOroString.h"
#include "interfaces/IKelDataString.h"

namespace {

constexpr int32_t kFirstSegments = 20;
constexpr int kFloatDigits = 15;  // behind the point

OroString floatText(double value) {
  char digits[64];
  const auto end = std::to_chars(digits, digits + sizeof digits, value,
                                 std::chars_format::scientific, kFloatDigits);
  return OroString(digits, static_cast<int>(end.ptr - digits));
}

OroString blobText(const IKelDataBlob& blob, int32_t depth) {
  const std::string text = kelBase64Encode(blob.Get(), static_cast<size_t>(blob.GetSize()));
  return OroString(kelBase64Indent(text, static_cast<size_t>(depth)).c_str());
}

}  // namespace

KelDataXMLWriter::KelDataXMLWriter()
    : KelDataXMLFile(kWriting, OroString(), OroString(), false, true), segments_(kFirstSegments) {}

KelDataXMLWriter::KelDataXMLWriter(const OroString& path)
    : KelDataXMLFile(kWriting, OroString(), path, true, false), segments_(kFirstSegments) {}

bool KelDataXMLWriter::Begin() {
  const OroPath& document = writePath();
  if (document.isEmpty()) return true;
  const OroPath path = journalPath(document);
  if (journal_.open(path)) return true;
  path.parent().makeDirectory(false);
  return journal_.open(path);
}

bool KelDataXMLWriter::End() {
  journal_.close();
  return true;
}

template <class Item, class Format>
bool KelDataXMLWriter::visit(Item* typed, const OroString& type, const Format& format) {
  auto* const item = oroQuery<IKelDataItem>(typed);
  if (item == nullptr || !takesPart(*item)) return true;
  const bool always = writesAll() || (item->GetFlags() & IKelDataItem::kInitialiseAll) != 0;
  if (!always && !item->LayersDiffer(0, 1)) return true;
  WriteValue(item->GetPath(), type, format(*item));
  item->CopyLayer(0, 1);
  return true;
}

bool KelDataXMLWriter::VisitBlob(IKelDataBlob* blob) {
  return visit(blob, keldataxmltypes::blob, [&](const IKelDataItem& item) {
    splitPath(item.GetPath());
    return blobText(*blob, segments_.count());
  });
}

bool KelDataXMLWriter::VisitOroString(IKelDataOroString* wide) {
  return visit(wide, keldataxmltypes::wide, [&](const IKelDataItem&) { return wide->Get(); });
}

bool KelDataXMLWriter::VisitString(IKelDataString* narrow) {
  return visit(narrow, keldataxmltypes::narrow,
               [&](const IKelDataItem&) { return OroString(narrow->Get()); });
}

bool KelDataXMLWriter::VisitFloat(IKelDataFloat* number) {
  return visit(number, keldataxmltypes::floating,
               [&](const IKelDataItem&) { return floatText(number->Get()); });
}

bool KelDataXMLWriter::VisitInt(IKelDataInt* number) {
  return visit(number, keldataxmltypes::integer,
               [&](const IKelDataItem&) { return OroString(number->Get()); });
}

void KelDataXMLWriter::WriteValue(const char* path, const OroString& type, const OroString& text) {
  const KelDataXMLValue* const noted = values_.find(path);
  if (noted != nullptr && noted->type == type && noted->text == text) return;
  values_.put(path, type, text);
  if (writePath().isEmpty()) {
    dirty_ = true;
    return;
  }
  splitPath(path);
  if (segments_.isEmpty()) return;
  assembleLine(type, text);
  if (!journal_.isOpen() || !journal_.write(line_)) dirty_ = true;
}

// An empty segment ends the path, so that its line may name another setting. Kept, as readers of
// old journals know it.
void KelDataXMLWriter::splitPath(const char* path) {
  segments_.setCount(0);
  for (std::string_view rest = path; !rest.empty() && rest.front() != '/';) {
    const size_t slash = rest.find('/');
    segments_.add(rest.substr(0, slash));
    rest.remove_prefix(slash == rest.npos ? rest.size() : slash + 1);
  }
}

void KelDataXMLWriter::assembleLine(const OroString& type, const OroString& text) {
  line_.clear();
  for (int32_t i = 1; i < segments_.count(); ++i) {
    line_ += "<section name=\"";
    kelAppendEscaped(line_, segments_[i]);
    line_ += "\">";
  }
  line_ += "<value name=\"";
  kelAppendEscaped(line_, segments_.last());
  line_ += "\" type=\"";
  kelAppendEscaped(line_, std::u16string_view(type.wideText()));
  line_ += "\">";
  kelAppendEscaped(line_, std::u16string_view(text.wideText()));
  line_ += "</value>";
  for (int32_t i = 1; i < segments_.count(); ++i) line_ += "</section>";
  line_ += '\n';
}
