#include "services/logfilelistener.h"

#include <string>

#include "orobasictypes/oroofstream.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orostring.h"

LogfileListener::LogfileListener() = default;

LogfileListener::~LogfileListener() = default;

void LogfileListener::setLogFile(const OroPath& path) {
  if (opened_) return;
  opened_ = true;
  stream_ =
      std::make_unique<OroOfstream>(path.toOsPath(), OroOpenMode::out | OroOpenMode::truncate);
}

// A line is written at once, so that it is in the file whatever happens next.
void LogfileListener::onError(const OroString& text, const int32_t*, const KelCString&) {
  if (stream_ == nullptr || !stream_->is_open()) return;
  *stream_ << std::string(text.toNarrow()) + '\n' << std::flush;
}
