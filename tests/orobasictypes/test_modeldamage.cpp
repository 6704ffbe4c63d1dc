// Damaged model files: whatever the bytes are, reading ends, and damage that can be seen is told.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "interfaces/IOroDataModelReader.h"
#include "interfaces/IOroDataModelWriter.h"
#include "orobasictypes/orofileread.h"
#include "orobasictypes/orofiletags.h"
#include "orobasictypes/orofilewrite.h"
#include "orobasictypes/orostring.h"
#include "tests/orobasictypes/filetexts.h"
#include "tests/orobasictypes/memorymedia.h"
#include "tests/orobasictypes/modelbytes.h"
#include "tests/orobasictypes/modelobjects.h"
#include "tests/tempfolder.h"

namespace {

using tests::MemoryInput;

constexpr int32_t groupTag = 0x1234;

// A model file in memory: nested groups, every typed element, objects of both sorts, bare values.
std::string sampleModel(int32_t fileVersion) {
  tests::MemoryOutput output;
  OroFileWrite<> writer(&output, fileVersion);
  tests::Box box;
  const double numbers[16] = {1, 2, 3};
  const float pair[2] = {4, 5};
  const bool wide = fileVersion == 0;
  writer.BeginElement(orofiletags::kRoot, wide ? 1 : 0);
  writer.BeginElement(groupTag, 2);
  writer.WritePoint(numbers);
  writer.WriteMatrix(numbers);
  writer.WriteDoublePair(numbers);
  writer.WriteFloatPair(pair);
  writer.WriteId(tests::boxId);
  writer.EndElement();
  writer.BeginObject(box, 3);
  writer.WriteText(KelCString("narrow"));
  writer.WriteOroString(OroString(u"wide \u20AC"));
  writer.EndObject();
  writer.BeginStringObject(KelCString("name"));
  writer.BeginElement(groupTag, 1);
  writer.WriteText(KelCString(""));
  writer.EndElement();
  writer.EndStringObject();
  writer.EndElement();
  writer.Close();
  return output.bytes;
}

// Reads whatever comes, as deep as it goes, and counts the elements. Groups and objects are
// entered, typed elements are read as what their tags say.
class Walker {
 public:
  explicit Walker(const std::string& bytes) : input_(bytes), reader_(&input_) {}

  // True when all was read and nothing was wrong.
  bool walk() {
    if (reader_.PeekTag() != orofiletags::kRoot) return false;
    walkElement();
    return reader_.IsGood();
  }
  int elements() const { return elements_; }

 private:
  void walkElement() {
    ASSERT_LT(++elements_, 10000) << "it goes on for ever";
    double numbers[16];
    float pair[2];
    GUID id;
    KelCString text;
    OroString wide;
    reader_.PeekId();
    reader_.PeekString();
    switch (reader_.PeekTag()) {
      case orofiletags::kPoint:
        reader_.ReadPoint(numbers);
        return;
      case orofiletags::kMatrix:
        reader_.ReadMatrix(numbers);
        return;
      case orofiletags::kDoublePair:
        reader_.ReadDoublePair(numbers);
        return;
      case orofiletags::kFloatPair:
        reader_.ReadFloatPair(pair);
        return;
      case orofiletags::kId:
        reader_.ReadId(id);
        return;
      case orofiletags::kText:
        reader_.ReadText(text);
        return;
      case orofiletags::kOroString:
        reader_.ReadOroString(wide);
        return;
      default:
        break;
    }
    if (!reader_.BeginElement()) return;
    while (!reader_.AtElementEnd()) walkElement();
    reader_.EndElement();
  }

  MemoryInput input_;
  OroFileRead<> reader_;
  int elements_ = 0;
};

class ModelDamage : public testing::TestWithParam<int32_t> {
 protected:
  // Whether a child of the root ends at that byte.
  bool endsBetweenChildren(size_t place) const {
    size_t at = static_cast<size_t>(sizeWidth_) + 4;
    while (at < place) {
      size_t size = 0;
      for (size_t i = 0; i < static_cast<size_t>(sizeWidth_); ++i) {
        size = size << 8 | static_cast<uint8_t>(model_[at + 4 + i]);
      }
      at += size;
    }
    return at == place;
  }

  const std::string model_ = sampleModel(GetParam());
  const int sizeWidth_ = GetParam() == 0 ? 8 : 4;
};

TEST_P(ModelDamage, TheWholeFileIsGood) {
  Walker walker(model_);
  EXPECT_TRUE(walker.walk());
  EXPECT_EQ(walker.elements(), 14);
}

TEST_P(ModelDamage, AFileThatEndsAtAnyByteIsBad) {
  for (size_t size = 0; size < model_.size(); ++size) {
    Walker walker(model_.substr(0, size));
    EXPECT_FALSE(walker.walk()) << size;
  }
}

// The writer was cut off: the root has no size yet, and what is whole is read.
TEST_P(ModelDamage, ACutOffFileIsReadUpToTheElementThatIsCut) {
  std::string cut = model_;
  cut.replace(4, static_cast<size_t>(sizeWidth_), static_cast<size_t>(sizeWidth_), '\0');
  EXPECT_TRUE(Walker(cut).walk());
  const size_t firstChild = static_cast<size_t>(sizeWidth_) + 4;
  int most = 0;
  for (size_t size = firstChild; size < cut.size(); ++size) {
    Walker walker(cut.substr(0, size));
    EXPECT_EQ(walker.walk(), size == firstChild || endsBetweenChildren(size)) << size;
    EXPECT_GE(walker.elements(), most) << size;
    most = walker.elements();
  }
  EXPECT_GT(most, 8);
}

TEST_P(ModelDamage, AnyFlippedBitEndsInAResult) {
  int told = 0;
  for (size_t bit = 0; bit < model_.size() * 8; ++bit) {
    std::string damaged = model_;
    damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << bit % 8));
    if (!Walker(damaged).walk()) ++told;
  }
  EXPECT_GT(told, 300) << "sizes and tags tell; values cannot";
}

TEST_P(ModelDamage, SizesAtTheirLimitsEndInAResult) {
  const uint64_t limits[] = {0,
                             1,
                             7,
                             8,
                             11,
                             12,
                             13,
                             0x7FFFFFFE,
                             0x7FFFFFFF,
                             0x80000000,
                             0xFFFFFFFE,
                             0xFFFFFFFF,
                             0x100000000,
                             0x7FFFFFFFFFFFFFFF,
                             0x8000000000000000,
                             0xFFFFFFFFFFFFFFFE,
                             0xFFFFFFFFFFFFFFFF};
  // Wherever it stands, as if each place were that of a size.
  for (size_t at = 4; at + 8 <= model_.size(); ++at) {
    for (const uint64_t limit : limits) {
      std::string damaged = model_;
      for (int i = 0; i < sizeWidth_; ++i) {
        damaged[at + static_cast<size_t>(i)] =
            static_cast<char>(limit >> (8 * (sizeWidth_ - 1 - i)));
      }
      Walker walker(damaged);
      walker.walk();
      EXPECT_GE(walker.elements(), 1);
    }
  }
}

TEST_P(ModelDamage, NoiseEndsInAResult) {
  std::mt19937 random(5);
  for (int round = 0; round < 3000; ++round) {
    std::string damaged = model_;
    for (unsigned i = random() % 20; i > 0; --i) {
      damaged[4 + random() % (damaged.size() - 4)] = static_cast<char>(random());
    }
    damaged.resize(damaged.size() - random() % 10);
    Walker walker(damaged);
    walker.walk();
    EXPECT_GE(walker.elements(), 1);
  }
}

INSTANTIATE_TEST_SUITE_P(BothWidths, ModelDamage, testing::Values(0, 1));

// Goes into every element there is and counts them.
int countAll(OroFileRead<>& reader) {
  int count = 0;
  while (!reader.AtElementEnd()) {
    if (!reader.BeginElement()) break;
    count += 1 + countAll(reader);
    reader.EndElement();
  }
  return count;
}

// The end of an element is not compared with that of its parent, so that a small file can hold very
// much. It is kept for files that rely on it; readers that go into everything have to set a limit.
TEST(ModelFiles, WhatStandsBehindAParentAndInItsChildIsReadTwice) {
  for (int pairs = 0; pairs < 12; ++pairs) {
    tests::ModelBytes file(4);
    file.begin(0x4B454C, 0);
    for (int i = 0; i < pairs; ++i) file.begin(groupTag, 0).begin(groupTag, 0);
    for (int i = 0; i < pairs; ++i) file.end().endAs(16);
    MemoryInput input(file.end().bytes());
    OroFileRead<> reader(&input);
    ASSERT_TRUE(reader.BeginElement());
    EXPECT_EQ(countAll(reader), (2 << pairs) - 2);
    EXPECT_TRUE(reader.IsGood());
  }
}

TEST(ModelFiles, DeepNestingIsClosedAndReadBack) {
  constexpr int depth = 100000;
  const tests::TempFolder folder;
  const OroPath path = tests::textOf(folder.file("deep"));
  OroFileWrite<> writer;
  ASSERT_TRUE(writer.Open(path));
  for (int i = 0; i < depth; ++i) writer.BeginElement(groupTag, 0);
  ASSERT_TRUE(writer.Close());
  OroFileRead<> reader;
  ASSERT_TRUE(reader.Open(path));
  int entered = 0;
  for (; !reader.AtElementEnd(); ++entered) ASSERT_TRUE(reader.BeginElement());
  EXPECT_EQ(entered, depth);
  for (int i = 0; i < depth; ++i) ASSERT_TRUE(reader.EndElement());
  EXPECT_TRUE(reader.AtElementEnd());
  EXPECT_TRUE(reader.IsGood());
}

// A file on the disk, cut at every byte, for the input that reads ahead.
TEST(ModelFiles, AFileOnTheDiskThatEndsAtAnyByteIsBad) {
  const tests::TempFolder folder;
  const std::string model = sampleModel(0);
  for (size_t size = 0; size < model.size(); size += 1 + size / 50) {
    folder.write("cut", model.substr(0, size));
    OroFileRead<> reader;
    ASSERT_TRUE(reader.Open(tests::textOf(folder.file("cut"))));
    EXPECT_FALSE(reader.IsGood()) << size;
    EXPECT_TRUE(reader.AtElementEnd()) << size;
  }
}

}  // namespace
