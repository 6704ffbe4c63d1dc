#include "base/basic/keldatafile.h"

#include <cstring>
#include <string_view>

#include "interfaces/IKelDataItem.h"
#include "interfaces/IOroDirService.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/rawfile.h"
#include "orobasictypes/sptr.h"
#include "platform/files.h"
#include "platform/filestream.h"

namespace {

constexpr int32_t kLongestName = 255;     // bytes that a search reads
constexpr int64_t kLengthFieldBytes = 4;  // record size and name length

OroString defaultPath() {
  const SPtr<IOroDirService> directories;
  return directories ? OroPath(directories->getDir("options"), "user.dat") : OroString();
}

}  // namespace

KelDataFile::~KelDataFile() {
  if (stream_ != nullptr) std::fclose(stream_);
}

bool KelDataFile::Begin() {
  if (stream_ != nullptr) std::fclose(stream_);
  newFile_ = false;
  if (path_.isEmpty()) path_ = defaultPath();
  stream_ = platform::openFile(path_.wideText(), GetMode() == kReading ? "rb" : "rb+");
  if (stream_ == nullptr && GetMode() != kReading) {
    stream_ = platform::openFile(path_.wideText(), "ab+");
    newFile_ = true;
  }
  if (stream_ != nullptr) platform::seekStream(stream_, 0, platform::SeekFrom::start);
  return stream_ != nullptr;
}

bool KelDataFile::End() {
  if (stream_ == nullptr) return false;
  platform::seekStream(stream_, 0, platform::SeekFrom::end);
  std::fclose(stream_);
  stream_ = nullptr;
  return true;
}

bool KelDataFile::Participates(IKelDataItem* item) {
  if ((item->GetFlags() & IKelDataItem::kPersistent) == 0) return false;
  return GetFilter() == nullptr || GetFilter()->Accept(item);
}

bool KelDataFile::findRecord(const char* name, int64_t required) {
  if (stream_ == nullptr || newFile_) return false;
  if (!platform::seekStream(stream_, 0, platform::SeekFrom::start)) return false;
  return findAmongRecords(name, static_cast<int64_t>(std::strlen(name)), required);
}

// Ends at lengths that no record has, since no other record could be found behind them. A record
// that is shorter than its own name is passed over by what it says: the search still advances.
bool KelDataFile::findAmongRecords(const char* name, int64_t nameLength, int64_t required) {
  int16_t recordSize = 0;
  int16_t length = 0;
  char other[kLongestName];
  while (oroRead(stream_, &recordSize) && oroRead(stream_, &length)) {
    if (recordSize <= 0 || length < 0 || length > kLongestName) return false;
    const auto otherLength = static_cast<size_t>(length);
    if (std::fread(other, 1, otherLength, stream_) != otherLength) return false;
    const int64_t area = recordSize - length - kLengthFieldBytes;
    if (length == nameLength && std::memcmp(other, name, otherLength) == 0) return area >= required;
    if (!platform::seekStream(stream_, area, platform::SeekFrom::current)) return false;
  }
  return false;
}
