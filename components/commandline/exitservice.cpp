#include "components/commandline/exitservice.h"

#include <cstdio>
#include <cstdlib>

void ExitService::exit(int32_t status) {
  std::fflush(nullptr);
  std::exit(status);
}
