// kelProcessorLevel: what the processor can do beyond the baseline that everything is compiled for.
// The one place where wider instructions are chosen.
//
//   static constexpr Kernels kernels[] = {baseline, wide, wide, wide};  // one for each level
//   kernels[kelProcessorLevel].add(a, b, count);
//
// Results are the same on every level: no fused operations, no other order of additions. Found
// before main; until then, and in a static object's constructor, it is the baseline. Any thread.
#pragma once

enum KelProcessorLevel : unsigned char {
  kKelBaseline,  // x86-64 with SSE2
  kKelAvx2,      // with AVX2, BMI1 and POPCNT
  kKelBmi2,      // with BMI2 as well, where that is fast
  kKelAvx512,    // with AVX-512 (F, BW, VL) and VPOPCNTDQ as well
};
inline constexpr int kKelProcessorLevels = 4;

extern KelProcessorLevel kelProcessorLevel;
