#include "orobasictypes/kelprocessor.h"

#include <algorithm>

#include "orobasictypes/testaccess.h"

namespace {

// On the first two of its family the processor takes bits out of a word one by one.
bool hasSlowBitExtract() {
  return __builtin_cpu_is("znver1") != 0 || __builtin_cpu_is("znver2") != 0;
}

KelProcessorLevel highestLevel() {
  __builtin_cpu_init();
  const bool isWide = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
                      __builtin_cpu_supports("popcnt");
  if (!isWide) return kKelBaseline;
  if (!__builtin_cpu_supports("bmi2") || hasSlowBitExtract()) return kKelAvx2;
  const bool isAvx512 = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                        __builtin_cpu_supports("avx512vl") &&
                        __builtin_cpu_supports("avx512vpopcntdq");
  return isAvx512 ? kKelAvx512 : kKelBmi2;
}

}  // namespace

constinit KelProcessorLevel kelProcessorLevel = kKelBaseline;

namespace {

// Before main, so that no use of the level has to ask whether it is known.
[[maybe_unused]] const bool isFound = (kelProcessorLevel = highestLevel(), true);

}  // namespace

KelProcessorLevel testaccess::limitProcessorLevel(KelProcessorLevel limit) {
  return kelProcessorLevel = std::min(limit, highestLevel());
}
