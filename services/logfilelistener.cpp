#include "services/logfilelistener.h"

#include <string>

#include "orobasictypes/oropath.h"
#include "orobasictypes/orostring.h"
#include "platform/files.h"
#include "platform/streams.h"

LogfileListener::~LogfileListener() {
  if (stream_ != nullptr) std::fclose(stream_);
}

void LogfileListener::setLogFile(const OroPath& path) {
  if (opened_) return;
  opened_ = true;
  stream_ = platform::openFile(path.toOsPath().wideText(), "w");
}

void LogfileListener::onError(const OroString& text, const int32_t*, const KelCString&) {
  if (stream_ == nullptr) return;
  platform::writeStream(stream_, std::string(text.toNarrow()) + '\n');
}
