// The commands that tell something about the points and change nothing.
#pragma once

class PointCommandRun;

namespace pointcommands {

bool bounds(PointCommandRun& run);
bool info(PointCommandRun& run);

}  // namespace pointcommands
