// Bit vectors against boost::dynamic_bitset, CRoaring and loops written for this: what the machine
// can do with words of 32 bits.

#include <immintrin.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <roaring/roaring.h>
#include <boost/dynamic_bitset.hpp>

#include "bench/support/blockmemory.h"
#include "bench/support/ratios.h"
#include "orobasictypes/binio.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/bitvectoriter.h"
#include "orobasictypes/blockbitvector.h"

namespace {

using Peer = boost::dynamic_bitset<uint64_t>;
using Words = std::vector<uint32_t>;

constexpr char peerName[] = "boost::dynamic_bitset";

// Each bit is set with the probability, in thousandths: 1, 500 or 999.
struct Sample {
  Sample(int32_t size, int thousandths, uint32_t seed = 1)
      : ours(size - 1), words(static_cast<size_t>(size) / 32 + 1) {
    fillWords(thousandths, seed);
    for (int32_t b = 1; b < size; ++b) {
      if ((words[static_cast<size_t>(b) / 32] >> b % 32 & 1) != 0) ours.Set(b);
    }
    std::vector<uint64_t> blocks(words.size() / 2 + 1);
    std::memcpy(blocks.data(), words.data(), words.size() * sizeof(uint32_t));
    peer.append(blocks.begin(), blocks.end());
    peer.resize(static_cast<size_t>(size));
  }
  void fillWords(int thousandths, uint32_t seed) {
    std::mt19937 random(seed);
    if (thousandths == 500) {
      for (uint32_t& word : words) word = static_cast<uint32_t>(random());
    } else {
      std::geometric_distribution<size_t> gap(0.001);
      for (size_t b = gap(random); b < words.size() * 32; b += 1 + gap(random)) {
        words[b / 32] |= 1U << b % 32;
      }
    }
    if (thousandths == 999) {
      for (uint32_t& word : words) word = ~word;
    }
    // What lies beyond the bits stays clear, as bit 0 does.
    words[0] &= ~1U;
    const auto size = static_cast<size_t>(ours.MaximumBit()) + 1;
    for (size_t b = size; b < words.size() * 32; ++b) words[b / 32] &= ~(1U << b % 32);
  }

  BitVector ours;
  Peer peer;
  Words words;
};

std::string nameOf(const std::string& work, int32_t size, int thousandths = 0) {
  std::string name =
      work + ", " +
      (size >= 1000000 ? std::to_string(size / 1000000) + "e6" : std::to_string(size));
  if (thousandths == 1) name += ", 0.1 %";
  if (thousandths == 500) name += ", 50 %";
  if (thousandths == 999) name += ", 99.9 %";
  return name;
}

// ---------------------------------------------------------------------------------------------
// Loops of this benchmark

__attribute__((target("avx2"))) int64_t countAvx2(const Words& words) {
  const __m256i table = _mm256_setr_epi8(0, 1, 1, 2, 1, 2, 2, 3, 1, 2, 2, 3, 2, 3, 3, 4,  //
                                         0, 1, 1, 2, 1, 2, 2, 3, 1, 2, 2, 3, 2, 3, 3, 4);
  const __m256i nibble = _mm256_set1_epi8(15);
  __m256i sums = _mm256_setzero_si256();
  size_t i = 0;
  for (; i + 8 <= words.size(); i += 8) {
    const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(words.data() + i));
    const __m256i low = _mm256_shuffle_epi8(table, _mm256_and_si256(v, nibble));
    const __m256i high =
        _mm256_shuffle_epi8(table, _mm256_and_si256(_mm256_srli_epi16(v, 4), nibble));
    sums =
        _mm256_add_epi64(sums, _mm256_sad_epu8(_mm256_add_epi8(low, high), _mm256_setzero_si256()));
  }
  uint64_t parts[4];
  std::memcpy(parts, &sums, sizeof parts);
  int64_t sum = static_cast<int64_t>(parts[0] + parts[1] + parts[2] + parts[3]);
  for (; i < words.size(); ++i) sum += std::popcount(words[i]);
  return sum;
}

// Eight words at a time, and the bits of those that are not zero.
template <class Visit>
__attribute__((target("avx2,bmi"))) void walkAvx2(const Words& words, Visit& visit) {
  const size_t end = words.size() / 8 * 8;
  for (size_t i = 0; i < end; i += 8) {
    const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(words.data() + i));
    if (_mm256_testz_si256(v, v)) continue;
    for (size_t k = i; k < i + 8; ++k) {
      for (uint32_t word = words[k]; word != 0; word &= word - 1) {
        visit(static_cast<int32_t>(k * 32) + __builtin_ctz(word));
      }
    }
  }
  for (size_t k = end; k < words.size(); ++k) {
    for (uint32_t word = words[k]; word != 0; word &= word - 1) {
      visit(static_cast<int32_t>(k * 32) + __builtin_ctz(word));
    }
  }
}

// The next clear bit behind b, word by word.
int32_t nextClearByWords(const Words& words, int32_t b) {
  const auto from = static_cast<size_t>(b + 1);
  size_t k = from / 32;
  uint32_t rest = ~words[k] & UINT32_MAX << from % 32;
  while (rest == 0) {
    if (++k == words.size()) return -1;
    rest = ~words[k];
  }
  return static_cast<int32_t>(k * 32) + std::countr_zero(rest);
}

struct Sum {
  void operator()(int32_t b) { total += b; }
  int64_t total = 0;
};

// ---------------------------------------------------------------------------------------------

template <class Ours, class Theirs>
void compareLogic(bench::Ratios& ratios, const std::string& work, int32_t size, const Ours& ours,
                  const Theirs& theirs) {
  const std::string name = nameOf(work, size);
  if (!ratios.wants(name)) return;
  Sample a(size, 500);
  const Sample b(size, 500, 2);
  const bool isShort = size < 1000000;
  ratios.compare(
      name, peerName, isShort ? 1.0 : 1.05, [&] { ours(a.ours, b.ours); },
      [&] { theirs(a.peer, b.peer); });
  if (isShort) return;
  Words to(b.words.size());
  ratios.compare(
      name, "memcpy", 1.1, [&] { ours(a.ours, b.ours); },
      [&] {
        std::memcpy(to.data(), b.words.data(), to.size() * sizeof(uint32_t));
        benchmark::DoNotOptimize(to.data());
      });
}

void compareLogic(bench::Ratios& ratios, int32_t size) {
  compareLogic(
      ratios, "and", size, [](BitVector& a, const BitVector& b) { a &= b; },
      [](Peer& a, const Peer& b) { a &= b; });
  compareLogic(
      ratios, "or", size, [](BitVector& a, const BitVector& b) { a |= b; },
      [](Peer& a, const Peer& b) { a |= b; });
  compareLogic(
      ratios, "xor", size, [](BitVector& a, const BitVector& b) { a ^= b; },
      [](Peer& a, const Peer& b) { a ^= b; });
  compareLogic(
      ratios, "difference", size, [](BitVector& a, const BitVector& b) { a -= b; },
      [](Peer& a, const Peer& b) { a -= b; });
  if (!ratios.wants(nameOf("complement", size))) return;
  Sample a(size, 500);
  ratios.compare(
      nameOf("complement", size), peerName, 1.05, [&] { a.ours.Complement(size - 1); },
      [&] { a.peer.flip(); });
}

void compareCount(bench::Ratios& ratios, int32_t size, int thousandths) {
  const std::string name = nameOf("count", size, thousandths);
  if (!ratios.wants(name)) return;
  Sample a(size, thousandths);
  ratios.compare(
      name, "avx2 loop", size < 1000000 ? 0 : 1.1,
      [&] { benchmark::DoNotOptimize(a.ours.Recount()); },
      [&] { benchmark::DoNotOptimize(countAvx2(a.words)); });
  ratios.compare(
      name, peerName, 0, [&] { benchmark::DoNotOptimize(a.ours.Recount()); },
      [&] { benchmark::DoNotOptimize(a.peer.count()); });
}

// Places in no order: each step of a xorshift generator is one, as no list of them would fit beside
// the bits.
class Places {
 public:
  explicit Places(int32_t size) : size_(static_cast<uint64_t>(size)) {}
  int32_t next() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 7;
    state_ ^= state_ << 17;
    return static_cast<int32_t>((state_ >> 32) * size_ >> 32);
  }

 private:
  uint64_t state_ = 88172645463325252;
  const uint64_t size_;
};

template <class Access>
void atRandom(int32_t size, const Access& access) {
  static uint64_t seed = 0;
  Places places(size);
  for (uint64_t skipped = seed++ % 64; skipped > 0; --skipped) places.next();
  for (int i = 0; i < 10000; ++i) access(places.next());
}

void compareRandomAccess(bench::Ratios& ratios, int32_t size) {
  const std::string setName = nameOf("10000 random sets", size);
  const std::string testName = nameOf("10000 random tests", size);
  if (!ratios.wants(setName) && !ratios.wants(testName)) return;
  Sample a(size, 500);
  std::vector<bool> flat(static_cast<size_t>(size));
  a.ours.CountSet();
  const double bar = size < 1000000 ? 1.6 : size < 100000000 ? 1.35 : 1.25;
  const auto sets = [&] { atRandom(size, [&](int32_t b) { a.ours.Set(b); }); };
  ratios.compare(setName, peerName, bar, sets,
                 [&] { atRandom(size, [&](int32_t b) { a.peer.set(static_cast<size_t>(b)); }); });
  ratios.compare(setName, "std::vector<bool>", bar, sets,
                 [&] { atRandom(size, [&](int32_t b) { flat[static_cast<size_t>(b)] = true; }); });
  ratios.compare(
      testName, peerName, bar,
      [&] {
        int sum = 0;
        atRandom(size, [&](int32_t b) { sum += a.ours.Test(b); });
        benchmark::DoNotOptimize(sum);
      },
      [&] {
        int sum = 0;
        atRandom(size, [&](int32_t b) { sum += a.peer.test(static_cast<size_t>(b)); });
        benchmark::DoNotOptimize(sum);
      });
}

void compareWalks(bench::Ratios& ratios, int32_t size, int thousandths) {
  const std::string visitor = nameOf("visitor", size, thousandths);
  const std::string iterator = nameOf("iterator", size, thousandths);
  const std::string next = nameOf("NextSet for each bit", size, thousandths);
  if (!ratios.wants(visitor) && !ratios.wants(iterator) && !ratios.wants(next)) return;
  const Sample a(size, thousandths);
  const auto loop = [&] {
    Sum sum;
    walkAvx2(a.words, sum);
    benchmark::DoNotOptimize(sum.total);
  };
  ratios.compare(
      visitor, "avx2 loop", 1.1,
      [&] {
        Sum sum;
        a.ours.ForEachSet(sum);
        benchmark::DoNotOptimize(sum.total);
      },
      loop);
  ratios.compare(
      iterator, "avx2 loop", 1.9,
      [&] {
        int64_t sum = 0;
        for (BitVectorIter i(a.ours); !i.AtEnd(); i.Next()) sum += i.Bit();
        benchmark::DoNotOptimize(sum);
      },
      loop);
  if (size > 1000000 && thousandths > 1) return;  // as with fewer bits, a hundred times as long
  const double bar = thousandths == 999 ? 0.8 : thousandths == 500 ? 0.85 : 0;
  ratios.compare(
      next, peerName, bar,
      [&] {
        uint32_t sum = 0;
        for (int32_t b = a.ours.NextSet(-1); b >= 0; b = a.ours.NextSet(b)) {
          sum += static_cast<uint32_t>(b);
        }
        benchmark::DoNotOptimize(sum);
      },
      [&] {
        uint32_t sum = 0;
        for (size_t b = a.peer.find_first(); b != Peer::npos; b = a.peer.find_next(b)) {
          sum += static_cast<uint32_t>(b);
        }
        benchmark::DoNotOptimize(sum);
      });
}

void compareNextClear(bench::Ratios& ratios, int32_t size) {
  const std::string name = nameOf("NextClear for each bit", size, 999);
  if (!ratios.wants(name)) return;
  Sample a(size, 999);
  // The loop stops at the last word alone; both see the same bits before it.
  const int32_t end = a.ours.PrevClear(size - 1);
  ratios.compare(
      name, "word loop", 0.8,
      [&] {
        int64_t sum = 0;
        for (int32_t b = a.ours.NextClear(0); b < end; b = a.ours.NextClear(b)) sum += b;
        benchmark::DoNotOptimize(sum);
      },
      [&] {
        int64_t sum = 0;
        for (int32_t b = nextClearByWords(a.words, 0); b < end; b = nextClearByWords(a.words, b)) {
          sum += b;
        }
        benchmark::DoNotOptimize(sum);
      });
}

// ---------------------------------------------------------------------------------------------
// Whole vectors

void compareMaking(bench::Ratios& ratios) {
  ratios.compare(
      "made and destroyed, 1000", peerName, 0,
      [] {
        const BitVector bits(999);
        benchmark::DoNotOptimize(bits.MaximumBit());
      },
      [] {
        const Peer bits(1000);
        benchmark::DoNotOptimize(bits.size());
      });
}

// Each begins with a copy.
void compareChanges(bench::Ratios& ratios, int32_t size) {
  const auto compare = [&](const std::string& work, const auto& ours, const auto& theirs) {
    const std::string name = nameOf("copied and " + work, size);
    if (!ratios.wants(name)) return;
    const Sample a(size, 500);
    const Sample mask(size, 500, 2);
    BitVector copy(a.ours);
    Peer peer(a.peer);
    ratios.compare(
        name, peerName, 0,
        [&] {
          copy = a.ours;
          ours(copy, mask.ours);
        },
        [&] {
          peer = a.peer;
          theirs(peer, mask.peer);
        });
  };
  compare(
      "a range set", [&](BitVector& x, const BitVector&) { x.SetRange(100, size - 100); },
      [&](Peer& x, const Peer&) { x.set(100, static_cast<size_t>(size) - 199, true); });
  compare(
      "shifted", [](BitVector& x, const BitVector&) { x.Shift(77); },
      [](Peer& x, const Peer&) { x <<= 77; });
  compare(
      "compacted", [](BitVector& x, const BitVector& mask) { x.Compact(mask); },
      [](Peer& x, const Peer& mask) {
        size_t place = 1;
        for (size_t b = 0; b < x.size(); ++b) {
          if (mask[b]) x[place++] = x[b];
        }
        x.resize(place);
      });
  compare(
      "masked bits removed", [](BitVector& x, const BitVector& mask) { x.RemoveMasked(mask); },
      [](Peer& x, const Peer& mask) {
        size_t place = 0;
        for (size_t b = 0; b < x.size(); ++b) {
          if (!mask[b]) x[place++] = x[b];
        }
        x.resize(place);
      });
}

// The other's bits, each to the place that a map names.
void compareMap(bench::Ratios& ratios, int32_t size) {
  const std::string name = nameOf("copied by a map", size);
  if (!ratios.wants(name)) return;
  Sample a(size, 500);
  const Sample b(size, 500, 2);
  OroMM::IntArray map(size);
  std::vector<int32_t> flat(static_cast<size_t>(size));
  std::mt19937 random(5);
  for (int32_t i = 1; i < size; ++i) {
    flat[static_cast<size_t>(i)] = static_cast<int32_t>(random() % static_cast<uint32_t>(size));
    map.Set(i, flat[static_cast<size_t>(i)]);
  }
  ratios.compare(
      name, "a loop over boost::dynamic_bitset", 0, [&] { a.ours.CopyMapped(b.ours, map); },
      [&] {
        for (size_t i = 0; i < flat.size(); ++i) {
          if (flat[i] != 0) a.peer[static_cast<size_t>(flat[i])] = b.peer[i];
        }
      });
}

// ---------------------------------------------------------------------------------------------
// Chunks, as far as they do not depend on a file

// Takes what comes, and keeps nothing.
class Sink : public BinOutput {
 public:
  int64_t WriteRaw(const void*, int64_t count) override {
    at_ += count;
    return count;
  }
  int64_t ReadRaw(void*, int64_t) override { return 0; }
  int64_t Tell() override { return at_; }
  bool Seek(int64_t, bool) override { return false; }
  bool IsGood() override { return true; }
  bool Close() override { return true; }

 private:
  int64_t at_ = 0;
};

void compareChunks(bench::Ratios& ratios, int32_t size) {
  const std::string name = nameOf("dense chunk written", size);
  if (!ratios.wants(name)) return;
  const Sample a(size, 500);
  Words swapped(a.words.size());
  ratios.compare(
      name, "swapping copy", 0,
      [&] {
        Sink sink;
        a.ours.Write(sink);
      },
      [&] {
        for (size_t i = 0; i < swapped.size(); ++i) swapped[i] = __builtin_bswap32(a.words[i]);
        benchmark::DoNotOptimize(swapped.data());
      });
}

// ---------------------------------------------------------------------------------------------
// Blocks against compressed bitmaps

struct Blocks {
  ~Blocks() { roaring_bitmap_free(peer); }
  void addRange(int32_t from, int32_t to) {
    all.SetRange(from, to);
    roaring_bitmap_add_range_closed(peer, static_cast<uint32_t>(from), static_cast<uint32_t>(to));
  }
  void addBit(int32_t b) {
    all.Set(b);
    roaring_bitmap_add(peer, static_cast<uint32_t>(b));
  }
  void finish() {
    ours = all;
    ours |= all;  // settles what is all equal
    ours.CountSet();
    roaring_bitmap_run_optimize(peer);
  }

  static constexpr int32_t size = 100000000;
  BitVector all{size};
  BlockBitVector ours;
  roaring_bitmap_t* peer = roaring_bitmap_create();
};

// Runs of some ten thousand to a million bits, with gaps of that size.
void fillRuns(Blocks& blocks, uint32_t seed) {
  std::mt19937 random(seed);
  const auto length = [&random] { return static_cast<int32_t>(10000 + random() % 1000000); };
  for (int32_t b = length(); b < Blocks::size - 2100000;) {
    const int32_t run = length();
    blocks.addRange(b, b + run);
    b += run + length();
  }
  blocks.finish();
}

// Stretches of a hundred thousand bits of which half are set, with large gaps.
void fillClusters(Blocks& blocks, uint32_t seed) {
  std::mt19937 random(seed);
  for (int cluster = 0; cluster < 200; ++cluster) {
    const auto start = static_cast<int32_t>(random() % (Blocks::size - 200000));
    for (int32_t i = 0; i < 100000; ++i) {
      if (random() % 2 == 0) blocks.addBit(start + i);
    }
  }
  blocks.finish();
}

void compareBlocks(bench::Ratios& ratios, const std::string& kind,
                   void (*fill)(Blocks&, uint32_t)) {
  const auto compare = [&](const std::string& work, const auto& ours, const auto& theirs) {
    const std::string name = "blocks, " + work + ", " + kind;
    if (!ratios.wants(name)) return;
    Blocks a;
    fill(a, 1);
    Blocks b;
    fill(b, 2);
    ratios.compare(
        name, "CRoaring", 1.0, [&] { ours(a.ours, b.ours); }, [&] { theirs(a.peer, b.peer); });
  };
  compare(
      "and", [](auto& x, const auto& y) { x &= y; },
      [](auto* x, const auto* y) { roaring_bitmap_and_inplace(x, y); });
  compare(
      "or", [](auto& x, const auto& y) { x |= y; },
      [](auto* x, const auto* y) { roaring_bitmap_or_inplace(x, y); });
  compare(
      "xor", [](auto& x, const auto& y) { x ^= y; },
      [](auto* x, const auto* y) { roaring_bitmap_xor_inplace(x, y); });
  compare(
      "difference", [](auto& x, const auto& y) { x -= y; },
      [](auto* x, const auto* y) { roaring_bitmap_andnot_inplace(x, y); });
  compare(
      "copy and or",
      [](auto& x, const auto& y) {
        BlockBitVector copy(x);
        copy |= y;
        benchmark::DoNotOptimize(copy.LastBlock());
      },
      [](auto* x, const auto* y) {
        roaring_bitmap_t* const both = roaring_bitmap_or(x, y);
        benchmark::DoNotOptimize(both);
        roaring_bitmap_free(both);
      });
  compare(
      "count", [](auto& x, const auto&) { benchmark::DoNotOptimize(x.Recount()); },
      [](auto* x, const auto*) { benchmark::DoNotOptimize(roaring_bitmap_get_cardinality(x)); });
  compare(
      "walk",
      [](auto& x, const auto&) {
        Sum sum;
        x.ForEachSet(sum);
        benchmark::DoNotOptimize(sum.total);
      },
      [](auto* x, const auto*) {
        Sum sum;
        roaring_iterate(
            x,
            [](uint32_t b, void* to) {
              (*static_cast<Sum*>(to))(static_cast<int32_t>(b));
              return true;
            },
            &sum);
        benchmark::DoNotOptimize(sum.total);
      });
  compare(
      "1000 tests",
      [](auto& x, const auto&) {
        int sum = 0;
        for (int32_t i = 0; i < 1000; ++i)
          sum += x.Test(static_cast<int32_t>(i * 99991 % 99000000));
        benchmark::DoNotOptimize(sum);
      },
      [](auto* x, const auto*) {
        int sum = 0;
        for (int32_t i = 0; i < 1000; ++i) {
          sum += roaring_bitmap_contains(x, static_cast<uint32_t>(i * 99991 % 99000000));
        }
        benchmark::DoNotOptimize(sum);
      });
}

}  // namespace

int main(int argc, char** argv) {
  const bench::BlockMemory memory;
  bench::Ratios ratios(argc, argv);
  for (const int32_t size : {1000, 1000000, 100000000}) {
    compareLogic(ratios, size);
    compareRandomAccess(ratios, size);
    for (const int thousandths : {1, 500, 999}) {
      compareCount(ratios, size, thousandths);
      compareWalks(ratios, size, thousandths);
    }
    compareNextClear(ratios, size);
  }
  compareMaking(ratios);
  compareChanges(ratios, 1000000);
  compareMap(ratios, 1000000);
  compareChunks(ratios, 1000000);
  compareBlocks(ratios, "runs", fillRuns);
  compareBlocks(ratios, "clusters", fillClusters);
}
