#include "orobasictypes/blockbitvector.h"

#include <immintrin.h>

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include "orobasictypes/bitvector.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/wordkernels.h"
#include "platform/sync.h"

namespace {

constexpr int32_t blockWords = BlockBitVector::kBlockWords;
constexpr size_t blockBytes = size_t{blockWords} * sizeof(uint32_t);
constexpr int32_t lineWords = WordOutline::lineWords;
constexpr int32_t lineBits = lineWords * 32;
constexpr int32_t fewLines = 8;  // above that, a loop over the whole block is faster

// ---------------------------------------------------------------------------------------------
// Many blocks at a time

// Which of 16 numbers are equal to the value.
unsigned equalOf16(const int32_t* numbers, __m128i value) {
  const auto four = [&](int32_t i) {
    const auto* const place = reinterpret_cast<const __m128i*>(numbers + i);
    return _mm_cmpeq_epi32(_mm_loadu_si128(place), value);
  };
  const __m128i low = _mm_packs_epi32(four(0), four(4));
  const __m128i high = _mm_packs_epi32(four(8), four(12));
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(low, high)));
}

// Adds 16 numbers to four sums, which hold up to 2^32 together; false when one is negative, and
// then nothing is added.
bool addNatural16(const int32_t* numbers, __m128i& sums) {
  const auto four = [&](int32_t i) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(numbers + i));
  };
  const __m128i signs =
      _mm_or_si128(_mm_or_si128(four(0), four(4)), _mm_or_si128(four(8), four(12)));
  if (_mm_movemask_ps(_mm_castsi128_ps(signs)) != 0) return false;
  sums = _mm_add_epi32(
      sums, _mm_add_epi32(_mm_add_epi32(four(0), four(4)), _mm_add_epi32(four(8), four(12))));
  return true;
}

// Which of 16 pointers are null.
unsigned nullOf16(uint32_t* const* pointers) {
  const auto two = [&](int32_t i) {
    return _mm_castsi128_ps(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pointers + i)));
  };
  const auto four = [&](int32_t i) {
    const __m128 first = two(i);
    const __m128 second = two(i + 2);
    const __m128 halves = _mm_or_ps(_mm_shuffle_ps(first, second, _MM_SHUFFLE(2, 0, 2, 0)),
                                    _mm_shuffle_ps(first, second, _MM_SHUFFLE(3, 1, 3, 1)));
    return _mm_cmpeq_epi32(_mm_castps_si128(halves), _mm_setzero_si128());
  };
  const __m128i low = _mm_packs_epi32(four(0), four(4));
  const __m128i high = _mm_packs_epi32(four(8), four(12));
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(low, high)));
}

constexpr int32_t rowBlocks = 64;

// Which of up to 64 blocks are known to be all clear or all set. Missing ones are clear.
WordOutline statesOf(const int32_t* counts, int32_t count) {
  WordOutline states;
  if (count >= rowBlocks) {
    const __m128i all = _mm_set1_epi32(BlockBitVector::kBlockBits);
    for (int32_t i = 0; i < rowBlocks; i += 16) {
      states.empty |= uint64_t{equalOf16(counts + i, _mm_setzero_si128())} << i;
      states.full |= uint64_t{equalOf16(counts + i, all)} << i;
    }
    return states;
  }
  states.empty = UINT64_MAX;
  for (int32_t i = 0; i < count; ++i) {
    if (counts[i] != 0) states.empty ^= uint64_t{1} << i;
    if (counts[i] == BlockBitVector::kBlockBits) states.full |= uint64_t{1} << i;
  }
  return states;
}

// Which of up to 64 blocks have memory.
uint64_t memoryOf(uint32_t* const* blocks, int32_t count) {
  uint64_t without = 0;
  if (count >= rowBlocks) {
    for (int32_t i = 0; i < rowBlocks; i += 16) without |= uint64_t{nullOf16(blocks + i)} << i;
    return ~without;
  }
  uint64_t with = 0;
  for (int32_t i = 0; i < count; ++i) with |= uint64_t{blocks[i] != nullptr} << i;
  return with;
}

// ---------------------------------------------------------------------------------------------
// What an operation makes of single bits

template <class Operation>
constexpr bool makes(bool mine, bool theirs) {
  return (Operation::narrow(mine ? UINT32_MAX : 0, theirs ? UINT32_MAX : 0) & 1) != 0;
}

// The stretches that the operation may change, by what is known of them on both sides.
template <class Operation>
uint64_t openStretches(const WordOutline& mine, const WordOutline& theirs) {
  constexpr bool clearByClear = makes<Operation>(false, false);
  constexpr bool clearBySet = makes<Operation>(false, true);
  constexpr bool setByClear = !makes<Operation>(true, false);
  constexpr bool setBySet = !makes<Operation>(true, true);
  const uint64_t haveClear = ~mine.full;
  const uint64_t haveSet = ~mine.empty;
  const uint64_t withClear = (clearByClear ? haveClear : 0) | (setByClear ? haveSet : 0);
  const uint64_t withSet = (clearBySet ? haveClear : 0) | (setBySet ? haveSet : 0);
  return (withClear & ~theirs.full) | (withSet & ~theirs.empty);
}

}  // namespace

// What is known of the words of a block, and how many vectors have it. A vector without a note has
// the block alone. The vectors may be at work in several modules, each of which has a pool and a
// mutex of its own: the number of owners has to do without.
struct BlockBitVector::Note {
  std::atomic<int32_t> owners = 1;
  WordOutline outline;  // changes while there is one owner
};

// ---------------------------------------------------------------------------------------------
// The pool

// Blocks that wait to be used again. It is made at first use and ends with the process; a vector
// that lives longer goes to the heap.
class BlockBitVector::Pool {
 public:
  // Null when it has ended.
  static Pool* get() {
    static Pool* const made = [] {
      std::atexit([] { delete std::exchange(living(), nullptr); });
      return living() = new Pool;
    }();
    return made != nullptr ? living() : nullptr;
  }
  ~Pool() {
    while (count_ > 0) kelFree(blocks_[--count_]);
  }

  uint32_t* take() { return count_ > 0 ? blocks_[--count_] : nullptr; }
  bool keep(uint32_t* block) {
    if (count_ == room) return false;
    blocks_[count_++] = block;
    return true;
  }

  platform::KernelMutex mutex;  // guards the rest

 private:
  static constexpr int32_t room = 512;

  static Pool*& living() {
    static Pool* pool = nullptr;
    return pool;
  }

  uint32_t* blocks_[room];
  int32_t count_ = 0;
};

class BlockBitVector::PoolHold {
 public:
  PoolHold() : pool_(Pool::get()) {
    if (pool_ != nullptr) pool_->mutex.lock();
  }
  ~PoolHold() {
    if (pool_ != nullptr) pool_->mutex.unlock();
  }
  PoolHold(const PoolHold&) = delete;
  PoolHold& operator=(const PoolHold&) = delete;

  // A block of any contents.
  uint32_t* take() {
    uint32_t* block = pool_ != nullptr ? pool_->take() : nullptr;
    if (block == nullptr) kelMalloc(block, sizeof(uint32_t), blockWords);
    return block;
  }
  void giveUp(uint32_t* block) {
    if (block != nullptr && (pool_ == nullptr || !pool_->keep(block))) kelFree(block);
  }

 private:
  Pool* const pool_;
};

// ---------------------------------------------------------------------------------------------
// Making and copying

// The remainder of a maximum bit beyond whole blocks gets none, kept for those who count blocks.
BlockBitVector::BlockBitVector(int32_t maximumBit) {
  growTables(maximumBit < kBlockBits ? 0 : (maximumBit >> 15) - 1);
}

BlockBitVector::BlockBitVector(const BitVector& bits) : BlockBitVector(bits.MaximumBit()) {
  *this = bits;
}

BlockBitVector::BlockBitVector(const BlockBitVector& other)
    : OroShared(other), numSet_(other.numSet_) {
  growTables(other.lastBlock_);
  std::copy_n(other.counts_, lastBlock_ + 1, counts_);
  PoolHold pool;
  for (int32_t block = 0; block <= lastBlock_; ++block) {
    if (other.blocks_[block] != nullptr) share(pool, block, other);
  }
}

BlockBitVector::BlockBitVector(BlockBitVector&& other) noexcept
    : OroShared(other),
      blocks_(std::exchange(other.blocks_, nullptr)),
      counts_(std::exchange(other.counts_, nullptr)),
      lastBlock_(std::exchange(other.lastBlock_, -1)),
      numSet_(std::exchange(other.numSet_, 0)) {}

BlockBitVector& BlockBitVector::operator=(const BlockBitVector& other) {
  if (this == &other) return *this;
  const int32_t last = other.lastUsedBlock();
  growTables(last);
  PoolHold pool;
  for (int32_t block = 0; block <= lastBlock_; ++block) {
    const View theirs = block <= last ? other.view(block) : View{0, nullptr, nullptr};
    if (theirs.isUniform()) {
      makeUniform(pool, block, theirs.isFull());
    } else {
      share(pool, block, other);
      counts_[block] = theirs.count;
    }
  }
  numSet_ = other.numSet_;
  return *this;
}

// Nothing is counted here: every block that the source has gets memory.
BlockBitVector& BlockBitVector::operator=(const BitVector& bits) {
  const int32_t last = (bits.wordCount() + blockWords - 1) / blockWords - 1;
  growTables(last);
  PoolHold pool;
  for (int32_t block = 0; block <= lastBlock_; ++block) {
    if (block > last) {
      makeUniform(pool, block, false);
    } else {
      bits.readWords(int64_t{block} * blockWords, freshWords(pool, block), blockWords);
      counts_[block] = -1;
    }
  }
  numSet_ = -1;
  return *this;
}

BlockBitVector::~BlockBitVector() {
  PoolHold pool;
  for (int32_t block = 0; block <= lastBlock_; ++block) {
    if (blocks_[block] != nullptr) giveUp(pool, block);
  }
  kelFree(blocks_);
  kelFree(counts_);
}

// Never makes them shorter. What is new is empty.
void BlockBitVector::growTables(int32_t lastBlock) {
  if (lastBlock <= lastBlock_) return;
  const int32_t old = lastBlock_ + 1;
  const int32_t count = lastBlock + 1;
  kelRealloc(blocks_, sizeof(uint32_t*), 2 * old, 2 * count, 2 * count);
  kelRealloc(counts_, sizeof(int32_t), old, count, count);
  const auto bytesOf = [](int32_t entries) { return static_cast<size_t>(entries) * sizeof(void*); };
  std::memmove(blocks_ + count, blocks_ + old, bytesOf(old));
  std::memset(blocks_ + old, 0, bytesOf(count - old));
  std::memset(blocks_ + count + old, 0, bytesOf(count - old));
  std::fill(counts_ + old, counts_ + count, 0);
  lastBlock_ = lastBlock;
}

// Behind the block pointers, in the same piece of memory.
BlockBitVector::Note** BlockBitVector::notes() const {
  return reinterpret_cast<Note**>(blocks_ + lastBlock_ + 1);
}

// ---------------------------------------------------------------------------------------------
// Blocks

BlockBitVector::View BlockBitVector::view(int32_t block) const {
  if (block > lastBlock_) return {0, nullptr, nullptr};
  return {counts_[block], blocks_[block], this};
}

// The words themselves where they lie in one piece; at the end of the bits a copy of them.
BlockBitVector::View BlockBitVector::viewOf(const BitVector& bits, int32_t block,
                                            uint32_t* buffer) {
  const int32_t word = block * blockWords;
  const int32_t end = std::min(word + blockWords, bits.wordCount());
  if (word >= end) return {0, nullptr, nullptr};
  const BitVector::Stretch part = bits.stretch(word, end);
  if (part.words == nullptr) return {0, nullptr, nullptr};
  if (part.count == blockWords) return {-1, part.words, nullptr};
  bits.readWords(word, buffer, blockWords);
  return {-1, buffer, nullptr};
}

// -1 when there is none. A block whose count is not known counts as one in use.
int32_t BlockBitVector::lastUsedBlock() const {
  int32_t block = lastBlock_;
  while (block >= 0 && counts_[block] == 0) --block;
  return block;
}

int32_t BlockBitVector::lastUsedWord() const {
  for (int32_t block = lastBlock_; block >= 0; --block) {
    const View mine = view(block);
    if (mine.isEmpty()) continue;
    const int64_t last =
        mine.isFull() ? blockWords - 1 : wordKernels().lastOther(mine.words, blockWords, 0);
    if (last >= 0) return block * blockWords + static_cast<int32_t>(last);
  }
  return -1;
}

int32_t BlockBitVector::populationOf(int32_t block) const {
  return static_cast<int32_t>(wordKernels().population(blocks_[block], blockWords));
}

// All clear or all set, without memory.
void BlockBitVector::makeUniform(PoolHold& pool, int32_t block, bool full) {
  if (blocks_[block] != nullptr) giveUp(pool, block);
  counts_[block] = full ? kBlockBits : 0;
}

// The memory itself goes when nobody else has it.
void BlockBitVector::giveUp(PoolHold& pool, int32_t block) {
  uint32_t* const words = std::exchange(blocks_[block], nullptr);
  Note* const note = std::exchange(notes()[block], nullptr);
  if (note != nullptr && note->owners.fetch_sub(1) > 1) return;
  kelFree(note);
  pool.giveUp(words);
}

// Has the other's block as well. The one that changes it first makes a copy of it.
void BlockBitVector::share(PoolHold& pool, int32_t block, const BlockBitVector& other) {
  if (blocks_[block] == other.blocks_[block]) return;
  Note& note = other.noteOf(block);
  ++note.owners;
  if (blocks_[block] != nullptr) giveUp(pool, block);
  blocks_[block] = other.blocks_[block];
  notes()[block] = &note;
}

// Made where there is none, with nothing in it.
BlockBitVector::Note& BlockBitVector::noteOf(int32_t block) const {
  const std::atomic_ref<Note*> place(notes()[block]);
  Note* note = place.load();
  if (note != nullptr) return *note;
  Note* made = nullptr;
  kelMalloc(made, sizeof(Note), 1);
  std::construct_at(made);
  if (place.compare_exchange_strong(note, made)) return *made;
  kelFree(made);  // another thread copied this vector, too
  return *note;
}

WordOutline BlockBitVector::outlineOf(int32_t block) const {
  const Note* const note = std::atomic_ref<Note*>(notes()[block]).load();
  return note != nullptr ? note->outline : WordOutline{};
}

// Memory that this vector alone has, of any contents; nothing is noted of it.
uint32_t* BlockBitVector::freshWords(PoolHold& pool, int32_t block) {
  const Note* const note = notes()[block];
  if (note != nullptr && note->owners.load() > 1) giveUp(pool, block);
  kelFree(std::exchange(notes()[block], nullptr));
  if (blocks_[block] == nullptr) blocks_[block] = pool.take();
  return blocks_[block];
}

// The same with what the block holds.
uint32_t* BlockBitVector::ownWords(PoolHold& pool, int32_t block) {
  const Note* const note = notes()[block];
  if (note == nullptr || note->owners.load() == 1) return freshWords(pool, block);
  uint32_t* const own = pool.take();
  std::memcpy(own, blocks_[block], blockBytes);
  giveUp(pool, block);
  return blocks_[block] = own;
}

// For a change of single bits. New memory is filled with the byte.
uint32_t* BlockBitVector::openWords(int32_t block, int fill) {
  if (blocks_[block] != nullptr && notes()[block] == nullptr) return blocks_[block];
  PoolHold pool;
  if (blocks_[block] != nullptr) return ownWords(pool, block);
  return static_cast<uint32_t*>(std::memset(freshWords(pool, block), fill, blockBytes));
}

// Counts a block whose words changed.
void BlockBitVector::settle(PoolHold& pool, int32_t block) {
  counts_[block] = populationOf(block);
  if (view(block).isUniform()) {
    giveUp(pool, block);
  } else if (Note& note = noteOf(block); note.owners.load() == 1) {
    note.outline = wordKernels().outline(blocks_[block], blockWords);
  }
}

// Makes a uniform block what the operand's is, or its inverse.
void BlockBitVector::take(PoolHold& pool, int32_t block, const View& theirs, bool inverted) {
  if (theirs.vector != nullptr && theirs.count >= 0 && !inverted) {
    share(pool, block, *theirs.vector);
    counts_[block] = theirs.count;
    return;
  }
  uint32_t* const words = freshWords(pool, block);
  std::memcpy(words, theirs.words, blockBytes);
  if (inverted) wordKernels().invert(words, blockWords);
  settle(pool, block);
}

// ---------------------------------------------------------------------------------------------
// Single bits and walking

bool BlockBitVector::Set(int32_t b) {
  if (b < 0) return false;
  const int32_t block = b >> 15;
  growTables(block);
  int32_t& count = counts_[block];
  if (count == kBlockBits) return false;
  const int32_t word = b >> 5 & (blockWords - 1);
  const uint32_t bit = 1U << (b & 31);
  if (blocks_[block] != nullptr && (blocks_[block][word] & bit) != 0) return false;
  openWords(block, 0)[word] |= bit;
  if (count >= 0) ++count;
  if (numSet_ >= 0) numSet_ = numSet_ < INT32_MAX ? numSet_ + 1 : -1;
  return true;
}

bool BlockBitVector::Clear(int32_t b) {
  const int32_t block = b >> 15;
  if (b < 0 || block > lastBlock_ || counts_[block] == 0) return false;
  const int32_t word = b >> 5 & (blockWords - 1);
  const uint32_t bit = 1U << (b & 31);
  if (blocks_[block] != nullptr && (blocks_[block][word] & bit) == 0) return false;
  openWords(block, 0xFF)[word] &= ~bit;
  if (counts_[block] > 0) --counts_[block];
  if (numSet_ >= 1) --numSet_;
  return true;
}

int32_t BlockBitVector::NextSet(int32_t b) const {
  uint32_t from = b < 0 ? 0 : static_cast<uint32_t>(b) + 1;
  for (auto block = static_cast<int32_t>(from >> 15); block <= lastBlock_; ++block) {
    const View mine = view(block);
    const auto start = static_cast<uint32_t>(block) << 15;
    from = std::max(from, start);
    if (mine.isFull()) return static_cast<int32_t>(from);
    if (mine.isEmpty()) continue;
    auto word = static_cast<int32_t>((from - start) >> 5);
    uint32_t bits = mine.words[word] & UINT32_MAX << (from & 31);
    if (bits == 0) {
      ++word;
      word +=
          static_cast<int32_t>(wordKernels().firstOther(mine.words + word, blockWords - word, 0));
      if (word == blockWords) continue;
      bits = mine.words[word];
    }
    return static_cast<int32_t>(start) + word * 32 + std::countr_zero(bits);
  }
  return -1;
}

int32_t BlockBitVector::CountSet() const { return numSet_ >= 0 ? numSet_ : Recount(); }

int32_t BlockBitVector::Recount() const {
  int64_t sum = 0;
  const auto addBlocks = [&](int32_t from, int32_t end) {
    for (int32_t block = from; block < end; ++block) {
      if (counts_[block] < 0) counts_[block] = populationOf(block);
      sum += counts_[block];
    }
  };
  __m128i sums = _mm_setzero_si128();  // of the rows in which every count is known
  int32_t row = 0;
  for (; row + 16 <= lastBlock_ + 1; row += 16) {
    if (!addNatural16(counts_ + row, sums)) addBlocks(row, row + 16);
  }
  addBlocks(row, lastBlock_ + 1);
  uint32_t four[4];
  _mm_storeu_si128(reinterpret_cast<__m128i*>(four), sums);
  for (const uint32_t part : four) sum += part;
  numSet_ = sum <= INT32_MAX ? static_cast<int32_t>(sum) : -1;
  return numSet_ >= 0 ? numSet_ : INT32_MAX;
}

// With equal counts it is enough that the other has all bits of this one. A count that is not noted
// now is that of the whole range.
bool BlockBitVector::operator==(const BlockBitVector& other) const {
  if (CountSet() != other.CountSet() || numSet_ != other.numSet_) return false;
  for (int32_t block = 0; block <= lastBlock_; ++block) {
    const View mine = view(block);
    const View theirs = other.view(block);
    if (mine.isEmpty() || theirs.isFull()) continue;
    if (theirs.isEmpty()) {
      if (mine.isFull() || populationOf(block) > 0) return false;
    } else if (mine.isFull()) {
      if (wordKernels().firstOther(theirs.words, blockWords, UINT32_MAX) < blockWords) return false;
    } else if (mine.words != theirs.words &&
               std::memcmp(mine.words, theirs.words, blockBytes) != 0) {
      return false;
    }
  }
  return true;
}

// ---------------------------------------------------------------------------------------------
// Two vectors

// Where one side is uniform, the block becomes uniform, the other side's or the inverse of that.
template <class Operation>
void BlockBitVector::combineBlock(PoolHold& pool, int32_t block, const View& theirs) {
  const View mine = view(block);
  if (mine.isUniform()) {
    const bool byClear = makes<Operation>(mine.isFull(), false);
    const bool bySet = makes<Operation>(mine.isFull(), true);
    if (theirs.isUniform() || byClear == bySet) {
      makeUniform(pool, block, theirs.isFull() ? bySet : byClear);
    } else {
      take(pool, block, theirs, byClear);
    }
  } else if (theirs.isUniform()) {
    const bool ofClear = makes<Operation>(false, theirs.isFull());
    const bool ofSet = makes<Operation>(true, theirs.isFull());
    if (ofClear == ofSet) {
      makeUniform(pool, block, ofSet);
    } else if (ofClear) {
      wordKernels().invert(ownWords(pool, block), blockWords);
      settle(pool, block);
    }
  } else {
    combineMixed<Operation>(pool, block, theirs);
  }
}

template <class Operation>
void BlockBitVector::combineMixed(PoolHold& pool, int32_t block, const View& theirs) {
  if (blocks_[block] == theirs.words) {
    if (!makes<Operation>(true, true)) {
      makeUniform(pool, block, false);
    } else if (counts_[block] < 0) {
      settle(pool, block);
    }
    return;
  }
  const WordOutline known =
      theirs.vector != nullptr ? theirs.vector->outlineOf(block) : WordOutline{};
  const uint64_t open = openStretches<Operation>(outlineOf(block), known);
  if (counts_[block] >= 0 && std::popcount(open) <= fewLines) {
    combineLines<Operation>(pool, block, theirs, open);
  } else {
    (wordKernels().*kernelOf(Operation{}))(ownWords(pool, block), theirs.words, blockWords);
    settle(pool, block);
  }
}

// Leaves all other lines alone, and a shared block shared as long as no bit changes.
template <class Operation>
void BlockBitVector::combineLines(PoolHold& pool, int32_t block, const View& theirs,
                                  uint64_t open) {
  WordOutline outline = outlineOf(block);
  int32_t count = counts_[block];
  bool isChanged = false;
  for (; open != 0; open &= open - 1) {
    const int32_t line = std::countr_zero(open);
    const int32_t word = line * lineWords;
    if (!bitwords::changes<Operation>(blocks_[block] + word, theirs.words + word, lineWords)) {
      continue;
    }
    uint32_t* const words = (isChanged ? blocks_[block] : ownWords(pool, block)) + word;
    isChanged = true;
    const auto before = static_cast<int32_t>(wordKernels().population(words, lineWords));
    bitwords::combine<Operation>(words, theirs.words + word, lineWords);
    const auto after = static_cast<int32_t>(wordKernels().population(words, lineWords));
    count += after - before;
    const uint64_t place = uint64_t{1} << line;
    outline.empty = after == 0 ? outline.empty | place : outline.empty & ~place;
    outline.full = after == lineBits ? outline.full | place : outline.full & ~place;
  }
  if (!isChanged) return;
  counts_[block] = count;
  if (view(block).isUniform()) {
    giveUp(pool, block);
  } else {
    noteOf(block).outline = outline;
  }
}

// Blocks that nothing happens to are passed by their counts, 64 at a time. A block that single bits
// made all clear or all set still has memory, which goes now.
template <class Operation>
void BlockBitVector::combine(const BlockBitVector& other) {
  PoolHold pool;
  for (int32_t row = 0; row <= lastBlock_; row += rowBlocks) {
    const int32_t count = lastBlock_ + 1 - row;
    const int32_t theirCount = std::max(other.lastBlock_ + 1 - row, 0);
    const WordOutline mine = statesOf(counts_ + row, count);
    const WordOutline theirs = statesOf(other.counts_ + (theirCount > 0 ? row : 0), theirCount);
    uint64_t open = openStretches<Operation>(mine, theirs);
    if (count < rowBlocks) open &= (uint64_t{1} << count) - 1;
    open |= (mine.empty | mine.full) & memoryOf(blocks_ + row, count);
    for (; open != 0; open &= open - 1) {
      const int32_t block = row + std::countr_zero(open);
      combineBlock<Operation>(pool, block, other.view(block));
    }
  }
  numSet_ = -1;
}

template <class Operation>
void BlockBitVector::combine(const BitVector& other) {
  uint32_t buffer[blockWords];
  PoolHold pool;
  for (int32_t block = 0; block <= lastBlock_; ++block) {
    combineBlock<Operation>(pool, block, viewOf(other, block, buffer));
  }
  numSet_ = -1;
}

BlockBitVector& BlockBitVector::operator&=(const BlockBitVector& other) {
  combine<bitwords::Conjoin>(other);
  return *this;
}

BlockBitVector& BlockBitVector::operator|=(const BlockBitVector& other) {
  growTables(other.lastUsedBlock());
  combine<bitwords::Unite>(other);
  return *this;
}

BlockBitVector& BlockBitVector::operator^=(const BlockBitVector& other) {
  growTables(other.lastUsedBlock());
  combine<bitwords::Differ>(other);
  return *this;
}

BlockBitVector& BlockBitVector::operator-=(const BlockBitVector& other) {
  combine<bitwords::Subtract>(other);
  return *this;
}

BlockBitVector& BlockBitVector::operator&=(const BitVector& other) {
  combine<bitwords::Conjoin>(other);
  return *this;
}

BlockBitVector& BlockBitVector::operator|=(const BitVector& other) {
  growTables(other.lastUsedWord() / blockWords);
  combine<bitwords::Unite>(other);
  return *this;
}

BlockBitVector& BlockBitVector::operator^=(const BitVector& other) {
  growTables(other.lastUsedWord() / blockWords);
  combine<bitwords::Differ>(other);
  return *this;
}

BlockBitVector& BlockBitVector::operator-=(const BitVector& other) {
  combine<bitwords::Subtract>(other);
  return *this;
}

// ---------------------------------------------------------------------------------------------
// Where a BitVector is on the left. Its words of one block lie in one piece.

BitVector::BitVector(const BlockBitVector& other) : BitVector(0) { *this = other; }

BitVector& BitVector::operator=(const BlockBitVector& other) {
  const int32_t last = other.lastUsedBlock();
  if (maximumBit_ < 0) becomeOneWord();
  Resize(static_cast<int32_t>(std::max<int64_t>(int64_t{last + 1} * BlockBitVector::kBlockBits, 1) -
                              1));
  const int32_t words = (last + 1) * blockWords;
  for (int32_t word = 0; word < words; word += blockWords) {
    const BlockBitVector::View theirs = other.view(word / blockWords);
    if (theirs.isEmpty() || theirs.isFull()) {
      fillWords(word, word + blockWords, theirs.isFull());
    } else {
      putWords(word, theirs.words, blockWords);
    }
  }
  fillWords(words, wordCount(), false);
  numSet_ = other.numSet_;
  return *this;
}

// Calls merge(first word, number of words, the operand's view) for the blocks of this vector.
template <class Merge>
void BitVector::mergeBlocks(const BlockBitVector& other, const Merge& merge) {
  const int32_t end = wordCount();
  for (int32_t word = 0; word < end; word += blockWords) {
    merge(word, std::min(blockWords, end - word), other.view(word / blockWords));
  }
  numSet_ = -1;
}

BitVector& BitVector::operator&=(const BlockBitVector& other) {
  if (numSet_ == 0) return *this;
  if (other.numSet_ == 0) {
    Zero();
    return *this;
  }
  mergeBlocks(other, [this](int32_t word, int32_t count, const BlockBitVector::View& theirs) {
    if (theirs.isFull()) return;
    if (theirs.isEmpty()) return fillWords(word, word + count, false);
    const Stretch mine = stretch(word, word + count);
    if (mine.words != nullptr) wordKernels().conjoin(mine.words, theirs.words, count);
  });
  return *this;
}

BitVector& BitVector::operator|=(const BlockBitVector& other) {
  if (other.numSet_ == 0) return *this;
  growToWord(other.lastUsedWord());
  mergeBlocks(other, [this](int32_t word, int32_t count, const BlockBitVector::View& theirs) {
    if (theirs.isEmpty()) return;
    if (theirs.isFull()) return fillWords(word, word + count, true);
    const Stretch mine = stretch(word, word + count);
    if (mine.words == nullptr) return putWords(word, theirs.words, count);
    wordKernels().unite(mine.words, theirs.words, count);
  });
  return *this;
}

BitVector& BitVector::operator^=(const BlockBitVector& other) {
  if (other.numSet_ == 0) return *this;
  growToWord(other.lastUsedWord());
  mergeBlocks(other, [this](int32_t word, int32_t count, const BlockBitVector::View& theirs) {
    if (theirs.isEmpty()) return;
    const Stretch mine = stretch(word, word + count);
    if (mine.words == nullptr) {
      if (theirs.isFull()) return fillWords(word, word + count, true);
      return putWords(word, theirs.words, count);
    }
    if (theirs.isFull()) return wordKernels().invert(mine.words, count);
    wordKernels().differ(mine.words, theirs.words, count);
  });
  return *this;
}

BitVector& BitVector::operator-=(const BlockBitVector& other) {
  if (numSet_ == 0 || other.numSet_ == 0) return *this;
  mergeBlocks(other, [this](int32_t word, int32_t count, const BlockBitVector::View& theirs) {
    if (theirs.isEmpty()) return;
    if (theirs.isFull()) return fillWords(word, word + count, false);
    const Stretch mine = stretch(word, word + count);
    if (mine.words != nullptr) wordKernels().subtract(mine.words, theirs.words, count);
  });
  return *this;
}
