// The executable on a heap that refuses, for tests. In its current directory it finds a file "heap"
// with two numbers: the first request that is refused, from 1, and the last one. It leaves the
// count of requests in a file "requests". Its arguments are those of the executable.

#include <cstdio>
#include <cstdlib>

#include "gui/apps/main/mainfunction.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/orobaselibrary.h"

namespace {

long long firstRefused = 0;
long long lastRefused = 0;
long long requests = 0;

bool isRefused() {
  ++requests;
  return requests >= firstRefused && requests <= lastRefused;
}

void readPlan() {
  std::FILE* const file = std::fopen("heap", "r");
  if (file == nullptr) std::exit(99);
  if (std::fscanf(file, "%lld %lld", &firstRefused, &lastRefused) != 2) std::exit(99);
  std::fclose(file);
}

void writeCount() {
  std::FILE* const file = std::fopen("requests", "w");
  if (file == nullptr) return;
  std::fprintf(file, "%lld", requests);
  std::fclose(file);
}

}  // namespace

int main(int argc, char** argv) {
  readPlan();
  std::atexit(writeCount);
  kelHeapCalls.allocate = [](size_t bytes) { return isRefused() ? nullptr : std::malloc(bytes); };
  kelHeapCalls.reallocate = [](void* block, size_t bytes) {
    return isRefused() ? nullptr : std::realloc(block, bytes);
  };
  kelHelpOperatorNew();
  oroMainFunction(argc, argv);
  oroBaseLibraryEnd();
  return 1;
}
