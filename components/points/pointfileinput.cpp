#include "components/points/pointfileinput.h"

#include "components/points/pointfilework.h"

bool PointFileInput::open(const OroPath& path) {
  path_ = path;
  return file_.open(path);
}

size_t PointFileInput::read(char* buffer, size_t size) {
  const size_t got = file_.read(buffer, size);
  done_ += static_cast<int64_t>(got);
  progress_.update(done_, file_.size());
  return PointFileWork::step(done_, file_.size()) ? got : 0;
}

// A pipe has no size and cannot be read twice.
bool PointFileInput::restart() {
  if (file_.size() == 0) return false;
  done_ = 0;
  return file_.open(path_);
}
