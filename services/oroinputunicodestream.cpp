#include "services/oroinputunicodestream.h"

#include "orobasictypes/oropath.h"
#include "services/orounicodestream.h"

OroInputUnicodeStream::OroInputUnicodeStream() : narrowFile_(oroLanguageIsNarrow()) {}

OroInputUnicodeStream::OroInputUnicodeStream(const OroPath& path)
    : narrowFile_(oroLanguageIsNarrow()),
      file_(std::make_unique<OroIfstream>(path, OroOpenMode::in | OroOpenMode::binary)) {
  if (!isOpen()) return;
  file_->seekg(0, std::ios_base::end);
  size_ = isOpen() ? static_cast<int64_t>(file_->tellg()) : 0;
  file_->seekg(0);
}

void OroInputUnicodeStream::start() {
  started_ = true;
  char mark[2] = {};
  file_->read(mark, sizeof mark);
  wideFile_ = file_->gcount() == sizeof mark && mark[0] == '\xFF' && mark[1] == '\xFE';
  if (wideFile_) return;
  narrowFile_ = true;
  file_->clear();  // of the end that a file of one byte has met
  file_->seekg(0);
}

bool OroInputUnicodeStream::readUnit(char16_t& unit) {
  using Bytes = OroIfstream::traits_type;
  const auto low = file_->rdbuf()->sbumpc();
  if (Bytes::eq_int_type(low, Bytes::eof())) return false;
  if (!wideFile_) {
    unit = static_cast<char16_t>(static_cast<signed char>(Bytes::to_char_type(low)));
    return true;
  }
  const auto high = file_->rdbuf()->sbumpc();
  if (Bytes::eq_int_type(high, Bytes::eof())) return false;  // half a unit is none
  unit = static_cast<char16_t>(low | high << 8);
  return true;
}

// True when the units end in the delimiter, which is then taken off.
bool OroInputUnicodeStream::readUnits(std::u16string& units, std::u16string_view delimiter) {
  for (char16_t unit = 0; readUnit(unit);) {
    units += unit;
    if (!delimiter.empty() && units.ends_with(delimiter)) {
      units.resize(units.size() - delimiter.size());
      return true;
    }
    if (units.size() < kMostUnits + delimiter.size()) continue;
    units.clear();
    file_->setstate(std::ios_base::badbit);
    return false;
  }
  file_->setstate(std::ios_base::eofbit | std::ios_base::failbit);
  return false;
}

bool OroInputUnicodeStream::readLine(OroString& out, const OroString& delimiter) {
  out = OroString(OroString::empty());
  if (!isOpen()) return false;
  if (!started_) start();
  OroString end(delimiter == "\n" ? OroString("\r\n") : delimiter);
  if (!wideFile_) end = OroString(end.toNarrow());
  std::u16string units;
  const bool ended = readUnits(units, end.wideText());
  if (!units.empty()) out = OroString(units.data(), static_cast<int>(units.size()));
  return ended || !units.empty();
}
