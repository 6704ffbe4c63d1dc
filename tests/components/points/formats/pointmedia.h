#pragma once

// Point files in memory, and clouds that come out of them and go into them.
//
//   const Loaded loaded = load<PlyReader>(bytes);
//   EXPECT_EQ(loaded.clouds[0].xyz, points);
//   const Saved saved = save<PlyWriter>(clouds, options);
//   EXPECT_EQ(load<PlyReader>(saved.bytes).clouds, clouds);

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "components/points/formats/pointformatreader.h"
#include "components/points/formats/pointformatwriter.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/orotranslate.h"

namespace tests {

/// Gives the bytes in pieces of at most `piece`, with or without telling how many there are.
class MemoryPointInput : public PointInput {
 public:
  explicit MemoryPointInput(std::string bytes, size_t piece = SIZE_MAX, bool sized = true)
      : bytes_(std::move(bytes)), piece_(piece), sized_(sized) {}

  size_t read(char* buffer, size_t size) override {
    const size_t count = std::min({size, piece_, bytes_.size() - at_});
    std::memcpy(buffer, bytes_.data() + at_, count);
    at_ += count;
    return count;
  }
  int64_t size() const override { return sized_ ? static_cast<int64_t>(bytes_.size()) : 0; }
  bool failed() const override { return false; }
  bool restart() override {
    at_ = 0;
    return sized_;
  }

 private:
  std::string bytes_;
  size_t piece_;
  bool sized_;
  size_t at_ = 0;
};

class MemoryPointOutput : public PointOutput {
 public:
  explicit MemoryPointOutput(size_t room = SIZE_MAX) : room_(room) {}
  bool write(const char* bytes, size_t size) override {
    if (size > room_ - written.size()) return false;
    written.append(bytes, size);
    return true;
  }

  std::string written;

 private:
  size_t room_;
};

struct Cloud {
  std::vector<double> xyz;
  std::vector<PointColor> colors;
  int decimals = PointCloudHead::kShortest;
  std::optional<PointGrid> grid;
  double scale = 1;
  OroString name;
  std::vector<int> selected;  // from 1

  bool samePoints(const Cloud& other) const {
    // Bit by bit: 0 and -0 differ.
    auto same = [](double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; };
    return colors == other.colors &&
           std::equal(xyz.begin(), xyz.end(), other.xyz.begin(), other.xyz.end(), same);
  }
};

/// Collects clouds and notes how much room it was told to make.
class CollectingSink : public PointSink {
 public:
  bool beginCloud(const PointCloudHead& head) override {
    clouds.emplace_back();
    clouds.back().grid = head.grid;
    clouds.back().name = head.name;
    clouds.back().scale = head.scale;
    hasColors_ = head.hasColors;
    roomAsked = std::max(roomAsked, head.count);
    ++open;
    return clouds.size() <= mostClouds;
  }
  bool addPoints(const double* xyz, const PointColor* colors, size_t count) override {
    Cloud& cloud = clouds.back();
    cloud.xyz.insert(cloud.xyz.end(), xyz, xyz + 3 * count);
    if ((colors != nullptr) != hasColors_) colorsAsTold = false;
    if (colors != nullptr) cloud.colors.insert(cloud.colors.end(), colors, colors + count);
    return true;
  }
  bool select(const BitVector& selection) override {
    for (int32_t i = selection.NextSet(-1); i >= 0; i = selection.NextSet(i)) {
      clouds.back().selected.push_back(i);
    }
    return true;
  }
  bool endCloud(int decimals) override {
    clouds.back().decimals = decimals;
    --open;
    return true;
  }

  std::vector<Cloud> clouds;
  int64_t roomAsked = 0;
  int open = 0;
  bool colorsAsTold = true;
  size_t mostClouds = SIZE_MAX;

 private:
  bool hasColors_ = false;
};

class CloudSource : public PointSource {
 public:
  explicit CloudSource(std::vector<Cloud> clouds) : clouds_(std::move(clouds)) {
    for (const Cloud& cloud : clouds_) {
      PointCloudHead head;
      head.name = cloud.name;
      head.scale = cloud.scale;
      head.count = static_cast<int64_t>(cloud.xyz.size() / 3);
      head.hasColors = !cloud.colors.empty();
      head.decimals = cloud.decimals;
      head.grid = cloud.grid;
      heads_.push_back(std::move(head));
      selections_.emplace_back(static_cast<int32_t>(cloud.xyz.size() / 3));
      for (const int point : cloud.selected) selections_.back().Set(point);
    }
  }
  const BitVector* selection(size_t cloud) const override { return &selections_[cloud]; }
  std::span<const PointCloudHead> clouds() const override { return heads_; }
  bool points(size_t cloud, int64_t first, size_t count, double* xyz, PointColor* colors) override {
    const Cloud& from = clouds_[cloud];
    std::copy_n(from.xyz.begin() + 3 * first, 3 * count, xyz);
    if (colors != nullptr && !from.colors.empty()) {
      std::copy_n(from.colors.begin() + first, count, colors);
    }
    return true;
  }
  void wrote(size_t count) override { written += static_cast<int64_t>(count); }

  int64_t written = 0;

 private:
  std::vector<Cloud> clouds_;
  std::vector<PointCloudHead> heads_;
  std::vector<BitVector> selections_;
};

struct Loaded {
  bool good = false;
  std::vector<Cloud> clouds;
  PointProblem problem;
  PointNotes notes;
  int64_t roomAsked = 0;

  /// "line 3: text" or "byte 20: text", or "" without a problem.
  std::string told() const {
    if (problem.key == nullptr) return "";
    OroString text;
    oroTranslate(text, problem.key, problem.argument);
    return (problem.isLine ? "line " : "byte ") + std::to_string(problem.place) + ": " +
           text.toUtf8();
  }
};

/// The notes as they would be shown, one a line, for the file "F".
inline std::string shown(const PointNotes& notes) {
  std::string all;
  for (const PointNote& note : notes) {
    OroString text;
    oroTranslate(text, note.key, OroString("F"), note.first, note.second);
    all += std::string(text.toUtf8()) + "\n";
  }
  return all;
}

template <class Reader>
Loaded load(const std::string& bytes, size_t piece = SIZE_MAX, bool sized = true) {
  MemoryPointInput input(bytes, piece, sized);
  PointInputBuffer buffer(input);
  CollectingSink sink;
  Reader reader;
  Loaded loaded;
  loaded.good = reader.read(buffer, sink) && sink.open == 0 && sink.colorsAsTold;
  loaded.clouds = std::move(sink.clouds);
  loaded.problem = reader.problem();
  loaded.notes = reader.notes();
  loaded.roomAsked = sink.roomAsked;
  return loaded;
}

struct Saved {
  bool good = false;
  std::string bytes;
  PointNotes notes;
  const char* problem = nullptr;
  int64_t progress = 0;
};

template <class Writer>
Saved save(const std::vector<Cloud>& clouds, const PointWriteOptions& options = {},
           size_t room = SIZE_MAX) {
  CloudSource source(clouds);
  MemoryPointOutput output(room);
  PointOutputBuffer buffer(output);
  Writer writer(options);
  Saved saved;
  saved.good = writer.write(source, buffer) && buffer.good();
  saved.bytes = std::move(output.written);
  saved.notes = writer.notes();
  saved.problem = writer.problem();
  saved.progress = source.written;
  return saved;
}

/// Bytes of numbers one after the other, for files put together by hand.
template <class T>
std::string bytesOf(std::initializer_list<T> values) {
  std::string all;
  for (const T value : values) {
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    all.append(bytes, sizeof bytes);
  }
  return all;
}

/// A cloud of `count` points spread over some kilometres, whose coordinates need all their bits.
inline Cloud spreadCloud(int count, bool colors) {
  Cloud cloud;
  for (int i = 0; i < count; ++i) {
    const double t = i;
    cloud.xyz.insert(cloud.xyz.end(), {600000 + t / 3, -t * t / 7, t / 1000});
    if (colors) {
      cloud.colors.push_back({static_cast<uint8_t>(i), static_cast<uint8_t>(255 - i % 256),
                              static_cast<uint8_t>(i / 7)});
    }
  }
  return cloud;
}

}  // namespace tests
