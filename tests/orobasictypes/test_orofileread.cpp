#include "orobasictypes/orofileread.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <memory>
#include <string>

#include "interfaces/IOroDataModelReader.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/orofilenesting.h"
#include "orobasictypes/orofilewrite.h"
#include "orobasictypes/orostring.h"
#include "tests/orobasictypes/filetexts.h"
#include "tests/orobasictypes/memorymedia.h"
#include "tests/orobasictypes/modelbytes.h"
#include "tests/orobasictypes/modelobjects.h"
#include "tests/orobasictypes/texts.h"
#include "tests/support/assertionlist.h"
#include "tests/support/slotnumber.h"
#include "tests/tempfolder.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::MemoryInput;
using tests::ModelBytes;
using Reader = OroFileRead<>;

const std::string boxIdBytes = "\x1D\xBF\xCA\xD9\x03\x38\x49\x23\xA3\x29\xEA\xEA\x81\x06\x3F\xF0";

class OroFileReadTest : public testing::Test {
 protected:
  OroPath path(const char* name = "a") const { return tests::textOf(folder_.file(name)); }
  // Opens a file of these bytes.
  bool open(const std::string& bytes) {
    reader_.Close();
    folder_.write("a", bytes);
    return reader_.Open(path());
  }
  bool open(const ModelBytes& bytes) { return open(bytes.bytes()); }
  // Opens a file with sizes of 64 bits whose root holds the bytes.
  bool openBody(const std::string& body) {
    return open(ModelBytes(8).begin(0x4B454C, 1).text(body).end());
  }
  static std::string element(uint32_t tag, const std::string& body, uint32_t version = 0) {
    return ModelBytes(8).begin(tag, version).text(body).end().bytes();
  }
  int8_t byte() {
    int8_t value = 0;
    reader_.ReadInt8(value);
    return value;
  }

  tests::TempFolder folder_;
  Reader reader_;
};

TEST(IOroDataModelReaderSlots, OperationsStandInOrder) {
  using I = IOroDataModelReader;
  EXPECT_EQ(tests::slotNumber(&I::ReadObject), 1);
  EXPECT_EQ(tests::slotNumber(&I::ReadObjectFrom), 2);
  EXPECT_EQ(tests::slotNumber(&I::ReadId), 3);
  EXPECT_EQ(tests::slotNumber(&I::ReadFloatPair), 4);
  EXPECT_EQ(tests::slotNumber(&I::ReadDoublePair), 5);
  EXPECT_EQ(tests::slotNumber(&I::ReadMatrix), 6);
  EXPECT_EQ(tests::slotNumber(&I::ReadPoint), 7);
  EXPECT_EQ(tests::slotNumber(&I::ReadOroString), 8);
  EXPECT_EQ(tests::slotNumber(&I::ReadText), 9);
  EXPECT_EQ(tests::slotNumber(&I::ReadDouble), 10);
  EXPECT_EQ(tests::slotNumber(&I::ReadFloat), 11);
  EXPECT_EQ(tests::slotNumber(&I::ReadUInt32), 12);
  EXPECT_EQ(tests::slotNumber(&I::ReadInt32), 13);
  EXPECT_EQ(tests::slotNumber(&I::ReadInt8), 14);
  EXPECT_EQ(tests::slotNumber(&I::ReadUInt8), 15);
  EXPECT_EQ(tests::slotNumber(&I::PeekId), 16);
  EXPECT_EQ(tests::slotNumber(&I::BeginObject), 17);
  EXPECT_EQ(tests::slotNumber(&I::EndObject), 18);
  EXPECT_EQ(tests::slotNumber(&I::PeekString), 19);
  EXPECT_EQ(tests::slotNumber(&I::BeginStringObject), 20);
  EXPECT_EQ(tests::slotNumber(&I::EndStringObject), 21);
  EXPECT_EQ(tests::slotNumber(&I::BeginElement), 22);
  EXPECT_EQ(tests::slotNumber(&I::AtElementEnd), 23);
  EXPECT_EQ(tests::slotNumber(&I::EndElement), 24);
  EXPECT_EQ(tests::slotNumber(&I::GetTag), 25);
  EXPECT_EQ(tests::slotNumber(&I::GetVersion), 26);
  EXPECT_EQ(tests::slotNumber(&I::GetId), 27);
  EXPECT_EQ(tests::slotNumber(&I::IsGood), 28);
  EXPECT_EQ(tests::slotNumber(&I::PeekTag), 29);
  EXPECT_EQ(tests::slotNumber(&Reader::OpenInput), 32) << "behind the places of the destructor";
  EXPECT_EQ(tests::slotNumber(&IOroDataModelReadable::Read), 1);
  EXPECT_EQ(tests::slotNumber(&IOroDataModelReadable::ReadFrom), 2);
}

TEST_F(OroFileReadTest, IsReachedByItsInterface) {
  const IPtr<IOroDataModelReader> reader(new Reader);
  void* found = nullptr;
  reader->queryInterface("IOroDataModelReader", &found);
  EXPECT_EQ(found, reader.get());
  EXPECT_STREQ(reader->getClassName(), "OroFileRead");
}

// Opening.

TEST_F(OroFileReadTest, TheVersionOfTheRootDecidesTheWidthOfSizes) {
  for (const int width : {4, 8}) {
    ASSERT_TRUE(open(ModelBytes(width)
                         .begin(0x4B454C, width == 8)
                         .begin(0x1234, 7)
                         .put(5, 1)
                         .end()
                         .put(6, 1)
                         .end()));
    EXPECT_TRUE(reader_.IsGood());
    EXPECT_EQ(reader_.GetTag(), 0x4B454C);
    EXPECT_EQ(reader_.GetVersion(), width == 8);
    EXPECT_TRUE(reader_.BeginElement());
    EXPECT_EQ(reader_.GetTag(), 0x1234);
    EXPECT_EQ(reader_.GetVersion(), 7);
    EXPECT_EQ(byte(), 5);
    EXPECT_TRUE(reader_.AtElementEnd());
    EXPECT_TRUE(reader_.EndElement());
    EXPECT_FALSE(reader_.AtElementEnd());
    EXPECT_EQ(byte(), 6);
    EXPECT_TRUE(reader_.AtElementEnd());
    EXPECT_TRUE(reader_.IsGood());
  }
}

TEST_F(OroFileReadTest, WhatIsNoModelFileOpensAndIsBad) {
  EXPECT_TRUE(open(""));
  EXPECT_FALSE(reader_.IsGood());
  EXPECT_TRUE(open("some text that is no model file at all"));
  EXPECT_FALSE(reader_.IsGood());
  EXPECT_TRUE(open(ModelBytes(4).begin(0x4B454D, 0).end()));
  EXPECT_FALSE(reader_.IsGood());
  EXPECT_TRUE(reader_.AtElementEnd());
}

TEST_F(OroFileReadTest, ANewerFileOpensAndIsBadButItsRootIsEntered) {
  for (const uint32_t version : {2u, 3u, 255u}) {
    ASSERT_TRUE(open(ModelBytes(8).begin(0x4B454C, version).put(7, 1).end()));
    EXPECT_FALSE(reader_.IsGood());
    EXPECT_EQ(reader_.GetVersion(), static_cast<int32_t>(version));
    EXPECT_EQ(reader_.RemainingBytes(), 1);
    EXPECT_EQ(byte(), 7);
  }
}

TEST_F(OroFileReadTest, WhatCannotBeReadDoesNotOpen) {
  std::filesystem::create_directory(folder_.file("folder"));
  EXPECT_FALSE(reader_.Open(path("absent")));
  EXPECT_FALSE(reader_.Open(path("folder")));
  EXPECT_FALSE(reader_.Open(OroPath()));
}

TEST_F(OroFileReadTest, ASecondOpenIsAssertedAgainstAndTakesTheNewFile) {
  tests::AssertionList assertions;
  ASSERT_TRUE(openBody("a"));
  folder_.write("b", ModelBytes(8).begin(0x4B454C, 1).text("b").end().bytes());
  EXPECT_THAT(assertions.take(), IsEmpty());
  EXPECT_TRUE(reader_.Open(path("b")));
  EXPECT_THAT(assertions.take(), ElementsAre("!bi_ orobasictypes/orofile"));
  EXPECT_EQ(byte(), 'b');
  EXPECT_FALSE(reader_.Open(path("absent")));
  EXPECT_THAT(assertions.take(), ElementsAre("!bi_ orobasictypes/orofile"));
}

TEST_F(OroFileReadTest, ANewFileMakesABadReaderGood) {
  ASSERT_TRUE(open("nonsense"));
  EXPECT_FALSE(reader_.IsGood());
  ASSERT_TRUE(openBody("x"));
  EXPECT_TRUE(reader_.IsGood());
}

TEST_F(OroFileReadTest, ARootSizeOfZeroGoesToTheEndOfTheFile) {
  const std::string body = element(0x12, "x") + element(0x34, "y");
  ASSERT_TRUE(open(ModelBytes(8).begin(0x4B454C, 1).text(body).endAs(0)));
  int elements = 0;
  for (; !reader_.AtElementEnd(); ++elements) {
    ASSERT_TRUE(reader_.BeginElement());
    ASSERT_TRUE(reader_.EndElement());
  }
  EXPECT_EQ(elements, 2);
  EXPECT_TRUE(reader_.IsGood());
}

TEST_F(OroFileReadTest, AFileThatWasCutOffIsReadAsFarAsItGoes) {
  {
    OroFileWrite<> writer;
    ASSERT_TRUE(writer.Open(path()));
    for (int i = 0; i < 500; ++i) {
      writer.BeginElement(1, 0);
      writer.WriteInt32(i);
      writer.EndElement();
    }
  }
  ASSERT_TRUE(reader_.Open(path()));
  EXPECT_TRUE(reader_.IsGood());
  int elements = 0;
  while (!reader_.AtElementEnd()) {
    int32_t value = -1;
    if (!reader_.BeginElement()) break;
    reader_.ReadInt32(value);
    EXPECT_EQ(value, elements++);
    reader_.EndElement();
  }
  EXPECT_GE(elements, 400);
}

TEST_F(OroFileReadTest, ANestedRootOfSizeZeroFails) {
  ASSERT_TRUE(openBody(ModelBytes(8).begin(0x4B454C, 0).put(1, 4).endAs(0).bytes()));
  EXPECT_FALSE(reader_.BeginElement());
}

TEST_F(OroFileReadTest, ANestedRootDoesNotChangeTheWidth) {
  ASSERT_TRUE(openBody(element(0x4B454C, element(0x12, "x"), 0)));
  EXPECT_TRUE(reader_.BeginElement());
  EXPECT_TRUE(reader_.BeginElement());
  EXPECT_EQ(byte(), 'x');
}

TEST_F(OroFileReadTest, AGivenInputBeginsWithoutARootAndWithNarrowSizes) {
  MemoryInput input(ModelBytes(4).begin(0x12, 3).put(7, 1).end().put(8, 1).bytes());
  Reader reader(&input);
  EXPECT_TRUE(reader.IsGood());
  EXPECT_EQ(reader.PeekTag(), 0x12);
  EXPECT_TRUE(reader.BeginElement());
  int8_t value = 0;
  EXPECT_TRUE(reader.ReadInt8(value));
  EXPECT_EQ(value, 7);
  EXPECT_TRUE(reader.EndElement());
  EXPECT_TRUE(reader.ReadInt8(value));
  reader.Close();
  EXPECT_EQ(input.Tell(), 10) << "it is still the caller's";
}

TEST_F(OroFileReadTest, TheFileVersionSetsTheWidthOfAGivenInput) {
  const std::string wide = ModelBytes(8).begin(0x12, 3).put(7, 1).end().bytes();
  MemoryInput input(wide);
  Reader reader(&input);
  reader.SetFileVersion(1);
  EXPECT_EQ(input.GetWordWidth(), 64);
  reader.SetFileVersion(0);
  EXPECT_EQ(input.GetWordWidth(), 64) << "the first to say decides";
  EXPECT_TRUE(reader.BeginElement());
  EXPECT_EQ(reader.RemainingBytes(), 1);
  MemoryInput other(wide);
  Reader narrow(&other);
  narrow.SetFileVersion(0);
  EXPECT_EQ(other.GetWordWidth(), 32);
}

TEST_F(OroFileReadTest, AnotherMediumComesInThroughOpenInput) {
  class Other : public Reader {
   public:
    BinInput* OpenInput(const OroPath&) override { return input; }
    BinInput* input = nullptr;
  };
  folder_.write("a", "");
  Other reader;
  MemoryInput unasked("");
  reader.input = &unasked;
  EXPECT_FALSE(reader.Open(path("absent"))) << "the file has to be readable all the same";
  reader.input = nullptr;
  EXPECT_FALSE(reader.Open(path()));
  auto* const bad = new MemoryInput("");
  bad->good = false;
  reader.input = bad;
  EXPECT_FALSE(reader.Open(path()));
  reader.input = new MemoryInput(ModelBytes(4).begin(0x4B454C, 0).put(7, 1).end().bytes());
  EXPECT_TRUE(reader.Open(path()));
  EXPECT_TRUE(reader.IsGood());
  EXPECT_EQ(reader.RemainingBytes(), 1);
}

// Elements.

TEST_F(OroFileReadTest, AnElementMayEndAtTheEndOfTheFileAndNotBehind) {
  const uint64_t size = 12 + 3;
  for (const uint64_t told : {size, size + 1, size + 100, uint64_t{0x7FFFFFFFFFFFFFFF},
                              ~uint64_t{0}, ~uint64_t{0} - 12, ~uint64_t{0} - 100}) {
    ASSERT_TRUE(openBody(ModelBytes(8).begin(0x12, 3).text("abc").endAs(told).bytes()));
    EXPECT_EQ(reader_.BeginElement(), told == size) << told;
    EXPECT_EQ(reader_.IsGood(), told == size);
    EXPECT_EQ(reader_.GetTag(), 0x12) << "tag and version stay as they were read";
    EXPECT_EQ(reader_.GetVersion(), 3);
    EXPECT_EQ(reader_.RemainingBytes(), told == size ? 3 : 15) << "nothing has moved";
  }
}

TEST_F(OroFileReadTest, AnElementHoldsItsHeaderAtLeast) {
  for (uint64_t told = 0; told <= 13; ++told) {
    ASSERT_TRUE(openBody(ModelBytes(8).begin(0x12, 3).text("abc").endAs(told).bytes()));
    EXPECT_EQ(reader_.BeginElement(), told >= 12) << told;
  }
  for (uint64_t told = 0; told <= 9; ++told) {
    ASSERT_TRUE(
        open(ModelBytes(4).begin(0x4B454C, 0).begin(0x12, 3).text("abc").endAs(told).end()));
    EXPECT_EQ(reader_.BeginElement(), told >= 8) << told;
  }
}

TEST_F(OroFileReadTest, AnElementMayEndBehindItsParent) {
  ASSERT_TRUE(
      openBody(element(0x12, ModelBytes(8).begin(0x34, 0).text("ab").endAs(15).bytes()) + "cd"));
  ASSERT_TRUE(reader_.BeginElement());
  EXPECT_TRUE(reader_.BeginElement());
  EXPECT_EQ(reader_.RemainingBytes(), 3);
  EXPECT_TRUE(reader_.EndElement());
  EXPECT_TRUE(reader_.AtElementEnd()) << "at or behind the end is the end";
  EXPECT_EQ(reader_.RemainingBytes(), 0);
  EXPECT_TRUE(reader_.EndElement());
  EXPECT_EQ(byte(), 'c') << "the reading goes on where the parent ends";
}

TEST_F(OroFileReadTest, EndingAnElementSkipsWhatIsLeftOfIt) {
  ASSERT_TRUE(openBody(element(0x12, "abcdef") + "x"));
  ASSERT_TRUE(reader_.BeginElement());
  EXPECT_EQ(byte(), 'a');
  EXPECT_EQ(reader_.RemainingBytes(), 5);
  EXPECT_TRUE(reader_.EndElement());
  EXPECT_EQ(byte(), 'x');
}

TEST_F(OroFileReadTest, ABadReaderPopsButDoesNotMove) {
  ASSERT_TRUE(openBody(element(0x12, "abcdef") + "x"));
  ASSERT_TRUE(reader_.BeginElement());
  KelCString text;
  EXPECT_FALSE(reader_.ReadText(text)) << "makes it bad";
  EXPECT_EQ(byte(), 'a');
  EXPECT_FALSE(reader_.EndElement());
  EXPECT_EQ(byte(), 'b');
}

TEST_F(OroFileReadTest, ElementsMayBeBegunOnABadReader) {
  ASSERT_TRUE(open(ModelBytes(8).begin(0x4B454C, 2).begin(0x12, 5).put(7, 1).end().end()));
  EXPECT_FALSE(reader_.IsGood());
  EXPECT_TRUE(reader_.BeginElement());
  EXPECT_EQ(reader_.GetTag(), 0x12);
  EXPECT_TRUE(reader_.AtElementEnd());
  EXPECT_EQ(reader_.RemainingBytes(), 1);
}

TEST_F(OroFileReadTest, LoopsOverElementsEndOnABadReader) {
  ASSERT_TRUE(openBody(element(0x12, "x") + "no element"));
  int loops = 0;
  while (!reader_.AtElementEnd()) {
    ++loops;
    if (reader_.BeginElement()) reader_.EndElement();
  }
  EXPECT_EQ(loops, 2);
  EXPECT_FALSE(reader_.IsGood());
}

TEST_F(OroFileReadTest, WithNothingOpenThereIsAnEnd) {
  tests::AssertionList assertions;
  Reader closed;
  EXPECT_TRUE(closed.AtElementEnd());
  EXPECT_EQ(closed.RemainingBytes(), 0);
  EXPECT_TRUE(closed.IsGood());
  EXPECT_THAT(assertions.take(), IsEmpty());
  MemoryInput input("abc");
  Reader reader(&input);
  EXPECT_TRUE(reader.AtElementEnd());
  EXPECT_EQ(reader.RemainingBytes(), 0);
}

TEST_F(OroFileReadTest, EndingTooOftenIsAssertedAgainstWhileTheReaderIsGood) {
  tests::AssertionList assertions;
  ASSERT_TRUE(openBody(""));
  EXPECT_TRUE(reader_.EndElement());
  EXPECT_THAT(assertions.take(), IsEmpty());
  reader_.EndElement();
  EXPECT_THAT(assertions.take(), ElementsAre("end_.size() > 0 || !good_ orobasictypes/orofile"));
  reader_.EndObject();
  EXPECT_THAT(assertions.take(), testing::SizeIs(1));
  EXPECT_EQ(OroFileNesting::Get(), 0);
  EXPECT_FALSE(reader_.BeginElement());
  EXPECT_FALSE(reader_.EndElement());
  EXPECT_FALSE(reader_.EndStringObject());
  EXPECT_THAT(assertions.take(), IsEmpty());
}

TEST_F(OroFileReadTest, AFailedInputMakesTheReaderBad) {
  MemoryInput input(ModelBytes(4).begin(0x12, 0).put(1, 1).end().bytes());
  Reader reader(&input);
  ASSERT_TRUE(reader.BeginElement());
  input.good = false;
  EXPECT_FALSE(reader.IsGood());
  EXPECT_TRUE(reader.AtElementEnd());
  EXPECT_FALSE(reader.EndElement());
  input.good = true;
  EXPECT_FALSE(reader.IsGood()) << "once bad, always bad";
}

TEST_F(OroFileReadTest, OnAFailedInputNoElementBegins) {
  MemoryInput input(ModelBytes(4).begin(0x12, 3).put(1, 1).end().bytes());
  Reader reader(&input);
  input.good = false;
  EXPECT_FALSE(reader.BeginElement());
  EXPECT_EQ(reader.GetTag(), 0x12);
  EXPECT_EQ(input.Tell(), 0);
  input.good = true;
  EXPECT_FALSE(reader.IsGood());
  EXPECT_TRUE(reader.AtElementEnd());
}

TEST_F(OroFileReadTest, TheMatchingTagIsEnteredAndAnotherLeftAlone) {
  ASSERT_TRUE(openBody(element(0x12, "x", 5) + element(0x34, "y")));
  int32_t version = -1;
  EXPECT_FALSE(reader_.MatchTag(0x34, version));
  EXPECT_EQ(version, -1);
  EXPECT_TRUE(reader_.IsGood());
  EXPECT_TRUE(reader_.MatchTag(0x12, version));
  EXPECT_EQ(version, 5);
  EXPECT_EQ(byte(), 'x');
}

TEST_F(OroFileReadTest, OnAnInputWithoutPositionsNoElementBegins) {
  class Nowhere : public MemoryInput {
   public:
    using MemoryInput::MemoryInput;
    int64_t Tell() override { return -1; }
    bool Seek(int64_t, bool) override { return false; }
  };
  for (const uint64_t size : {8u, 9u, 10u}) {
    Nowhere input(ModelBytes(4).begin(0x12, 3).put(0, 4).endAs(size).bytes());
    Reader reader(&input);
    EXPECT_FALSE(reader.BeginElement()) << size;
    EXPECT_FALSE(reader.IsGood());
    EXPECT_EQ(reader.RemainingBytes(), 0);
  }
}

TEST_F(OroFileReadTest, WhereNoElementComesNoTagMatches) {
  ASSERT_TRUE(openBody(""));
  int32_t version = -1;
  EXPECT_FALSE(reader_.MatchTag(reader_.PeekTag(), version));
  EXPECT_EQ(version, -1);
  EXPECT_TRUE(reader_.IsGood());
}

TEST_F(OroFileReadTest, PeekingAtTheTagMovesNothing) {
  ASSERT_TRUE(openBody(element(0x12, element(0x34, ""), 5)));
  EXPECT_EQ(reader_.PeekTag(), 0x12);
  EXPECT_EQ(reader_.GetTag(), 0x4B454C);
  EXPECT_EQ(reader_.PeekTag(), 0x12);
  ASSERT_TRUE(reader_.BeginElement());
  EXPECT_EQ(reader_.PeekTag(), 0x34);
  ASSERT_TRUE(reader_.BeginElement());
  EXPECT_EQ(reader_.PeekTag(), -1) << "the element ends";
  ASSERT_TRUE(reader_.EndElement());
  ASSERT_TRUE(reader_.EndElement());
  EXPECT_EQ(reader_.PeekTag(), -1) << "the file ends";
  EXPECT_TRUE(reader_.IsGood());
}

// Values.

TEST_F(OroFileReadTest, TypedElementsAreRead) {
  ModelBytes body(8);
  body.begin(0x10000, 0).number(1.0).number(2.0).number(3.0).end();
  body.begin(0x10004, 9);
  for (int i = 0; i < 16; ++i) body.number(static_cast<double>(i));
  body.end();
  body.begin(0x10009, 0).number(4.0).number(5.0).end();
  body.begin(0x10010, 0).number(6.0f).number(7.0f).end();
  body.begin(0x10008, 0).text(boxIdBytes).end();
  body.begin(0x10003, 0).text("caf\xE9").end();
  body.begin(0x10005, 0).text(std::string("\0A\x20\xAC", 4)).end();
  ASSERT_TRUE(openBody(body.bytes()));
  std::array<double, 3> point = {};
  std::array<double, 16> matrix = {};
  std::array<double, 2> doubles = {};
  std::array<float, 2> floats = {};
  GUID id;
  KelCString text;
  OroString wide;
  EXPECT_TRUE(reader_.ReadPoint(point.data()) && reader_.ReadMatrix(matrix.data()) &&
              reader_.ReadDoublePair(doubles.data()) && reader_.ReadFloatPair(floats.data()) &&
              reader_.ReadId(id) && reader_.ReadText(text) && reader_.ReadOroString(wide));
  EXPECT_THAT(point, ElementsAre(1, 2, 3));
  EXPECT_EQ(matrix[0], 0);
  EXPECT_EQ(matrix[15], 15);
  EXPECT_THAT(doubles, ElementsAre(4, 5));
  EXPECT_THAT(floats, ElementsAre(6, 7));
  EXPECT_EQ(id, tests::boxId);
  EXPECT_EQ(reader_.GetId(), nullptr) << "only objects set it";
  EXPECT_EQ(text, "caf\xE9");
  EXPECT_EQ(tests::units(wide), u"A\u20AC");
  EXPECT_TRUE(reader_.AtElementEnd());
  EXPECT_TRUE(reader_.IsGood());
}

TEST_F(OroFileReadTest, BareValuesAreRead) {
  ASSERT_TRUE(openBody(ModelBytes(8)
                           .number(2.5)
                           .number(1.5f)
                           .put(0x81020304, 4)
                           .put(0xFFFFFFFE, 4)
                           .put(0xFD, 1)
                           .put(0xFD, 1)
                           .bytes()));
  double number = 0;
  float single = 0;
  uint32_t positive = 0;
  int32_t negative = 0;
  int8_t small = 0;
  uint8_t byte = 0;
  EXPECT_TRUE(reader_.ReadDouble(number) && reader_.ReadFloat(single) &&
              reader_.ReadUInt32(positive) && reader_.ReadInt32(negative) &&
              reader_.ReadInt8(small) && reader_.ReadUInt8(byte));
  EXPECT_EQ(number, 2.5);
  EXPECT_EQ(single, 1.5f);
  EXPECT_EQ(positive, 0x81020304u);
  EXPECT_EQ(negative, -2);
  EXPECT_EQ(small, -3);
  EXPECT_EQ(byte, 0xFD);
  EXPECT_FALSE(reader_.ReadUInt8(byte)) << "the file ends";
  EXPECT_EQ(byte, 0xFD);
  EXPECT_FALSE(reader_.IsGood());
}

TEST_F(OroFileReadTest, ValuesAreReadOnABadReaderToo) {
  ASSERT_TRUE(open(ModelBytes(8).begin(0x4B454C, 2).put(7, 4).end()));
  int32_t value = 0;
  EXPECT_FALSE(reader_.ReadInt32(value)) << "the result is whether the reader is good";
  EXPECT_EQ(value, 7);
}

TEST_F(OroFileReadTest, AWrongTagMakesTheReaderBadButItsValuesAreRead) {
  ASSERT_TRUE(
      openBody(element(0x77, ModelBytes(8).number(1.0).number(2.0).number(3.0).bytes()) + "x"));
  std::array<double, 3> point = {};
  EXPECT_FALSE(reader_.ReadPoint(point.data()));
  EXPECT_THAT(point, ElementsAre(1, 2, 3));
  EXPECT_FALSE(reader_.IsGood());
  EXPECT_EQ(byte(), 'x') << "the element was closed";
}

TEST_F(OroFileReadTest, TextsOfAWrongTagAreNotRead) {
  for (const bool wide : {false, true}) {
    ASSERT_TRUE(openBody(element(0x77, "ab") + "x"));
    KelCString text("old");
    OroString wideText(u"old");
    EXPECT_FALSE(wide ? reader_.ReadOroString(wideText) : reader_.ReadText(text));
    EXPECT_EQ(text, "old");
    EXPECT_EQ(tests::units(wideText), u"old");
    EXPECT_EQ(byte(), 'a') << "nothing was read, and a bad reader does not move";
  }
}

TEST_F(OroFileReadTest, ABrokenElementLeavesTheValueAndTheParent) {
  ASSERT_TRUE(
      openBody(element(0x12, ModelBytes(8).begin(0x10000, 0).number(1.0).endAs(9999).bytes())));
  ASSERT_TRUE(reader_.BeginElement());
  std::array<double, 3> point = {7, 7, 7};
  EXPECT_FALSE(reader_.ReadPoint(point.data()));
  EXPECT_THAT(point, ElementsAre(7, 7, 7));
  EXPECT_EQ(reader_.RemainingBytes(), 20) << "the parent is still the innermost";
}

TEST_F(OroFileReadTest, AValueThatTheFileDoesNotHoldWholeStaysAsItWas) {
  ASSERT_TRUE(openBody(element(0x10000, ModelBytes(8).number(1.0).number(2.0).bytes())));
  std::array<double, 3> point = {7, 7, 7};
  EXPECT_FALSE(reader_.ReadPoint(point.data()));
  EXPECT_THAT(point, ElementsAre(7, 7, 7));
  EXPECT_FALSE(reader_.IsGood());
}

TEST_F(OroFileReadTest, AShortElementRunsOverAndTheNextBeginsWhereTheSizeSays) {
  ASSERT_TRUE(openBody(element(0x10009, ModelBytes(8).number(1.0).bytes()) +
                       ModelBytes(8).number(2.0).bytes()));
  std::array<double, 2> pair = {};
  EXPECT_TRUE(reader_.ReadDoublePair(pair.data()));
  EXPECT_THAT(pair, ElementsAre(1, 2));
  double next = 0;
  EXPECT_TRUE(reader_.ReadDouble(next));
  EXPECT_EQ(next, 2);
}

TEST_F(OroFileReadTest, EmptyAndOddTextsAndZerosInThem) {
  ASSERT_TRUE(openBody(element(0x10003, "") + element(0x10003, std::string("a\0b", 3)) +
                       element(0x10005, "") + element(0x10005, std::string("\0A\0", 3)) + "x"));
  KelCString text;
  OroString wide;
  EXPECT_TRUE(reader_.ReadText(text));
  EXPECT_TRUE(text.isEmpty());
  EXPECT_FALSE(text.isNull());
  EXPECT_TRUE(reader_.ReadText(text));
  EXPECT_EQ(text, "a");
  EXPECT_TRUE(reader_.ReadOroString(wide));
  EXPECT_TRUE(wide.isEmpty());
  EXPECT_FALSE(wide.isNull());
  EXPECT_TRUE(reader_.ReadOroString(wide));
  EXPECT_EQ(tests::units(wide), u"A");
  EXPECT_EQ(byte(), 'x') << "the odd byte was skipped";
}

TEST_F(OroFileReadTest, TextsBeyond2GibibytesAreRefused) {
  class Vast : public MemoryInput {
   public:
    explicit Vast(const std::string& bytes) : MemoryInput(bytes) { SetSize(INT64_MAX); }
  };
  for (const uint64_t size : {uint64_t{0x7FFFFFFF}, uint64_t{0x100000000}, uint64_t{1} << 62}) {
    for (const uint32_t tag : {0x10003u, 0x10005u}) {
      Vast input(ModelBytes(8).begin(tag, 0).text("ab").endAs(size + 12).bytes());
      Reader reader(&input);
      reader.SetFileVersion(1);
      KelCString text("old");
      OroString wide(u"old");
      EXPECT_FALSE(tag == 0x10003 ? reader.ReadText(text) : reader.ReadOroString(wide));
      EXPECT_EQ(text, "old");
      EXPECT_EQ(tests::units(wide), u"old");
      EXPECT_FALSE(reader.IsGood());
    }
  }
}

TEST_F(OroFileReadTest, ObjectsReadThemselvesAndTheirAnswerCounts) {
  ASSERT_TRUE(openBody(ModelBytes(8).put(7, 4).bytes() +
                       element(0x10009, ModelBytes(8).number(1.0).number(2.0).bytes()) +
                       std::string(4, '\0')));
  tests::Box box;
  EXPECT_TRUE(reader_.ReadObject(box));
  EXPECT_EQ(box.size, 7);
  EXPECT_TRUE(reader_.ReadObjectFrom(box));
  EXPECT_EQ(box.corner[1], 2);
  box.answer = false;
  EXPECT_FALSE(reader_.ReadObject(box));
  EXPECT_FALSE(reader_.IsGood());
  EXPECT_FALSE(reader_.ReadObjectFrom(box));
}

// Objects.

TEST_F(OroFileReadTest, AnObjectHasItsIdInFront) {
  ASSERT_TRUE(openBody(element(0xB0002, boxIdBytes + "x", 5) + "y"));
  EXPECT_EQ(reader_.GetId(), nullptr);
  int32_t version = -1;
  EXPECT_TRUE(reader_.BeginObject(tests::boxId, version));
  EXPECT_EQ(version, 5);
  EXPECT_EQ(OroFileNesting::Get(), 3);
  ASSERT_NE(reader_.GetId(), nullptr);
  EXPECT_EQ(*reader_.GetId(), tests::boxId);
  EXPECT_EQ(byte(), 'x');
  EXPECT_TRUE(reader_.EndObject());
  EXPECT_EQ(OroFileNesting::Get(), 0);
  EXPECT_EQ(byte(), 'y');
}

TEST_F(OroFileReadTest, AnyBeginOfAnObjectElementReadsItsId) {
  ASSERT_TRUE(openBody(element(0xB0002, boxIdBytes + "x", 5)));
  EXPECT_TRUE(reader_.BeginElement());
  EXPECT_EQ(*reader_.GetId(), tests::boxId);
  EXPECT_EQ(byte(), 'x');
  EXPECT_EQ(OroFileNesting::Get(), 0);
}

TEST_F(OroFileReadTest, AnotherObjectMakesTheReaderBadAndIsOpenEvenSo) {
  for (const uint32_t tag : {0xB0002u, 0x12u}) {
    ASSERT_TRUE(openBody(element(tag, boxIdBytes + "x", 5)));
    int32_t version = -1;
    EXPECT_FALSE(reader_.BeginObject(tests::otherId, version));
    EXPECT_FALSE(reader_.IsGood());
    EXPECT_EQ(version, 5);
    EXPECT_EQ(OroFileNesting::Get(), 3);
    EXPECT_FALSE(reader_.EndObject());
    EXPECT_EQ(OroFileNesting::Get(), 0);
  }
  ASSERT_TRUE(openBody("broken"));
  int32_t version = -1;
  EXPECT_FALSE(reader_.BeginObject(tests::boxId, version));
  EXPECT_EQ(version, -1);
  EXPECT_EQ(OroFileNesting::Get(), 0);
}

TEST_F(OroFileReadTest, PeekingAtTheIdLeavesEverythingAsItWas) {
  ASSERT_TRUE(openBody(element(0xB0002, boxIdBytes, 5) + element(0x12, "x")));
  const GUID* const id = reader_.PeekId();
  ASSERT_NE(id, nullptr);
  EXPECT_EQ(*id, tests::boxId);
  EXPECT_EQ(reader_.GetId(), nullptr);
  EXPECT_EQ(reader_.GetTag(), 0x4B454C);
  EXPECT_EQ(reader_.GetVersion(), 1);
  EXPECT_EQ(reader_.RemainingBytes(), 28 + 13);
  ASSERT_TRUE(reader_.BeginElement());
  ASSERT_TRUE(reader_.EndElement());
  EXPECT_EQ(reader_.PeekId(), nullptr) << "no object";
  EXPECT_EQ(*reader_.GetId(), tests::boxId);
  ASSERT_TRUE(reader_.BeginElement());
  EXPECT_EQ(reader_.PeekId(), nullptr);
  EXPECT_TRUE(reader_.IsGood());
}

TEST_F(OroFileReadTest, AnObjectThatDoesNotBeginWellHasNoId) {
  for (const std::string& body :
       {ModelBytes(8).begin(0xB0002, 5).text(boxIdBytes).endAs(9999).bytes(),
        element(0xB0002, boxIdBytes.substr(0, 15))}) {
    ASSERT_TRUE(openBody(body));
    EXPECT_EQ(reader_.PeekId(), nullptr);
    EXPECT_TRUE(reader_.IsGood()) << "peeking does no harm";
    EXPECT_EQ(reader_.RemainingBytes(), static_cast<int64_t>(body.size()));
    int32_t version = -1;
    EXPECT_FALSE(reader_.MatchObject(tests::boxId, version));
    EXPECT_TRUE(reader_.IsGood());
  }
}

TEST_F(OroFileReadTest, AnObjectCutInItsIdMakesTheReaderBad) {
  ASSERT_TRUE(openBody(element(0xB0002, boxIdBytes.substr(0, 15))));
  EXPECT_TRUE(reader_.BeginElement());
  EXPECT_FALSE(reader_.IsGood());
  EXPECT_EQ(reader_.GetId(), nullptr);
}

TEST_F(OroFileReadTest, TheMatchingObjectIsEnteredAndAnotherLeftAlone) {
  ASSERT_TRUE(openBody(element(0xB0002, boxIdBytes + "x", 5)));
  int32_t version = -1;
  EXPECT_FALSE(reader_.MatchObject(tests::otherId, version));
  EXPECT_EQ(version, -1);
  EXPECT_TRUE(reader_.IsGood());
  EXPECT_EQ(OroFileNesting::Get(), 0);
  EXPECT_TRUE(reader_.MatchObject(tests::boxId, version));
  EXPECT_EQ(version, 5);
  EXPECT_EQ(OroFileNesting::Get(), 3);
  EXPECT_EQ(byte(), 'x');
  EXPECT_FALSE(reader_.MatchObject(tests::boxId, version));
  EXPECT_TRUE(reader_.EndObject());
}

TEST_F(OroFileReadTest, AnObjectKnownByATextHasTheTextInFront) {
  const std::string object = element(0xB0003, element(0x10003, "name") + "x");
  ASSERT_TRUE(openBody(object + object + element(0x12, "")));
  ASSERT_NE(reader_.PeekString(), nullptr);
  EXPECT_EQ(*reader_.PeekString(), "name");
  EXPECT_EQ(reader_.GetTag(), 0x4B454C);
  EXPECT_TRUE(reader_.BeginStringObject(KelCString("name")));
  EXPECT_EQ(OroFileNesting::Get(), 3);
  EXPECT_EQ(byte(), 'x');
  EXPECT_TRUE(reader_.EndStringObject());
  EXPECT_EQ(OroFileNesting::Get(), 0);
  EXPECT_TRUE(reader_.BeginElement());
  EXPECT_TRUE(reader_.EndElement());
  EXPECT_EQ(reader_.PeekString(), nullptr);
  EXPECT_TRUE(reader_.IsGood());
}

TEST_F(OroFileReadTest, AnotherTextMakesTheReaderBadAndTheObjectIsOpenEvenSo) {
  for (const std::string& body :
       {element(0xB0003, element(0x10003, "name") + "x"),
        element(0x12, element(0x10003, "other") + "x"), element(0xB0003, "x"),
        element(0xB0003, element(0x12, "other"))}) {
    ASSERT_TRUE(openBody(body));
    EXPECT_FALSE(reader_.BeginStringObject(KelCString("other")));
    EXPECT_FALSE(reader_.IsGood());
    EXPECT_EQ(OroFileNesting::Get(), 3);
    EXPECT_FALSE(reader_.EndStringObject());
    EXPECT_EQ(OroFileNesting::Get(), 0);
  }
}

TEST_F(OroFileReadTest, AnEmptyTextIsATextToo) {
  ASSERT_TRUE(openBody(element(0xB0003, element(0x10003, ""))));
  EXPECT_TRUE(reader_.BeginStringObject(KelCString()));
}

TEST_F(OroFileReadTest, ReadingWithoutAFileIsAssertedAgainst) {
  tests::AssertionList assertions;
  Reader reader;
  tests::Box box;
  double doubles[16];
  float floats[2];
  GUID id;
  OroString wide;
  KelCString text;
  uint32_t positive = 0;
  int32_t integer = 7;
  int8_t small = 0;
  uint8_t byte = 0;
  EXPECT_FALSE(reader.BeginElement());
  EXPECT_THAT(assertions.take(), ElementsAre("bi_ orobasictypes/orofile"));
  EXPECT_FALSE(reader.IsGood());
  EXPECT_FALSE(reader.ReadObject(box) || reader.ReadObjectFrom(box) || reader.ReadId(id) ||
               reader.ReadFloatPair(floats) || reader.ReadDoublePair(doubles) ||
               reader.ReadMatrix(doubles) || reader.ReadPoint(doubles) ||
               reader.ReadOroString(wide) || reader.ReadText(text) ||
               reader.ReadDouble(doubles[0]) || reader.ReadFloat(floats[0]) ||
               reader.ReadUInt32(positive) || reader.ReadInt32(integer) || reader.ReadInt8(small) ||
               reader.ReadUInt8(byte) || reader.BeginObject(id, integer) ||
               reader.MatchObject(id, integer) || reader.BeginStringObject(text) ||
               reader.MatchTag(1, integer));
  EXPECT_EQ(reader.PeekId(), nullptr);
  EXPECT_EQ(reader.PeekString(), nullptr);
  EXPECT_EQ(reader.PeekTag(), -1);
  EXPECT_THAT(assertions.take(), testing::SizeIs(22)) << "one for each";
  EXPECT_EQ(integer, 7);
  EXPECT_TRUE(reader.AtElementEnd());
  EXPECT_EQ(OroFileNesting::Get(), 0);
}

TEST_F(OroFileReadTest, ClosingLeavesNothingOpen) {
  tests::AssertionList assertions;
  ASSERT_TRUE(openBody(element(0xB0002, boxIdBytes, 5)));
  int32_t version = 0;
  ASSERT_TRUE(reader_.BeginObject(tests::boxId, version));
  reader_.Close();
  EXPECT_EQ(OroFileNesting::Get(), 0);
  EXPECT_EQ(reader_.RemainingBytes(), 0);
  EXPECT_TRUE(reader_.AtElementEnd());
  reader_.Close();
  EXPECT_THAT(assertions.take(), IsEmpty());
  EXPECT_FALSE(reader_.BeginElement());
  EXPECT_THAT(assertions.take(), ElementsAre("bi_ orobasictypes/orofile"));
}

TEST_F(OroFileReadTest, WhatTheWriterWroteIsRead) {
  for (const int32_t fileVersion : {0, 1}) {
    OroFileWrite<> writer(fileVersion);
    tests::Box box;
    box.size = 42;
    box.corner[0] = -0.0;
    std::u16string units;
    for (int i = 1; i < 70000; ++i) units += static_cast<char16_t>(i % 65535 + 1);
    ASSERT_TRUE(writer.Open(path()));
    writer.BeginObject(box, 200);
    writer.WriteObject(box);
    writer.WriteObjectTo(box);
    writer.WriteOroString(OroString(units.c_str()));
    writer.EndObject();
    writer.BeginStringObject(KelCString("name"));
    writer.EndStringObject();
    ASSERT_TRUE(writer.Close());

    reader_.Close();
    ASSERT_TRUE(reader_.Open(path()));
    tests::Box read;
    read.corner[0] = 1;
    OroString text;
    int32_t version = 0;
    EXPECT_TRUE(reader_.BeginObject(tests::boxId, version) && reader_.ReadObject(read) &&
                reader_.ReadObjectFrom(read) && reader_.ReadOroString(text) &&
                reader_.EndObject() && reader_.BeginStringObject(KelCString("name")) &&
                reader_.EndStringObject());
    EXPECT_EQ(version, 200);
    EXPECT_EQ(read.size, 42);
    EXPECT_TRUE(std::signbit(read.corner[0]));
    EXPECT_EQ(tests::units(text), units);
    EXPECT_TRUE(reader_.AtElementEnd());
    EXPECT_TRUE(reader_.IsGood());
  }
}

}  // namespace
