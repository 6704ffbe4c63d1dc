#include "orobasictypes/orohashtable.h"

#include <algorithm>
#include <iterator>

uint32_t oroNextPrime(uint32_t count) {
  static constexpr uint32_t sizes[] = {
      2,        3,        5,        11,        17,        37,        67,         131,
      257,      521,      1031,     2053,      4099,      8209,      16411,      32771,
      65537,    131101,   262147,   524309,    1048583,   2097169,   4194319,    8388617,
      16777259, 33554467, 67108879, 134217757, 268435459, 536870923, 1073741827, 2147483659};
  return *std::upper_bound(std::begin(sizes), std::end(sizes) - 1, count);
}
