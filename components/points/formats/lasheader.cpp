#include "components/points/formats/lasheader.h"

#include <bit>
#include <cmath>
#include <cstring>

#include "components/points/formats/pointtexts.h"

static_assert(std::endian::native == std::endian::little, "numbers are taken as they stand");

namespace {

constexpr int kMostPointFormat = 8;
constexpr int kCompressed = 0xC0;  // bits of the point format that compressors set
constexpr int kSmallestRecords[] = {20, 28, 26, 34, 57, 63, 30, 36, 38};
constexpr int kColorOffsets[] = {-1, -1, 20, 28, -1, 28, -1, 30, 30};

// Places in the header, in bytes.
constexpr size_t kMajorVersion = 24;
constexpr size_t kMinorVersion = 25;
constexpr size_t kSoftware = 58;
constexpr size_t kHeaderSize = 94;
constexpr size_t kPointOffset = 96;
constexpr size_t kFurtherRecords = 100;
constexpr size_t kPointFormat = 104;
constexpr size_t kRecordSize = 105;
constexpr size_t kCount = 107;
constexpr size_t kCountByReturn = 111;
constexpr size_t kScale = 131;
constexpr size_t kOffset = 155;
constexpr size_t kBounds = 179;  // for each axis the maximum, then the minimum
constexpr size_t kLateRecords = 243;
constexpr size_t kCountOf14 = 247;

template <class T>
T load(const char* bytes, size_t at) {
  T value;
  std::memcpy(&value, bytes + at, sizeof value);
  return value;
}

template <class T>
void store(std::string& bytes, size_t at, T value) {
  std::memcpy(&bytes[at], &value, sizeof value);
}

}  // namespace

bool LasHeader::needs14(const char* bytes) {
  return load<uint8_t>(bytes, kMinorVersion) >= 4 && load<uint16_t>(bytes, kHeaderSize) >= kOf14;
}

const char* LasHeader::take(const char* bytes, std::string& argument, int64_t& place) {
  auto bad = [&](size_t at, const char* problem, const std::string& what = std::string()) {
    place = static_cast<int64_t>(at);
    argument = what;
    return problem;
  };
  if (std::memcmp(bytes, "LASF", 4) != 0) return bad(0, pointtexts::kLasNone);
  minorVersion = load<uint8_t>(bytes, kMinorVersion);
  const int majorVersion = load<uint8_t>(bytes, kMajorVersion);
  if (majorVersion != 1 || minorVersion > 4) {
    return bad(kMajorVersion, pointtexts::kLasVersion,
               std::to_string(majorVersion) + "." + std::to_string(minorVersion));
  }
  headerSize = load<uint16_t>(bytes, kHeaderSize);
  constexpr size_t kSizes[] = {kSmallest, kSmallest, kSmallest, 235, kOf14};
  if (headerSize < static_cast<int>(kSizes[minorVersion])) {
    return bad(kHeaderSize, pointtexts::kLasHeaderSize);
  }
  pointFormat = load<uint8_t>(bytes, kPointFormat);
  if ((pointFormat & kCompressed) != 0) return bad(kPointFormat, pointtexts::kLasCompressed);
  if (pointFormat > kMostPointFormat) {
    return bad(kPointFormat, pointtexts::kLasForm, std::to_string(pointFormat));
  }
  pointOffset = load<uint32_t>(bytes, kPointOffset);
  if (pointOffset < static_cast<uint32_t>(headerSize)) {
    return bad(kPointOffset, pointtexts::kLasOffset);
  }
  furtherRecords = load<uint32_t>(bytes, kFurtherRecords);
  recordSize = load<uint16_t>(bytes, kRecordSize);
  if (recordSize < smallestRecord(pointFormat)) return bad(kRecordSize, pointtexts::kLasRecordSize);
  count = load<uint32_t>(bytes, kCount);
  if (minorVersion >= 4) {
    lateRecords = load<uint32_t>(bytes, kLateRecords);
    const auto wide = load<uint64_t>(bytes, kCountOf14);
    if (wide != 0) count = wide;
  }
  for (size_t axis = 0; axis < 3; ++axis) {
    grid.scale[axis] = load<double>(bytes, kScale + 8 * axis);
    grid.offset[axis] = load<double>(bytes, kOffset + 8 * axis);
    const bool good = std::isfinite(grid.scale[axis]) && grid.scale[axis] != 0 &&
                      std::isfinite(grid.offset[axis]);
    if (!good) return bad(kScale + 8 * axis, pointtexts::kLasGrid);
    maximum[axis] = load<double>(bytes, kBounds + 16 * axis);
    minimum[axis] = load<double>(bytes, kBounds + 16 * axis + 8);
  }
  return nullptr;
}

std::string LasHeader::bytes12() const {
  std::string bytes(kSmallest, '\0');
  bytes.replace(0, 4, "LASF");
  store<uint8_t>(bytes, kMajorVersion, 1);
  store<uint8_t>(bytes, kMinorVersion, 2);
  bytes.replace(kSoftware, 4, "cowl");
  store<uint16_t>(bytes, kHeaderSize, kSmallest);
  store<uint32_t>(bytes, kPointOffset, pointOffset);
  store<uint8_t>(bytes, kPointFormat, static_cast<uint8_t>(pointFormat));
  store<uint16_t>(bytes, kRecordSize, static_cast<uint16_t>(recordSize));
  store<uint32_t>(bytes, kCount, static_cast<uint32_t>(count));
  store<uint32_t>(bytes, kCountByReturn, static_cast<uint32_t>(count));
  for (size_t axis = 0; axis < 3; ++axis) {
    store(bytes, kScale + 8 * axis, grid.scale[axis]);
    store(bytes, kOffset + 8 * axis, grid.offset[axis]);
    store(bytes, kBounds + 16 * axis, maximum[axis]);
    store(bytes, kBounds + 16 * axis + 8, minimum[axis]);
  }
  return bytes;
}

int LasHeader::smallestRecord(int pointFormat) { return kSmallestRecords[pointFormat]; }

int LasHeader::colorOffset(int pointFormat) { return kColorOffsets[pointFormat]; }
