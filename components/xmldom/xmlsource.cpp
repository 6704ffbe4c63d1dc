#include "components/xmldom/xmlsource.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>

#include "components/xmldom/xmltext.h"
#include "orobasictypes/orofilereader.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orotranslate.h"

namespace {

constexpr const char* kNoMemory = oroKey("There is not enough memory to read the document");
constexpr const char* kTooLarge = oroKey("The document is too large");

std::unique_ptr<char[]> newBytes(size_t count) {
  return std::unique_ptr<char[]>(new (std::nothrow) char[count]);
}

}  // namespace

const char* XmlSource::readFile(const OroPath& path) {
  OroFileReader file;
  if (!file.open(path)) return oroKey("Cannot open the file %1");
  if (const char* const problem = readAll(file)) return problem;
  const std::string_view all = text();
  if (all.starts_with("\xEF\xBB\xBF")) {
    begin_ += 3;
    size_ -= 3;
  } else if (all.starts_with("\xFF\xFE") || all.starts_with("\xFE\xFF")) {
    return fromUtf16(all[0] == '\xFE');
  }
  return nullptr;
}

// The size that the system tells may be out of date, and a pipe has none.
const char* XmlSource::readAll(OroFileReader& file) {
  constexpr size_t least = 4096;
  if (file.size() > static_cast<int64_t>(kMostBytes)) return kTooLarge;
  size_t room = std::max(least, static_cast<size_t>(file.size()) + 2);  // the end needs no more
  bytes_ = newBytes(room);
  size_ = 0;
  while (bytes_ != nullptr) {
    const size_t got = file.read(bytes_.get() + size_, room - 1 - size_);
    size_ += got;
    if (got == 0 && size_ < room - 1) break;
    if (size_ < room - 1) continue;
    if (size_ >= kMostBytes) return kTooLarge;
    room = std::min(room * 2, kMostBytes + 1);
    std::unique_ptr<char[]> larger = newBytes(room);
    if (larger != nullptr) std::memcpy(larger.get(), bytes_.get(), size_);
    bytes_ = std::move(larger);
  }
  if (bytes_ == nullptr) return kNoMemory;
  if (file.failed()) return oroKey("The file %1 could not be read to its end");
  begin_ = bytes_.get();
  begin_[size_] = '\n';
  return nullptr;
}

const char* XmlSource::readText(const OroString& text) { return takeUnits(text.wideText()); }

const char* XmlSource::takeUnits(std::u16string_view units) {
  if (units.size() > kMostBytes / xmltext::kBytesPerUnit) return kTooLarge;
  std::unique_ptr<char[]> bytes = newBytes(units.size() * xmltext::kBytesPerUnit + 1);
  if (bytes == nullptr) return kNoMemory;
  char* const end = xmltext::encode(units, bytes.get());
  *end = '\n';
  bytes_ = std::move(bytes);
  begin_ = bytes_.get();
  size_ = static_cast<size_t>(end - begin_);
  return nullptr;
}

const char* XmlSource::fromUtf16(bool bigEndian) {
  constexpr char16_t replacement = u'\xFFFD';  // for the half unit of a file that was cut
  const size_t count = (size_ - 2 + 1) / 2;
  const std::unique_ptr<char16_t[]> units(new (std::nothrow) char16_t[count]);
  if (units == nullptr) return kNoMemory;
  const auto* in = reinterpret_cast<const unsigned char*>(begin_) + 2;
  for (size_t i = 0; i < count; ++i, in += 2) {
    const bool whole = 2 * i + 3 < size_;
    if (whole) {
      units[i] = static_cast<char16_t>(bigEndian ? in[0] << 8 | in[1] : in[1] << 8 | in[0]);
    } else {
      units[i] = replacement;
    }
  }
  return takeUnits({units.get(), count});
}

XmlPosition XmlSource::positionOf(size_t offset) const {
  const std::string_view before = text().substr(0, offset);
  XmlPosition position;
  position.line += static_cast<int>(std::count(before.begin(), before.end(), '\n'));
  const std::string_view line = before.substr(before.rfind('\n') + 1);  // npos + 1 is the front
  for (const char byte : line) position.column += (byte & 0xC0) != 0x80;
  return position;
}
