#include "components/points/formats/plywriter.h"

#include <bit>
#include <cstring>
#include <string>

#include "components/points/formats/pointlinetext.h"

namespace {

template <class Real, class Bits, bool Swapped>
char* putRecords(char* out, const double* xyz, const PointColor* colors, size_t count) {
  for (size_t i = 0; i < count; ++i) {
    for (int axis = 0; axis < 3; ++axis, out += sizeof(Bits)) {
      auto bits = std::bit_cast<Bits>(static_cast<Real>(xyz[3 * i + axis]));
      if constexpr (Swapped && sizeof(Bits) == 4) bits = __builtin_bswap32(bits);
      if constexpr (Swapped && sizeof(Bits) == 8) bits = __builtin_bswap64(bits);
      std::memcpy(out, &bits, sizeof bits);
    }
    if (colors == nullptr) continue;
    std::memcpy(out, &colors[i], sizeof(PointColor));
    out += sizeof(PointColor);
  }
  return out;
}

using PutRecords = char* (*)(char*, const double*, const PointColor*, size_t);

PutRecords putterFor(int realBytes, bool swapped) {
  if (realBytes == 4) {
    return swapped ? putRecords<float, uint32_t, true> : putRecords<float, uint32_t, false>;
  }
  return swapped ? putRecords<double, uint64_t, true> : putRecords<double, uint64_t, false>;
}

}  // namespace

bool PlyWriter::write(PointSource& source, PointOutputBuffer& out) {
  const Totals all = totals(source);
  noteJoined(source);
  if (options_.plyForm == PlyForm::ascii) {
    putHeader(out, all, 8);
    return writeText(source, out, all.hasColors);
  }
  const int realBytes = chooseReal(source, options_.realBytes);
  if (realBytes == 0) return false;
  putHeader(out, all, realBytes);
  return writeBinary(source, out, all.hasColors, realBytes);
}

void PlyWriter::putHeader(PointOutputBuffer& out, const Totals& totals, int realBytes) const {
  constexpr const char* kForms[] = {"ascii", "binary_little_endian", "binary_big_endian"};
  out.put("ply\nformat ");
  out.put(kForms[static_cast<int>(options_.plyForm)]);
  out.put(" 1.0\nelement vertex " + std::to_string(totals.count) + "\n");
  for (const char* axis : {"x", "y", "z"}) {
    out.put(realBytes == 4 ? "property float " : "property double ");
    out.put(axis);
    out.put("\n");
  }
  if (totals.hasColors) {
    out.put("property uchar red\nproperty uchar green\nproperty uchar blue\n");
  }
  out.put("end_header\n");
}

bool PlyWriter::writeBinary(PointSource& source, PointOutputBuffer& out, bool colors,
                            int realBytes) {
  const PutRecords put = putterFor(realBytes, options_.plyForm == PlyForm::bigEndian);
  const size_t recordSize = 3 * static_cast<size_t>(realBytes) + (colors ? sizeof(PointColor) : 0);
  return eachBlock(source, colors,
                   [&](size_t, const double* xyz, const PointColor* rgb, size_t count) {
                     out.take(put(out.room(count * recordSize), xyz, rgb, count));
                     source.wrote(count);
                     return out.good();
                   }) &&
         out.flush();
}

bool PlyWriter::writeText(PointSource& source, PointOutputBuffer& out, bool colors) {
  return eachBlock(source, colors,
                   [&](size_t cloud, const double* xyz, const PointColor* rgb, size_t count) {
                     const PointLineText lines(decimalsOf(source, cloud, options_), ' ',
                                               PointLineText::Colors::channels);
                     lines.put(out, xyz, rgb, count);
                     source.wrote(count);
                     return out.good();
                   }) &&
         out.flush();
}
