// The commands that choose points: those that stay, and those that are selected.
#pragma once

class PointCommandRun;

namespace pointcommands {

bool crop(PointCommandRun& run);
bool deduplicate(PointCommandRun& run);
bool select(PointCommandRun& run);
bool thin(PointCommandRun& run);
bool voxelThin(PointCommandRun& run);

}  // namespace pointcommands
