// MemoryInput and MemoryOutput: media of BinInput and BinOutput in memory that note what they are
// asked; EndlessInput: one of unknown size. FlipScrambler: a scrambler that depends on the place of
// each byte.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "orobasictypes/binio.h"

namespace tests {

class MemoryInput : public BinInput {
 public:
  explicit MemoryInput(std::string bytes) : bytes_(std::move(bytes)) {
    SetSize(static_cast<int64_t>(bytes_.size()));
  }

  int64_t ReadRaw(void* buffer, int64_t count) override {
    asked.push_back(count);
    const int64_t rest = std::max<int64_t>(static_cast<int64_t>(bytes_.size()) - at_, 0);
    const int64_t given = std::min({count, rest, mostAtOnce});
    std::memcpy(buffer, bytes_.data() + std::min<size_t>(bytes_.size(), static_cast<size_t>(at_)),
                static_cast<size_t>(given));
    at_ += given;
    return given;
  }
  int64_t Tell() override {
    ++tells;
    return at_;
  }
  bool Seek(int64_t offset, bool fromStart) override {
    const int64_t to = fromStart ? offset : static_cast<int64_t>(bytes_.size()) + offset;
    if (to < 0 || !seeks) return false;
    at_ = to;
    return true;
  }
  bool IsGood() override { return good; }
  bool Close() override { return true; }

  std::vector<int64_t> asked;      // the count of each ReadRaw
  int tells = 0;                   // calls of Tell
  int64_t mostAtOnce = INT64_MAX;  // bytes that one ReadRaw gives
  bool good = true;
  bool seeks = true;

 private:
  std::string bytes_;
  int64_t at_ = 0;
};

// Does not know its size.
class EndlessInput : public MemoryInput {
 public:
  explicit EndlessInput(const std::string& bytes) : MemoryInput(bytes) { SetSize(0); }
};

class MemoryOutput : public BinOutput {
 public:
  int64_t WriteRaw(const void* buffer, int64_t count) override {
    written.push_back(count);
    if (written.size() > refusesFrom) takes = false;
    if (!takes) return 0;
    const auto size = static_cast<size_t>(std::min(count, mostAtOnce));
    if (bytes.size() < at_ + size) bytes.resize(at_ + size);
    std::memcpy(bytes.data() + at_, buffer, size);
    at_ += size;
    return static_cast<int64_t>(size);
  }
  int64_t ReadRaw(void* buffer, int64_t count) override {
    const size_t got =
        std::min(bytes.size() - std::min(at_, bytes.size()), static_cast<size_t>(count));
    std::memcpy(buffer, bytes.data() + at_, got);
    at_ += got;
    return static_cast<int64_t>(got);
  }
  int64_t Tell() override {
    ++tells;
    return start + static_cast<int64_t>(at_);
  }
  bool Seek(int64_t offset, bool fromStart) override {
    const int64_t to = fromStart ? offset - start : static_cast<int64_t>(bytes.size()) + offset;
    seeks.push_back(offset);
    if (to < 0) return false;
    at_ = static_cast<size_t>(to);
    return true;
  }
  bool IsGood() override { return takes; }
  bool Close() override {
    ++closes;
    return true;
  }

  std::string bytes;
  std::vector<int64_t> written;  // the count of each WriteRaw
  std::vector<int64_t> seeks;    // the offset of each Seek
  int tells = 0;
  int closes = 0;
  int64_t start = 0;  // where the medium pretends that its first byte stands
  int64_t mostAtOnce = INT64_MAX;
  size_t refusesFrom = SIZE_MAX;  // the number of the WriteRaw, from 0, at which it is full
  bool takes = true;

 private:
  size_t at_ = 0;
};

class FlipScrambler : public BinIO_Scrambler {
 public:
  struct Call {
    char kind;
    int64_t position;
    int64_t count;
    friend bool operator==(const Call&, const Call&) = default;
  };

  explicit FlipScrambler(std::vector<Call>* calls = nullptr, int* alive = nullptr)
      : calls_(calls), alive_(alive) {
    if (alive_ != nullptr) ++*alive_;
  }
  ~FlipScrambler() override {
    if (alive_ != nullptr) --*alive_;
  }
  void Scramble(void* buffer, int64_t position, int64_t count) override {
    flip('s', buffer, position, count);
  }
  void Unscramble(void* buffer, int64_t position, int64_t count) override {
    flip('u', buffer, position, count);
  }
  static std::string flipped(std::string bytes, int64_t position = 0) {
    for (char& byte : bytes) byte = static_cast<char>(byte ^ (0x5A + 7 * position++));
    return bytes;
  }

 private:
  void flip(char kind, void* buffer, int64_t position, int64_t count) {
    if (calls_ != nullptr) calls_->push_back({kind, position, count});
    auto* const bytes = static_cast<char*>(buffer);
    const std::string changed = flipped(std::string(bytes, static_cast<size_t>(count)), position);
    std::memcpy(bytes, changed.data(), changed.size());
  }

  std::vector<Call>* calls_;
  int* alive_;
};

// Installs a scrambler for the life of this object.
class ScramblerGuard {
 public:
  explicit ScramblerGuard(BinIO_Scrambler* scrambler) { InstallScrambler(scrambler); }
  ~ScramblerGuard() { InstallScrambler(nullptr); }
  ScramblerGuard(const ScramblerGuard&) = delete;
  ScramblerGuard& operator=(const ScramblerGuard&) = delete;
};

}  // namespace tests
