// The commands that give points other coordinates, colours or places.
#pragma once

class PointCommandRun;

namespace pointcommands {

bool merge(PointCommandRun& run);
bool rotate(PointCommandRun& run);
bool scale(PointCommandRun& run);
bool sort(PointCommandRun& run);
bool toGray(PointCommandRun& run);
bool transform(PointCommandRun& run);
bool translate(PointCommandRun& run);

}  // namespace pointcommands
