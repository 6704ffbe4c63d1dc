#include "orobasictypes/kelblockfile.h"

#include "orobasictypes/orofile.h"
#include "orobasictypes/oropath.h"
#include "platform/descriptor.h"
#include "platform/temporaryfile.h"

bool KelBlockFile::open() {
  OroPath name;
  oroMakeTempName(name);
  descriptor_ = platform::openTemporaryDescriptor(name.wideText());
  return descriptor_ >= 0;
}

bool KelBlockFile::write(const void* block, size_t bytes) {
  const char* from = static_cast<const char*>(block);
  while (bytes > 0) {
    const int64_t written = platform::writeDescriptor(descriptor_, from, bytes);
    if (written <= 0) return false;
    from += written;
    bytes -= static_cast<size_t>(written);
  }
  return true;
}

bool KelBlockFile::readBack(void* block, size_t bytes) {
  if (platform::seekDescriptor(descriptor_, 0, platform::SeekFrom::start) != 0) return false;
  char* to = static_cast<char*>(block);
  while (bytes > 0) {
    const int64_t got = platform::readDescriptor(descriptor_, to, bytes);
    if (got <= 0) return false;
    to += got;
    bytes -= static_cast<size_t>(got);
  }
  return true;
}

void KelBlockFile::close() {
  if (descriptor_ >= 0) platform::closeDescriptor(descriptor_);
  descriptor_ = -1;
}
