#include "components/points/formats/pcdwriter.h"

#include <cstring>
#include <string>

#include "components/points/formats/pointlinetext.h"

namespace {

template <class Real>
char* putRecords(char* out, const double* xyz, const PointColor* colors, size_t count) {
  for (size_t i = 0; i < count; ++i) {
    for (int axis = 0; axis < 3; ++axis, out += sizeof(Real)) {
      const auto value = static_cast<Real>(xyz[3 * i + static_cast<size_t>(axis)]);
      std::memcpy(out, &value, sizeof value);
    }
    if (colors == nullptr) continue;
    const uint8_t packed[] = {colors[i].blue, colors[i].green, colors[i].red, 0};
    std::memcpy(out, packed, sizeof packed);
    out += sizeof packed;
  }
  return out;
}

}  // namespace

bool PcdWriter::write(PointSource& source, PointOutputBuffer& out) {
  const Totals all = totals(source);
  noteJoined(source);
  const int realBytes = options_.pcdBinary ? chooseReal(source, options_.realBytes) : 8;
  if (realBytes == 0) return false;
  putHeader(out, all, realBytes);
  const auto put = realBytes == 4 ? putRecords<float> : putRecords<double>;
  const size_t recordSize = 3 * static_cast<size_t>(realBytes) + (all.hasColors ? 4 : 0);
  return eachBlock(source, all.hasColors,
                   [&](size_t cloud, const double* xyz, const PointColor* rgb, size_t count) {
                     if (options_.pcdBinary) {
                       out.take(put(out.room(count * recordSize), xyz, rgb, count));
                     } else {
                       PointLineText(decimalsOf(source, cloud, options_), ' ',
                                     PointLineText::Colors::packed)
                           .put(out, xyz, rgb, count);
                     }
                     source.wrote(count);
                     return out.good();
                   }) &&
         out.flush();
}

void PcdWriter::putHeader(PointOutputBuffer& out, const Totals& totals, int realBytes) const {
  const std::string size = std::to_string(realBytes);
  const std::string count = std::to_string(totals.count);
  const bool colors = totals.hasColors;
  out.put("# .PCD v0.7 - Point Cloud Data file format\nVERSION 0.7\n");
  out.put(colors ? "FIELDS x y z rgb\n" : "FIELDS x y z\n");
  out.put("SIZE " + size + " " + size + " " + size + (colors ? " 4\n" : "\n"));
  out.put(colors ? "TYPE F F F U\nCOUNT 1 1 1 1\n" : "TYPE F F F\nCOUNT 1 1 1\n");
  out.put("WIDTH " + count + "\nHEIGHT 1\nVIEWPOINT 0 0 0 1 0 0 0\nPOINTS " + count + "\n");
  out.put(options_.pcdBinary ? "DATA binary\n" : "DATA ascii\n");
}
