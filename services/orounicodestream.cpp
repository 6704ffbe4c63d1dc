#include "services/orounicodestream.h"

#include <string>

#include "orobasictypes/oropath.h"
#include "orobasictypes/orotranslate.h"

bool oroLanguageIsNarrow() {
  OroString text;
  return !(oroTranslate(text, "kel:unicode") == "yes");
}

OroUnicodeStream::OroUnicodeStream() : narrowFile_(oroLanguageIsNarrow()) {}

OroUnicodeStream::OroUnicodeStream(const OroPath& path)
    : narrowFile_(oroLanguageIsNarrow()),
      file_(std::make_unique<OroOfstream>(path, OroOpenMode::out | OroOpenMode::binary)) {}

void OroUnicodeStream::write(const OroString& text) {
  if (!isOpen()) return;
  std::string bytes;
  if (!started_ && !narrowFile_) bytes = "\xFF\xFE";
  started_ = true;
  for (const char16_t* unit = text.wideText(); *unit != 0; ++unit) {
    bytes += static_cast<char>(*unit & 0xFF);
    if (!narrowFile_) bytes += static_cast<char>(*unit >> 8);
  }
  file_->write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void OroUnicodeStream::writeLine(const OroString& text) {
  write(text);
  write(OroString("\r\n"));
}
