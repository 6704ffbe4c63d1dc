#include "components/points/formats/pointtextwriter.h"

#include <string>

#include "components/points/formats/pointlinetext.h"

bool PointTextWriter::write(PointSource& source, PointOutputBuffer& out) {
  const Totals all = totals(source);
  noteJoined(source);
  if (kind_ == PointTextKind::pts) out.put(std::to_string(all.count) + "\n");
  if (kind_ == PointTextKind::csv) out.put(all.hasColors ? "x,y,z,red,green,blue\n" : "x,y,z\n");
  const char separator = kind_ == PointTextKind::csv ? ',' : ' ';
  return eachBlock(source, all.hasColors,
                   [&](size_t cloud, const double* xyz, const PointColor* rgb, size_t count) {
                     PointLineText(decimalsOf(source, cloud, options_), separator,
                                   PointLineText::Colors::channels)
                         .put(out, xyz, rgb, count);
                     source.wrote(count);
                     return out.good();
                   }) &&
         out.flush();
}
