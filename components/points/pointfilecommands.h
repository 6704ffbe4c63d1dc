// The commands that read and write files.
#pragma once

class PointCommandRun;

namespace pointcommands {

bool open(PointCommandRun& run);
bool save(PointCommandRun& run);
bool snapshot(PointCommandRun& run);

}  // namespace pointcommands
