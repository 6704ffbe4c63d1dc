// OroPageStore: areas of memory that come straight from the system, or lie in a temporary file, so
// that the system can move them out of physical memory.
//
//   OroPageStore store;
//   OroPageArea area;
//   if (!store.takeCore(OroPageStore::areaSize, area)) store.takeFile(OroPageStore::areaSize,
//   area);
//
// An area keeps its address and is used without a call. For memory managers, which cut areas into
// blocks; it takes nothing from kelMalloc, so that it works when that has failed. The store owns
// the file, which is made at first need and is gone with the process, however that ends. Areas are
// to be given back before the store goes. One thread at a time; using an area is for any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/pages.h"

struct OroPageArea {
  char* pages = nullptr;
  size_t bytes = 0;
  bool inFile = false;
  int64_t offset = 0;  // in the file
};

class OroPageStore {
 public:
  // What the processor maps in one step; take this much where it makes no difference.
  static constexpr size_t areaSize = platform::largePage;
  // The least that can be taken; sizes are rounded up to it.
  static constexpr size_t unit = platform::pageUnit;

  // The folder of the file; empty for that of all temporary files.
  explicit OroPageStore(std::u16string_view folder = {});
  OroPageStore(const OroPageStore&) = delete;
  OroPageStore& operator=(const OroPageStore&) = delete;

  // An area that reads as zero. False when there is no memory, no file or no room on the disk.
  bool takeCore(size_t bytes, OroPageArea& area);
  bool takeFile(size_t bytes, OroPageArea& area);
  void give(const OroPageArea& area);
  // As give, for an area of the file whose addresses nobody else is to get: somebody may still name
  // them.
  void retire(const OroPageArea& area);

  // Moves what it can of the area out of physical memory. Bytes that went.
  size_t pageOut(const OroPageArea& area);

  // Deletes the file. Requires: nothing of it is taken.
  void closeFile();

 private:
  struct Extent {
    int64_t offset;
    size_t bytes;
  };
  bool takeExtent(size_t bytes, int64_t& offset);

  std::u16string path_;  // of the file, which is made at first need
  platform::PageFile file_;
  int64_t fileSize_ = 0;        // bytes
  std::vector<Extent> unused_;  // parts of the file that nobody has
  size_t fileAreas_ = 0;        // areas of the file that are taken
  bool corePagesOut_ = true;    // false once the system has nowhere to move private memory to
};

// What this process may have of memory at most, in bytes: all of the machine's, or less where a
// limit was set on the process. 0 when the system does not tell.
uint64_t oroMemoryAllowance();
