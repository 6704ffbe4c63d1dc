#include "components/commandline/exitservice.h"

#include <cstdio>
#include <cstdlib>

#include "components/commandline/commandline.h"

void ExitService::exit(int32_t status) {
  std::fflush(nullptr);
  std::exit(status != 0 ? status : CommandLine::statusOfRefusal());
}
