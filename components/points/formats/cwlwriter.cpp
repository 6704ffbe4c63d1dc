#include "components/points/formats/cwlwriter.h"

#include <bit>
#include <cstring>
#include <string>

#include "components/points/formats/cwltags.h"
#include "orobasictypes/bitvector.h"

namespace {

constexpr int64_t kHeader = 12;  // bytes of an element's tag and size
constexpr int64_t kId = 16;
constexpr int64_t kPointBytes = 3 * sizeof(double);

std::string word(uint32_t value) {
  const uint32_t bits = __builtin_bswap32(value);
  return {reinterpret_cast<const char*>(&bits), sizeof bits};
}

std::string wide(uint64_t value) {
  return word(static_cast<uint32_t>(value >> 32)) + word(static_cast<uint32_t>(value));
}

std::string number(double value) { return wide(std::bit_cast<uint64_t>(value)); }

std::string head(uint32_t tag, uint32_t version, int64_t body) {
  return word(tag << 8 | version) + wide(static_cast<uint64_t>(kHeader + body));
}

std::string element(uint32_t tag, uint32_t version, const std::string& body) {
  return head(tag, version, static_cast<int64_t>(body.size())) + body;
}

std::string cloudId() {
  const GUID& id = cwltags::kCloudId;
  std::string bytes = word(id.data1) + word(uint32_t{id.data2} << 16 | id.data3);
  bytes.append(reinterpret_cast<const char*>(id.data4), sizeof id.data4);
  return bytes;
}

std::string nameOf(const PointCloudHead& cloud) {
  std::string bytes;
  for (const char16_t* unit = cloud.name.wideText(); *unit != 0; ++unit) {
    bytes += static_cast<char>(*unit >> 8);
    bytes += static_cast<char>(*unit);
  }
  return element(cwltags::kWideText, 0, bytes);
}

// What stands in front of the colours and points.
std::string factsOf(const PointCloudHead& cloud) {
  std::string bytes = nameOf(cloud);
  bytes += element(cwltags::kForm, cwltags::kVersion, word(static_cast<uint32_t>(cloud.decimals)));
  bytes += element(cwltags::kScale, cwltags::kVersion, number(cloud.scale));
  if (cloud.grid) {
    std::string grid;
    for (const double scale : cloud.grid->scale) grid += number(scale);
    for (const double offset : cloud.grid->offset) grid += number(offset);
    bytes += element(cwltags::kGrid, cwltags::kVersion, grid);
  }
  return bytes;
}

// As a bit vector with just the room for all points writes itself.
std::string selectionOf(const BitVector& selection, int64_t points) {
  const auto words = static_cast<uint32_t>(points / 32 + 1);
  std::string listed;
  std::string dense(size_t{words} * 4, '\0');
  uint32_t set = 0;
  for (int32_t i = selection.NextSet(0); i >= 0 && i <= points; i = selection.NextSet(i)) {
    ++set;
    if (set <= words / 2) listed += word(static_cast<uint32_t>(i));
    const int bit = i & 31;
    dense[static_cast<size_t>(i >> 5) * 4 + 3 - static_cast<size_t>(bit / 8)] |=
        static_cast<char>(1 << bit % 8);
  }
  if (set == 0) return {};
  const bool sparse = words > 32 && set < words / 2;
  const std::string chunk = word(cwltags::kBitVector) + word(words) + word(words * 32 - 1) +
                            word(sparse ? 1 : 0) + word(set) + (sparse ? listed : dense);
  return element(cwltags::kSelection, cwltags::kVersion, chunk);
}

}  // namespace

bool CwlWriter::write(PointSource& source, PointOutputBuffer& out) {
  const auto clouds = source.clouds();
  std::vector<std::string> facts;
  std::vector<std::string> selections;
  std::vector<int64_t> bodies;
  const std::string document =
      element(cwltags::kDocument, cwltags::kVersion, word(static_cast<uint32_t>(clouds.size())));
  auto whole = static_cast<int64_t>(document.size());
  for (size_t i = 0; i < clouds.size(); ++i) {
    const BitVector* const selection = source.selection(i);
    const int64_t count = clouds[i].count;
    facts.push_back(factsOf(clouds[i]));
    selections.push_back(selection == nullptr ? std::string() : selectionOf(*selection, count));
    int64_t body = kId + std::ssize(facts[i]) + kHeader + 8 + kPointBytes * count;
    if (clouds[i].hasColors) body += kHeader + 8 + 4 * (count + 1);
    bodies.push_back(body + std::ssize(selections[i]));
    whole += kHeader + bodies[i];
  }
  out.put(head(cwltags::kRoot, 1, whole) + document);
  for (size_t i = 0; i < clouds.size(); ++i) {
    out.put(head(cwltags::kObject, cwltags::kVersion, bodies[i]) + cloudId() + facts[i]);
    if (clouds[i].hasColors && !writeColors(source, out, i)) return false;
    if (!writePoints(source, out, i)) return false;
    out.put(selections[i]);
  }
  return out.flush();
}

bool CwlWriter::writeColors(PointSource& source, PointOutputBuffer& out, size_t cloud) {
  const auto places = static_cast<uint32_t>(source.clouds()[cloud].count + 1);
  out.put(head(cwltags::kColors, cwltags::kVersion, 8 + int64_t{4} * places));
  out.put(word(cwltags::kHasColors | cwltags::kPackedColors) + word(places));
  out.put(word(0));  // place 0 is no point
  return eachBlockOf(source, cloud, true,
                     [&](size_t, const double*, const PointColor* colors, size_t count) {
                       char* at = out.room(4 * count);
                       for (size_t i = 0; i < count; ++i, at += 4) {
                         at[0] = '\xFF';
                         at[1] = static_cast<char>(colors[i].blue);
                         at[2] = static_cast<char>(colors[i].green);
                         at[3] = static_cast<char>(colors[i].red);
                       }
                       out.take(at);
                       return out.good();
                     });
}

bool CwlWriter::writePoints(PointSource& source, PointOutputBuffer& out, size_t cloud) {
  const int64_t points = source.clouds()[cloud].count;
  out.put(head(cwltags::kPoints, cwltags::kVersion, 8 + kPointBytes * points));
  out.put(word(cwltags::kPointArray) + word(static_cast<uint32_t>(points)));
  return eachBlockOf(source, cloud, false,
                     [&](size_t, const double* xyz, const PointColor*, size_t count) {
                       char* at = out.room(static_cast<size_t>(kPointBytes) * count);
                       for (size_t i = 0; i < 3 * count; ++i, at += sizeof(double)) {
                         const uint64_t bits = __builtin_bswap64(std::bit_cast<uint64_t>(xyz[i]));
                         std::memcpy(at, &bits, sizeof bits);
                       }
                       out.take(at);
                       source.wrote(count);
                       return out.good();
                     });
}
