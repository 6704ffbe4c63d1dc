#include "orobasictypes/orofilewrite.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "interfaces/IOroDataModelWriter.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/orofilenesting.h"
#include "orobasictypes/orostring.h"
#include "tests/orobasictypes/filetexts.h"
#include "tests/orobasictypes/memorymedia.h"
#include "tests/orobasictypes/modelbytes.h"
#include "tests/orobasictypes/modelobjects.h"
#include "tests/support/assertionlist.h"
#include "tests/support/slotnumber.h"
#include "tests/support/testdisk.h"
#include "tests/tempfolder.h"
#include "tests/testpaths.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::MemoryOutput;
using tests::ModelBytes;
using Writer = OroFileWrite<>;

class OroFileWriteTest : public testing::Test {
 protected:
  OroPath path(const char* name = "a") const { return tests::textOf(folder_.file(name)); }
  std::string content(const char* name = "a") const { return folder_.read(name); }
  // What one operation leaves on an output without a root, with sizes of 32 bits.
  template <class Operation>
  std::string bytesOf(const Operation& operation) {
    MemoryOutput output;
    Writer writer(&output, 1);
    EXPECT_TRUE(operation(writer));
    output.FlushBuffer();
    return output.bytes;
  }

  tests::TempFolder folder_;
};

std::string element(uint32_t tag, const std::string& body) {
  return ModelBytes(4).begin(tag, 0).text(body).end().bytes();
}

TEST(IOroDataModelWriterSlots, OperationsStandInOrder) {
  using I = IOroDataModelWriter;
  EXPECT_EQ(tests::slotNumber(&I::WriteObject), 1);
  EXPECT_EQ(tests::slotNumber(&I::WriteObjectTo), 2);
  EXPECT_EQ(tests::slotNumber(&I::WriteId), 3);
  EXPECT_EQ(tests::slotNumber(&I::WriteFloatPair), 4);
  EXPECT_EQ(tests::slotNumber(&I::WriteDoublePair), 5);
  EXPECT_EQ(tests::slotNumber(&I::WriteMatrix), 6);
  EXPECT_EQ(tests::slotNumber(&I::WritePoint), 7);
  EXPECT_EQ(tests::slotNumber(&I::WriteOroString), 8);
  EXPECT_EQ(tests::slotNumber(&I::WriteText), 9);
  EXPECT_EQ(tests::slotNumber(&I::WriteDouble), 10);
  EXPECT_EQ(tests::slotNumber(&I::WriteFloat), 11);
  EXPECT_EQ(tests::slotNumber(&I::WriteUInt32), 12);
  EXPECT_EQ(tests::slotNumber(&I::WriteInt32), 13);
  EXPECT_EQ(tests::slotNumber(&I::WriteInt8), 14);
  EXPECT_EQ(tests::slotNumber(&I::WriteUInt8), 15);
  EXPECT_EQ(tests::slotNumber(&I::BeginObject), 16);
  EXPECT_EQ(tests::slotNumber(&I::EndObject), 17);
  EXPECT_EQ(tests::slotNumber(&I::BeginStringObject), 18);
  EXPECT_EQ(tests::slotNumber(&I::EndStringObject), 19);
  EXPECT_EQ(tests::slotNumber(&I::BeginIdElement), 20);
  EXPECT_EQ(tests::slotNumber(&I::BeginElement), 21);
  EXPECT_EQ(tests::slotNumber(&I::EndElement), 22);
  EXPECT_EQ(tests::slotNumber(&I::IsGood), 23);
  EXPECT_EQ(tests::slotNumber(&Writer::OpenOutput), 26) << "behind the places of the destructor";
  EXPECT_EQ(tests::slotNumber(&IOroDataModelWritable::Write), 1);
  EXPECT_EQ(tests::slotNumber(&IOroDataModelWritable::WriteTo), 2);
  EXPECT_EQ(tests::slotNumber(&IOroDataModelWritable::GetId), 3);
}

TEST_F(OroFileWriteTest, IsReachedByItsInterface) {
  const IPtr<IOroDataModelWriter> writer(new Writer);
  void* found = nullptr;
  writer->queryInterface("IOroDataModelWriter", &found);
  EXPECT_EQ(found, writer.get());
  EXPECT_STREQ(writer->getClassName(), "OroFileWrite");
}

TEST_F(OroFileWriteTest, TheFileVersionDecidesTheWidthOfSizes) {
  for (const int32_t version : {0, 10, 11, 12, -1, 1000}) {
    Writer writer(version);
    ASSERT_TRUE(writer.Open(path()));
    ASSERT_TRUE(writer.Close());
    EXPECT_EQ(content(), ModelBytes(8).begin(0x4B454C, 1).end().bytes()) << version;
  }
  for (const int32_t version : {1, 5, 9}) {
    Writer writer(version);
    ASSERT_TRUE(writer.Open(path()));
    ASSERT_TRUE(writer.Close());
    EXPECT_EQ(content(), ModelBytes(4).begin(0x4B454C, 0).end().bytes()) << version;
  }
}

TEST_F(OroFileWriteTest, ElementsHaveTagVersionAndSize) {
  Writer writer;
  ASSERT_TRUE(writer.Open(path()));
  EXPECT_TRUE(writer.BeginElement(0x123456, 0x78));
  EXPECT_TRUE(writer.WriteInt32(7));
  EXPECT_TRUE(writer.BeginElement(0xFEDCBA, 0xFF));
  EXPECT_TRUE(writer.EndElement());
  EXPECT_TRUE(writer.EndElement());
  EXPECT_TRUE(writer.WriteUInt8(9));
  ASSERT_TRUE(writer.Close());
  EXPECT_EQ(content(), ModelBytes(8)
                           .begin(0x4B454C, 1)
                           .begin(0x123456, 0x78)
                           .put(7, 4)
                           .begin(0xFEDCBA, 0xFF)
                           .end()
                           .end()
                           .put(9, 1)
                           .end()
                           .bytes());
}

TEST_F(OroFileWriteTest, TypedElementsHaveTheirTags) {
  const double doubles[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
  const float floats[2] = {1.5f, -2.5f};
  const auto numbers = [&](int count) {
    ModelBytes bytes(4);
    for (int i = 0; i < count; ++i) bytes.number(doubles[i]);
    return bytes.bytes();
  };
  EXPECT_EQ(bytesOf([&](Writer& w) { return w.WritePoint(doubles); }),
            element(0x10000, numbers(3)));
  EXPECT_EQ(bytesOf([&](Writer& w) { return w.WriteMatrix(doubles); }),
            element(0x10004, numbers(16)));
  EXPECT_EQ(bytesOf([&](Writer& w) { return w.WriteDoublePair(doubles); }),
            element(0x10009, numbers(2)));
  EXPECT_EQ(bytesOf([&](Writer& w) { return w.WriteFloatPair(floats); }),
            element(0x10010, std::string("\x3F\xC0\0\0\xC0\x20\0\0", 8)));
  EXPECT_EQ(bytesOf([](Writer& w) { return w.WriteId(tests::boxId); }),
            element(0x10008, "\x1D\xBF\xCA\xD9\x03\x38\x49\x23\xA3\x29\xEA\xEA\x81\x06\x3F\xF0"));
}

TEST_F(OroFileWriteTest, TextsHaveNeitherLengthNorTerminator) {
  EXPECT_EQ(bytesOf([](Writer& w) { return w.WriteText(KelCString("caf\xE9")); }),
            element(0x10003, "caf\xE9"));
  EXPECT_EQ(bytesOf([](Writer& w) { return w.WriteText(KelCString()); }), element(0x10003, ""));
  EXPECT_EQ(bytesOf([](Writer& w) { return w.WriteOroString(OroString(u"A\u20AC")); }),
            element(0x10005, std::string("\0A\x20\xAC", 4)));
  EXPECT_EQ(bytesOf([](Writer& w) { return w.WriteOroString(OroString()); }), element(0x10005, ""));
}

TEST_F(OroFileWriteTest, BareValuesHaveNoElement) {
  EXPECT_EQ(
      bytesOf([](Writer& w) {
        return w.WriteDouble(2.5) && w.WriteFloat(1.5f) && w.WriteUInt32(0x81020304) &&
               w.WriteInt32(-2) && w.WriteInt8(-3) && w.WriteUInt8(0xFD);
      }),
      std::string("\x40\x04\0\0\0\0\0\0\x3F\xC0\0\0\x81\x02\x03\x04\xFF\xFF\xFF\xFE\xFD\xFD", 22));
}

TEST_F(OroFileWriteTest, AnObjectBeginsWithItsId) {
  tests::Box box;
  const std::string id = "\x1D\xBF\xCA\xD9\x03\x38\x49\x23\xA3\x29\xEA\xEA\x81\x06\x3F\xF0";
  const std::string expected = ModelBytes(4).begin(0xB0002, 5).text(id).put(7, 1).end().bytes();
  EXPECT_EQ(
      bytesOf([&](Writer& w) { return w.BeginObject(box, 5) && w.WriteInt8(7) && w.EndObject(); }),
      expected);
  EXPECT_EQ(bytesOf([&](Writer& w) {
              return w.BeginIdElement(tests::boxId, 5) && w.WriteInt8(7) && w.EndElement();
            }),
            expected);
}

TEST_F(OroFileWriteTest, AnObjectKnownByATextBeginsWithTheText) {
  EXPECT_EQ(bytesOf([](Writer& w) {
              return w.BeginStringObject(KelCString("name")) && w.WriteInt8(7) &&
                     w.EndStringObject();
            }),
            element(0xB0003, element(0x10003, "name") + "\7"));
}

TEST_F(OroFileWriteTest, ObjectsWriteThemselvesAndTheirAnswerCounts) {
  tests::Box box;
  box.size = 7;
  box.corner[0] = 1;
  EXPECT_EQ(
      bytesOf([&](Writer& w) { return w.WriteObject(box) && w.WriteObjectTo(box); }),
      std::string("\0\0\0\7", 4) + element(0x10009, ModelBytes(4).number(1.0).number(0.0).bytes()));
  box.answer = false;
  MemoryOutput output;
  Writer writer(&output);
  EXPECT_FALSE(writer.WriteObject(box));
  EXPECT_FALSE(writer.IsGood());
  EXPECT_FALSE(writer.WriteInt8(1)) << "once bad, always bad";
  Writer other(&output);
  EXPECT_FALSE(other.WriteObjectTo(box));
}

TEST_F(OroFileWriteTest, ABadWriterWritesObjectsWhole) {
  tests::Box box;
  box.answer = false;
  const std::string bytes = [&] {
    MemoryOutput output;
    Writer writer(&output, 1);
    EXPECT_FALSE(writer.WriteObject(box));
    EXPECT_FALSE(writer.BeginObject(box, 5));
    EXPECT_FALSE(writer.WriteInt8(7));
    EXPECT_FALSE(writer.EndObject());
    EXPECT_FALSE(writer.BeginStringObject(KelCString("name")));
    EXPECT_FALSE(writer.EndStringObject());
    EXPECT_FALSE(writer.Close());
    return output.bytes;
  }();
  const std::string id = "\x1D\xBF\xCA\xD9\x03\x38\x49\x23\xA3\x29\xEA\xEA\x81\x06\x3F\xF0";
  EXPECT_EQ(bytes, std::string(4, '\0') +
                       ModelBytes(4).begin(0xB0002, 5).text(id).put(7, 1).end().bytes() +
                       element(0xB0003, element(0x10003, "name")));
}

TEST_F(OroFileWriteTest, TheGoldenFilesAreMadeByteForByte) {
  for (const int32_t version : {0, 1}) {
    Writer writer(version);
    tests::Box box;
    const double point[3] = {1, 2, 3};
    ASSERT_TRUE(writer.Open(path()));
    writer.WritePoint(point);
    writer.BeginObject(box, 5);
    writer.WriteInt32(7);
    writer.WriteOroString(OroString(u"A\u00E9"));
    writer.EndObject();
    ASSERT_TRUE(writer.Close());
    const tests::TempFolder none;
    const auto golden = tests::sourceDir() / "tests/formats/golden/modelfile";
    EXPECT_EQ(content(), none.read(golden / (version == 0 ? "example.model" : "narrow.model")));
  }
}

// The medium sees a size of zero first, and two flushed seeks at the end of each element.
TEST_F(OroFileWriteTest, SizesArePatchedBySeekingBack) {
  MemoryOutput output;
  Writer writer(&output, 1);
  writer.BeginElement(0x1234, 0);
  writer.WriteInt32(7);
  EXPECT_THAT(output.written, IsEmpty());
  writer.EndElement();
  EXPECT_THAT(output.written, ElementsAre(12, 4));
  EXPECT_THAT(output.seeks, ElementsAre(4, 12));
  EXPECT_EQ(output.CurrentPosition(), 12);
}

TEST_F(OroFileWriteTest, SmallElementsCostNoCallOfTheSystem) {
  tests::TestDisk disk;
  Writer writer;
  ASSERT_TRUE(writer.Open(path()));
  for (int i = 0; i < 2000; ++i) {
    writer.BeginElement(0x1234, 0);
    writer.EndElement();
  }
  EXPECT_THAT(disk.writes, IsEmpty());
  ASSERT_TRUE(writer.Close());
  EXPECT_THAT(disk.writes, ElementsAre(24012));
}

TEST_F(OroFileWriteTest, ElementsAcrossBlocksOfTheFileGetTheirSizes) {
  Writer writer;
  ModelBytes expected(8);
  ASSERT_TRUE(writer.Open(path()));
  expected.begin(0x4B454C, 1);
  for (uint32_t i = 0; i < 300; ++i) {
    writer.BeginElement(static_cast<int32_t>(i), 1);
    expected.begin(i, 1);
    for (uint32_t k = 0; k < 10; ++k) {
      const std::string text(i * k % 400, 'x');
      writer.WriteText(KelCString(text.c_str()));
      expected.begin(0x10003, 0).text(text).end();
    }
    if (i % 3 == 0) writer.EndElement();
    if (i % 3 == 0) expected.end();
  }
  for (int i = 0; i < 200; ++i) expected.end();
  ASSERT_TRUE(writer.Close());
  EXPECT_EQ(content(), expected.end().bytes());
}

// Moves the medium on as if so much had been written.
class Jump : public IOroDataModelWritable {
 public:
  explicit Jump(int64_t to) : to_(to) {}
  bool Write(BinOutput& output) override { return output.SeekFlushed(to_, true); }
  bool WriteTo(IOroDataModelWriter&) override { return false; }
  GUID GetId() override { return {}; }

 private:
  int64_t to_;
};

TEST_F(OroFileWriteTest, ASizeAbove32BitsIsAllOnesAndMakesTheWriterBad) {
  for (const int64_t size : {int64_t{0xFFFFFFFE}, int64_t{0xFFFFFFFF}, int64_t{0x100000000}}) {
    BinOutputFile output(path());
    Writer writer(&output, 1);
    Jump jump(size);
    ASSERT_TRUE(writer.BeginElement(0x1234, 0));
    ASSERT_TRUE(writer.WriteObject(jump));
    const bool fits = size <= 0xFFFFFFFF;
    EXPECT_EQ(writer.EndElement(), fits);
    EXPECT_EQ(writer.IsGood(), fits);
    EXPECT_EQ(output.CurrentPosition(), size) << "behind the element";
    EXPECT_EQ(writer.Close(), fits);
    const std::string field = size == 0xFFFFFFFE ? "\xFF\xFF\xFF\xFE" : "\xFF\xFF\xFF\xFF";
    EXPECT_EQ(content().substr(4, 4), field);
  }
}

TEST_F(OroFileWriteTest, AWideSizeHoldsMoreThan32Bits) {
  BinOutputFile output(path());
  Writer writer(&output);
  Jump jump(0x123456789A);
  writer.BeginElement(0x1234, 0);
  writer.WriteObject(jump);
  EXPECT_TRUE(writer.EndElement());
  EXPECT_TRUE(writer.Close());
  EXPECT_EQ(content().substr(4, 8), std::string("\0\0\0\x12\x34\x56\x78\x9A", 8));
}

TEST_F(OroFileWriteTest, EndingWithNothingOpenDoesNothing) {
  tests::AssertionList assertions;
  Writer closed;
  EXPECT_TRUE(closed.EndElement());
  EXPECT_TRUE(closed.EndObject());
  MemoryOutput output;
  Writer writer(&output);
  EXPECT_TRUE(writer.EndElement());
  EXPECT_TRUE(writer.EndStringObject());
  EXPECT_EQ(output.CurrentPosition(), 0);
  EXPECT_THAT(output.seeks, IsEmpty());
  EXPECT_THAT(assertions.take(), IsEmpty());
  EXPECT_EQ(OroFileNesting::Get(), 0);
}

TEST_F(OroFileWriteTest, WritingWithoutAFileIsAssertedAgainst) {
  tests::AssertionList assertions;
  tests::Box box;
  const double doubles[16] = {};
  const float floats[2] = {};
  Writer writer;
  EXPECT_TRUE(writer.IsGood());
  EXPECT_FALSE(writer.BeginElement(1, 0));
  EXPECT_THAT(assertions.take(), ElementsAre("bo_ orobasictypes/orofile"));
  EXPECT_FALSE(writer.IsGood());
  EXPECT_FALSE(writer.WriteObject(box) || writer.WriteObjectTo(box) || writer.WriteId(GUID()) ||
               writer.WriteFloatPair(floats) || writer.WriteDoublePair(doubles) ||
               writer.WriteMatrix(doubles) || writer.WritePoint(doubles) ||
               writer.WriteOroString(OroString()) || writer.WriteText(KelCString()) ||
               writer.WriteDouble(1) || writer.WriteFloat(1) || writer.WriteUInt32(1) ||
               writer.WriteInt32(1) || writer.WriteInt8(1) || writer.WriteUInt8(1) ||
               writer.BeginObject(box, 1) || writer.BeginStringObject(KelCString("x")) ||
               writer.BeginIdElement(GUID(), 1));
  EXPECT_THAT(assertions.take(), testing::SizeIs(18)) << "one for each";
  EXPECT_FALSE(writer.Close());
  EXPECT_EQ(OroFileNesting::Get(), 0);
}

TEST_F(OroFileWriteTest, ASecondOpenIsAssertedAgainstAndTakesTheNewFile) {
  tests::AssertionList assertions;
  Writer writer;
  ASSERT_TRUE(writer.Open(path("a")));
  writer.BeginElement(1, 0);
  EXPECT_THAT(assertions.take(), IsEmpty());
  ASSERT_TRUE(writer.Open(path("b")));
  EXPECT_THAT(assertions.take(), ElementsAre("!bo_ orobasictypes/orofile"));
  ASSERT_TRUE(writer.Close());
  EXPECT_EQ(content("b"), ModelBytes(8).begin(0x4B454C, 1).end().bytes());
}

TEST_F(OroFileWriteTest, AFileThatDoesNotOpenGivesFalse) {
  Writer writer;
  EXPECT_FALSE(writer.Open(path("absent/below")));
  EXPECT_FALSE(writer.Close());
  EXPECT_TRUE(writer.Open(path())) << "it may be tried again";
  EXPECT_TRUE(writer.Close());
}

TEST_F(OroFileWriteTest, ANewFileMakesABadWriterGood) {
  tests::AssertionList assertions;
  Writer writer;
  writer.WriteInt8(1);
  EXPECT_FALSE(writer.IsGood());
  ASSERT_TRUE(writer.Open(path()));
  EXPECT_TRUE(writer.IsGood());
}

TEST_F(OroFileWriteTest, ClosingEndsWhatIsOpen) {
  Writer writer(1);
  ASSERT_TRUE(writer.Open(path()));
  writer.BeginElement(0x12, 3);
  writer.BeginElement(0x34, 5);
  writer.WriteUInt8(7);
  EXPECT_TRUE(writer.Close());
  EXPECT_EQ(content(), ModelBytes(4)
                           .begin(0x4B454C, 0)
                           .begin(0x12, 3)
                           .begin(0x34, 5)
                           .put(7, 1)
                           .end()
                           .end()
                           .end()
                           .bytes());
  EXPECT_FALSE(writer.Close());
}

TEST_F(OroFileWriteTest, DestroyingWithoutCloseLeavesTheFileCutOff) {
  {
    Writer writer;
    ASSERT_TRUE(writer.Open(path()));
    const std::string text(3000, 'x');
    writer.WriteText(KelCString(text.c_str()));
    writer.BeginElement(1, 1);
  }
  const std::string bytes = content();
  EXPECT_EQ(bytes.substr(0, 12), std::string("KEL\1\0\0\0\0\0\0\0\0", 12)) << "a root size of 0";
  EXPECT_GE(bytes.size(), 3024u);
}

TEST_F(OroFileWriteTest, AGivenOutputIsClosedButStaysTheCallers) {
  auto output = std::make_unique<MemoryOutput>();
  {
    Writer writer(output.get(), 1);
    EXPECT_EQ(output->CurrentPosition(), 0) << "no root is begun";
    writer.WriteInt8(7);
    EXPECT_TRUE(writer.Close());
    EXPECT_EQ(output->closes, 1);
  }
  EXPECT_EQ(output->bytes, "\7");
}

TEST_F(OroFileWriteTest, TheFileVersionOfTheOutputDoesNotChangeTheWidthAfterwards) {
  MemoryOutput output;
  Writer writer(&output, 1);
  output.SetFileVersion(0);
  output.SetWordWidth64();
  writer.BeginElement(1, 0);
  writer.EndElement();
  output.FlushBuffer();
  EXPECT_EQ(output.bytes.size(), 8u);
}

TEST_F(OroFileWriteTest, TheOutputLearnsVersionAndWidthAtTheOpen) {
  class Watching : public Writer {
   public:
    using Writer::Writer;
    BinOutput* OpenOutput(const OroPath& path) override {
      opened = new BinOutputFile(path);
      return opened;
    }
    BinOutput* opened = nullptr;
  };
  Watching writer(3, true);
  EXPECT_TRUE(writer.GetFlag());
  ASSERT_TRUE(writer.Open(path()));
  EXPECT_EQ(writer.opened->GetFileVersion(), 3);
  EXPECT_EQ(writer.opened->GetWordWidth(), 32);
  Watching wide;
  EXPECT_FALSE(wide.GetFlag());
  ASSERT_TRUE(wide.Open(path()));
  EXPECT_EQ(wide.opened->GetWordWidth(), 64);
}

TEST_F(OroFileWriteTest, AnotherMediumComesInThroughOpenOutput) {
  class Refusing : public Writer {
   public:
    BinOutput* OpenOutput(const OroPath&) override { return nullptr; }
  };
  EXPECT_FALSE(Refusing().Open(path()));
}

TEST_F(OroFileWriteTest, ObjectsMoveTheNestingByThree) {
  tests::Box box;
  MemoryOutput output;
  Writer writer(&output);
  EXPECT_EQ(OroFileNesting::Get(), 0);
  writer.BeginObject(box, 1);
  EXPECT_EQ(OroFileNesting::Get(), 3);
  writer.BeginStringObject(KelCString("x"));
  EXPECT_EQ(OroFileNesting::Get(), 6);
  writer.BeginElement(1, 0);
  writer.BeginIdElement(tests::boxId, 1);
  EXPECT_EQ(OroFileNesting::Get(), 6) << "elements do not count";
  writer.EndElement();
  writer.EndElement();
  writer.EndStringObject();
  writer.EndObject();
  EXPECT_EQ(OroFileNesting::Get(), 0);
  {
    Writer left(&output);
    left.BeginObject(box, 1);
    EXPECT_EQ(OroFileNesting::Get(), 3);
  }
  EXPECT_EQ(OroFileNesting::Get(), 0);
}

TEST_F(OroFileWriteTest, AMediumThatRefusesAtAnyWriteMakesTheWriterBad) {
  const auto write = [](MemoryOutput& output) {
    Writer writer(&output);
    tests::Box box;
    const std::string text(2000, 'x');
    for (int i = 0; i < 10; ++i) {
      writer.BeginObject(box, 1);
      writer.WriteText(KelCString(text.c_str()));
      writer.WriteObjectTo(box);
      writer.EndObject();
    }
    EXPECT_EQ(writer.IsGood(), output.IsGood()) << "it stays readable";
    return writer.Close();
  };
  MemoryOutput whole;
  ASSERT_TRUE(write(whole));
  for (size_t n = 0; n <= whole.written.size(); ++n) {
    MemoryOutput output;
    output.refusesFrom = n;
    const bool complete = n == whole.written.size();
    EXPECT_EQ(write(output), complete) << n;
    EXPECT_EQ(output.bytes == whole.bytes, complete) << n;
    EXPECT_EQ(OroFileNesting::Get(), 0);
  }
}

// At whatever write the disk fills up, the writer says so, and what it says is true.
TEST_F(OroFileWriteTest, ADiskThatFillsUpAtAnyWriteMakesTheWriterBad) {
  const auto write = [&](Writer& writer) {
    for (int i = 0; i < 60; ++i) {
      writer.BeginElement(i, 1);
      const std::string text(static_cast<size_t>(i * 100), 'x');
      writer.WriteText(KelCString(text.c_str()));
      if (i % 5 == 0) writer.EndElement();
    }
  };
  Writer whole;
  ASSERT_TRUE(whole.Open(path("whole")));
  write(whole);
  ASSERT_TRUE(whole.Close());
  bool complete = false;
  for (size_t n = 0; !complete; ++n) {
    ASSERT_LT(n, 1000u);
    tests::TestDisk disk;
    disk.refuseFrom(n, 3 * (n % 2));
    Writer writer;
    ASSERT_TRUE(writer.Open(path()));
    write(writer);
    const bool closed = writer.Close();
    complete = disk.writes.size() <= n;
    EXPECT_EQ(closed, complete) << n;
    EXPECT_EQ(content() == content("whole"), complete) << n;
    EXPECT_EQ(writer.IsGood(), complete) << n;
  }
}

}  // namespace
