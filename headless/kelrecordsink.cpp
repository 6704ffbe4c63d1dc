#include "headless/kelrecordsink.h"

#include <string>

#include "orobasictypes/oropath.h"
#include "orobasictypes/orostring.h"
#include "platform/console.h"
#include "platform/files.h"
#include "platform/streams.h"
#include "platform/text.h"

void KelRecordSink::open(const OroString& setting) {
  if (setting.isEmpty()) return;
  const std::u16string_view name(setting.wideText());
  if (name == u"stdout") {
    takeStandardStream(0, stdout);
  } else if (name == u"stderr") {
    takeStandardStream(1, stderr);
  } else if (platform::namesPipe(name)) {
    pipe_.open(name);
  } else {
    stream_ = platform::openFile(OroPath(setting).wideText(), "w");
  }
  if (stream_ != nullptr) platform::setLineBuffered(stream_);
  writeText(u"<log>\n");
}

void KelRecordSink::takeStandardStream(int streamNumber, std::FILE* stream) {
  console_ = platform::attachConsole(streamNumber);
  savedAttributes_ = platform::consoleAttributes(console_);
  setColour(KelRecordColour::frame);
  stream_ = stream;
}

void KelRecordSink::write(const KelRecord& record) {
  if (pipe_.isOpen()) {
    pipe_.write(kelPipeSpelling(record));
    return;
  }
  if (stream_ == nullptr) return;
  const bool coloured = console_ != nullptr;
  std::u16string line;
  for (const KelRecordPiece& piece : kelStreamSpelling(record, coloured)) {
    if (coloured) {
      setColour(piece.colour);
      writeText(piece.text);
    } else {
      line += piece.text;
    }
  }
  if (!coloured) writeText(line);
}

void KelRecordSink::close() {
  writeText(u"</log>\n");
  leaveConsole();
  closeStream();
  pipe_.close();
}

void KelRecordSink::writeText(std::u16string_view text) {
  if (pipe_.isOpen()) {
    pipe_.write(text);
  } else if (stream_ != nullptr) {
    platform::writeStream(stream_, platform::toUtf8Lossy(text));
  }
}

// What was written before is flushed already, so the colour meets only what comes after it.
void KelRecordSink::setColour(KelRecordColour colour) {
  platform::setConsoleAttributes(console_, kelColourAttribute(colour, savedAttributes_));
}

void KelRecordSink::leaveConsole() {
  if (console_ == nullptr) return;
  setColour(KelRecordColour::restore);
  platform::freeConsole(console_);
  console_ = nullptr;
}

void KelRecordSink::closeStream() {
  if (stream_ == nullptr) return;
  std::fflush(stream_);
  if (stream_ != stderr) std::fclose(stream_);
  stream_ = nullptr;
}
