#include "components/points/commands/pointhash.h"

#include <random>

PointHash::PointHash() {
  std::random_device source;
  seed_ = uint64_t{source()} << 32 | source();
}
