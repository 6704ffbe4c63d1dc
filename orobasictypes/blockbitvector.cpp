#include "orobasictypes/blockbitvector.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "orobasictypes/bitvector.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/wordkernels.h"
#include "platform/sync.h"

namespace {

constexpr int32_t blockWords = BlockBitVector::kBlockWords;
constexpr size_t blockBytes = size_t{blockWords} * sizeof(uint32_t);

}  // namespace

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
  void giveUp(uint32_t*& block) {
    uint32_t* const given = std::exchange(block, nullptr);
    if (given != nullptr && (pool_ == nullptr || !pool_->keep(given))) kelFree(given);
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
  PoolHold pool;
  for (int32_t block = 0; block <= lastBlock_; ++block) {
    counts_[block] = other.counts_[block];
    if (other.blocks_[block] == nullptr) continue;
    blocks_[block] = pool.take();
    std::memcpy(blocks_[block], other.blocks_[block], blockBytes);
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
    const View theirs = block <= last ? other.view(block) : View{0, nullptr};
    if (theirs.isEmpty() || theirs.isFull()) {
      makeUniform(pool, block, theirs.isFull());
    } else {
      std::memcpy(makeMemory(pool, block), theirs.words, blockBytes);
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
      bits.readWords(int64_t{block} * blockWords, makeMemory(pool, block), blockWords);
      counts_[block] = -1;
    }
  }
  numSet_ = -1;
  return *this;
}

BlockBitVector::~BlockBitVector() {
  PoolHold pool;
  for (int32_t block = 0; block <= lastBlock_; ++block) pool.giveUp(blocks_[block]);
  kelFree(blocks_);
  kelFree(counts_);
}

// Never makes them shorter. What is new is empty.
void BlockBitVector::growTables(int32_t lastBlock) {
  if (lastBlock <= lastBlock_) return;
  const int32_t old = lastBlock_ + 1;
  const int32_t count = lastBlock + 1;
  kelRealloc(blocks_, sizeof(uint32_t*), old, count, count);
  kelRealloc(counts_, sizeof(int32_t), old, count, count);
  std::fill(blocks_ + old, blocks_ + count, nullptr);
  std::fill(counts_ + old, counts_ + count, 0);
  lastBlock_ = lastBlock;
}

// ---------------------------------------------------------------------------------------------
// Blocks

BlockBitVector::View BlockBitVector::view(int32_t block) const {
  if (block > lastBlock_) return {0, nullptr};
  return {counts_[block], blocks_[block]};
}

// The words themselves where they lie in one piece; at the end of the bits a copy of them.
BlockBitVector::View BlockBitVector::viewOf(const BitVector& bits, int32_t block,
                                            uint32_t* buffer) {
  const int32_t word = block * blockWords;
  const int32_t end = std::min(word + blockWords, bits.wordCount());
  if (word >= end) return {0, nullptr};
  const BitVector::Stretch part = bits.stretch(word, end);
  if (part.words == nullptr) return {0, nullptr};
  if (part.count == blockWords) return {-1, part.words};
  bits.readWords(word, buffer, blockWords);
  return {-1, buffer};
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
  pool.giveUp(blocks_[block]);
  counts_[block] = full ? kBlockBits : 0;
}

// Of any contents where there was none.
uint32_t* BlockBitVector::makeMemory(PoolHold& pool, int32_t block) {
  if (blocks_[block] == nullptr) blocks_[block] = pool.take();
  return blocks_[block];
}

// Counts a block whose words changed.
void BlockBitVector::settle(PoolHold& pool, int32_t block) {
  counts_[block] = populationOf(block);
  tidy(pool, block);
}

// A block that single bits made all clear or all set still has memory.
void BlockBitVector::tidy(PoolHold& pool, int32_t block) {
  if (counts_[block] == 0 || counts_[block] == kBlockBits) pool.giveUp(blocks_[block]);
}

// Makes a uniform block what the operand's is, or its inverse.
void BlockBitVector::take(PoolHold& pool, int32_t block, const View& theirs, bool inverted) {
  std::memcpy(makeMemory(pool, block), theirs.words, blockBytes);
  if (inverted) wordKernels().invert(blocks_[block], blockWords);
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
  if (blocks_[block] == nullptr) {
    PoolHold pool;
    std::memset(makeMemory(pool, block), 0, blockBytes);
  }
  uint32_t& word = blocks_[block][b >> 5 & (blockWords - 1)];
  const uint32_t bit = 1U << (b & 31);
  if ((word & bit) != 0) return false;
  word |= bit;
  if (count >= 0) ++count;
  if (numSet_ >= 0) ++numSet_;
  return true;
}

bool BlockBitVector::Clear(int32_t b) {
  const int32_t block = b >> 15;
  if (b < 0 || block > lastBlock_ || counts_[block] == 0) return false;
  if (blocks_[block] == nullptr) {
    PoolHold pool;
    std::memset(makeMemory(pool, block), 0xFF, blockBytes);
  }
  uint32_t& word = blocks_[block][b >> 5 & (blockWords - 1)];
  const uint32_t bit = 1U << (b & 31);
  if ((word & bit) == 0) return false;
  word &= ~bit;
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
  for (int32_t block = 0; block <= lastBlock_; ++block) {
    if (counts_[block] < 0) counts_[block] = populationOf(block);
    sum += counts_[block];
  }
  return numSet_ = static_cast<int32_t>(sum);
}

// With equal counts it is enough that the other has all bits of this one.
bool BlockBitVector::operator==(const BlockBitVector& other) const {
  if (CountSet() != other.CountSet()) return false;
  for (int32_t block = 0; block <= lastBlock_; ++block) {
    const View mine = view(block);
    const View theirs = other.view(block);
    if (mine.isEmpty() || theirs.isFull()) continue;
    if (theirs.isEmpty()) {
      if (mine.isFull() || populationOf(block) > 0) return false;
    } else if (mine.isFull()) {
      if (wordKernels().firstOther(theirs.words, blockWords, UINT32_MAX) < blockWords) return false;
    } else if (std::memcmp(mine.words, theirs.words, blockBytes) != 0) {
      return false;
    }
  }
  return true;
}

// ---------------------------------------------------------------------------------------------
// Two vectors

void BlockBitVector::conjoinBlock(PoolHold& pool, int32_t block, const View& theirs) {
  const View mine = view(block);
  if (mine.isEmpty() || theirs.isFull()) return;
  if (theirs.isEmpty()) {
    makeUniform(pool, block, false);
  } else if (mine.isFull()) {
    take(pool, block, theirs, false);
  } else {
    wordKernels().conjoin(blocks_[block], theirs.words, blockWords);
    settle(pool, block);
  }
}

void BlockBitVector::uniteBlock(PoolHold& pool, int32_t block, const View& theirs) {
  const View mine = view(block);
  if (mine.isFull() || theirs.isEmpty()) return;
  if (theirs.isFull()) {
    makeUniform(pool, block, true);
  } else if (mine.isEmpty()) {
    take(pool, block, theirs, false);
  } else {
    wordKernels().unite(blocks_[block], theirs.words, blockWords);
    settle(pool, block);
  }
}

void BlockBitVector::differBlock(PoolHold& pool, int32_t block, const View& theirs) {
  const View mine = view(block);
  if (theirs.isEmpty()) return;
  if (mine.isEmpty() || mine.isFull()) {
    if (theirs.isFull()) {
      makeUniform(pool, block, mine.isEmpty());
    } else {
      take(pool, block, theirs, mine.isFull());
    }
  } else {
    if (theirs.isFull()) {
      wordKernels().invert(blocks_[block], blockWords);
    } else {
      wordKernels().differ(blocks_[block], theirs.words, blockWords);
    }
    settle(pool, block);
  }
}

void BlockBitVector::subtractBlock(PoolHold& pool, int32_t block, const View& theirs) {
  const View mine = view(block);
  if (mine.isEmpty() || theirs.isEmpty()) return;
  if (theirs.isFull()) {
    makeUniform(pool, block, false);
  } else if (mine.isFull()) {
    take(pool, block, theirs, true);
  } else {
    wordKernels().subtract(blocks_[block], theirs.words, blockWords);
    settle(pool, block);
  }
}

void BlockBitVector::combine(const BlockBitVector& other, CombineBlock combineBlock) {
  PoolHold pool;
  for (int32_t block = 0; block <= lastBlock_; ++block) {
    (this->*combineBlock)(pool, block, other.view(block));
    tidy(pool, block);
  }
  numSet_ = -1;
}

void BlockBitVector::combine(const BitVector& other, CombineBlock combineBlock) {
  uint32_t buffer[blockWords];
  PoolHold pool;
  for (int32_t block = 0; block <= lastBlock_; ++block) {
    (this->*combineBlock)(pool, block, viewOf(other, block, buffer));
    tidy(pool, block);
  }
  numSet_ = -1;
}

BlockBitVector& BlockBitVector::operator&=(const BlockBitVector& other) {
  combine(other, &BlockBitVector::conjoinBlock);
  return *this;
}

BlockBitVector& BlockBitVector::operator|=(const BlockBitVector& other) {
  growTables(other.lastUsedBlock());
  combine(other, &BlockBitVector::uniteBlock);
  return *this;
}

BlockBitVector& BlockBitVector::operator^=(const BlockBitVector& other) {
  growTables(other.lastUsedBlock());
  combine(other, &BlockBitVector::differBlock);
  return *this;
}

BlockBitVector& BlockBitVector::operator-=(const BlockBitVector& other) {
  combine(other, &BlockBitVector::subtractBlock);
  return *this;
}

BlockBitVector& BlockBitVector::operator&=(const BitVector& other) {
  combine(other, &BlockBitVector::conjoinBlock);
  return *this;
}

BlockBitVector& BlockBitVector::operator|=(const BitVector& other) {
  growTables(other.lastUsedWord() / blockWords);
  combine(other, &BlockBitVector::uniteBlock);
  return *this;
}

BlockBitVector& BlockBitVector::operator^=(const BitVector& other) {
  growTables(other.lastUsedWord() / blockWords);
  combine(other, &BlockBitVector::differBlock);
  return *this;
}

BlockBitVector& BlockBitVector::operator-=(const BitVector& other) {
  combine(other, &BlockBitVector::subtractBlock);
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
