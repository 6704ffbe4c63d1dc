#include "orobasictypes/orowholefile.h"

#include "orobasictypes/oropath.h"
#include "platform/files.h"
#include "platform/filestream.h"

bool OroWholeFile::open(const OroPath& target) {
  discard();
  failed_ = false;
  target_ = target.wideText();
  if (target_.empty() || platform::isDirectory(target_)) return false;
  straight_ = platform::pathExists(target_) && !platform::isFile(target_);
  temporary_ = straight_ ? target_ : platform::temporaryNameBeside(target_);
  stream_ = platform::openFile(temporary_, "wb");
  if (stream_ == nullptr) return false;
  std::setvbuf(stream_, nullptr, _IONBF, 0);  // callers write in blocks of their own
  return true;
}

bool OroWholeFile::write(const char* bytes, size_t size) {
  if (stream_ == nullptr || failed_) return false;
  if (platform::writeBlock(stream_, bytes, size) != size) failed_ = true;
  return !failed_;
}

bool OroWholeFile::commit() {
  if (stream_ == nullptr) return false;
  if (!failed_ && !straight_ && !platform::flushToDisk(stream_)) failed_ = true;
  if (std::fclose(stream_) != 0) failed_ = true;
  stream_ = nullptr;
  if (straight_) return !failed_;
  const bool done = !failed_ && platform::renameFile(temporary_, target_);
  if (!done) platform::removeFile(temporary_);
  return done;
}

void OroWholeFile::discard() {
  if (stream_ == nullptr) return;
  std::fclose(stream_);
  stream_ = nullptr;
  if (!straight_) platform::removeFile(temporary_);
}
