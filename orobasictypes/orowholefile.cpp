#include "orobasictypes/orowholefile.h"

#include "orobasictypes/oropath.h"
#include "platform/files.h"
#include "platform/filestream.h"
#include "platform/systemerror.h"

bool OroWholeFile::open(const OroPath& target) {
  discard();
  failed_ = false;
  reason_ = OroString();
  target_ = target.wideText();
  if (target_.empty()) return false;
  // A directory is among them: the system refuses it and says why.
  straight_ = platform::pathExists(target_) && !platform::isFile(target_);
  if (!straight_) target_ = platform::followLinks(target_);
  temporary_ = straight_ ? target_ : platform::temporaryNameBeside(target_);
  platform::clearSystemError();
  stream_ = platform::openFile(temporary_, "wb");
  if (stream_ == nullptr) return fail();
  std::setvbuf(stream_, nullptr, _IONBF, 0);  // callers write in blocks of their own
  if (straight_ || platform::prepareSuccessor(stream_, target_)) return true;
  fail();
  discard();
  return false;
}

bool OroWholeFile::write(const char* bytes, size_t size) {
  if (stream_ == nullptr || failed_) return false;
  platform::clearSystemError();
  return platform::writeBlock(stream_, bytes, size) == size || fail();
}

bool OroWholeFile::commit() {
  if (stream_ == nullptr) return false;
  platform::clearSystemError();
  if (!failed_ && !straight_ && !platform::flushToDisk(stream_)) fail();
  if (std::fclose(stream_) != 0) fail();
  stream_ = nullptr;
  if (straight_) return !failed_;
  if (!failed_ && !platform::renameFile(temporary_, target_)) fail();
  if (failed_) platform::removeFile(temporary_);
  return !failed_;
}

void OroWholeFile::discard() {
  if (stream_ == nullptr) return;
  std::fclose(stream_);
  stream_ = nullptr;
  if (!straight_) platform::removeFile(temporary_);
}

// Always false.
bool OroWholeFile::fail() {
  if (!failed_) reason_ = OroString(platform::systemErrorText().c_str());
  failed_ = true;
  return false;
}
