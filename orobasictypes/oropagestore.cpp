#include "orobasictypes/oropagestore.h"

#include <algorithm>

#include "orobasictypes/orofile.h"
#include "orobasictypes/oropath.h"
#include "platform/memoryfigures.h"

namespace {

size_t roundUp(size_t bytes) {
  return (bytes + OroPageStore::unit - 1) / OroPageStore::unit * OroPageStore::unit;
}

// The name is made here and not when the file is: by then memory may be short.
std::u16string pathIn(std::u16string_view folder) {
  OroPath path;
  oroMakeTempName(path);
  if (!folder.empty()) {
    path = OroPath(OroPath(OroString(std::u16string(folder).c_str())), path.fileName());
  }
  return path.wideText();
}

}  // namespace

OroPageStore::OroPageStore(std::u16string_view folder) : path_(pathIn(folder)) {}

bool OroPageStore::takeCore(size_t bytes, OroPageArea& area) {
  const size_t rounded = roundUp(bytes);
  void* const pages = platform::takePages(rounded);
  if (pages != nullptr) area = {static_cast<char*>(pages), rounded, false, 0};
  return pages != nullptr;
}

bool OroPageStore::takeFile(size_t bytes, OroPageArea& area) {
  const size_t rounded = roundUp(bytes);
  unused_.reserve(unused_.size() + fileAreas_ + 1);  // so that giving back takes no memory
  if (!file_.isOpen() && !file_.open(path_)) return false;
  int64_t offset = 0;
  if (!takeExtent(rounded, offset)) return false;
  void* const pages = file_.map(offset, rounded);
  if (pages == nullptr) {
    unused_.push_back({offset, rounded});
    return false;
  }
  ++fileAreas_;
  area = {static_cast<char*>(pages), rounded, true, offset};
  return true;
}

// Areas are nearly all of one size, so the first that fits fits exactly.
bool OroPageStore::takeExtent(size_t bytes, int64_t& offset) {
  const auto fits = [bytes](const Extent& extent) { return extent.bytes == bytes; };
  const auto found = std::find_if(unused_.rbegin(), unused_.rend(), fits);
  if (found != unused_.rend()) {
    offset = found->offset;
    *found = unused_.back();
    unused_.pop_back();
    return true;
  }
  if (!file_.grow(fileSize_ + static_cast<int64_t>(bytes))) return false;
  offset = fileSize_;
  fileSize_ += static_cast<int64_t>(bytes);
  return true;
}

void OroPageStore::give(const OroPageArea& area) {
  if (!area.inFile) {
    platform::givePages(area.pages, area.bytes);
    return;
  }
  file_.unmap(area.pages, area.bytes, false);
  --fileAreas_;
  // A part that cannot be made zero is not used again.
  if (file_.discard(area.offset, area.bytes)) unused_.push_back({area.offset, area.bytes});
}

void OroPageStore::retire(const OroPageArea& area) {
  file_.unmap(area.pages, area.bytes, true);
  --fileAreas_;
}

size_t OroPageStore::pageOut(const OroPageArea& area) {
  if (area.inFile) return file_.pageOut(area.pages, area.offset, area.bytes);
  if (!corePagesOut_) return 0;
  const size_t gone = platform::pageOut(area.pages, area.bytes);
  corePagesOut_ = gone > 0 || platform::residentBytes(area.pages, area.bytes) == 0;
  return gone;
}

void OroPageStore::closeFile() {
  file_.close();
  unused_.clear();
  fileSize_ = 0;
}

uint64_t oroMemoryAllowance() { return platform::memoryAllowance(); }
