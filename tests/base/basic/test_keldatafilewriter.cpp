#include "base/basic/keldatafilewriter.h"

#include <filesystem>

#include "tests/base/basic/binaryfiletest.h"
#include "tests/support/slotnumber.h"
#include "tests/support/testdisk.h"
#include "tests/testpaths.h"

namespace {

using tests::lowHigh;
using tests::record;

class BinaryFileWriter : public tests::BinaryFileTest {};

std::string intArea(int value) { return {static_cast<char>(value), 0, 0, 0}; }

TEST_F(BinaryFileWriter, WritesTheBytesOfTheFormat) {
  makeExample();
  ASSERT_TRUE(writeAll());
  const std::string blob = lowHigh(3) + std::string("\x01\x00\xFF", 3) + std::string(4093, '\0');
  const std::string expected =
      record("View/Zoom", intArea(75)) +
      record("View/Name", lowHigh(6) + std::string("top\0\0\0", 6)) +
      record("View/Title", lowHigh(6) + std::string("a\0\xAC\x20\0\0", 6)) +
      record("View/State", blob) + record("Scale", std::string("\0\0\0\0\0\0\xE0\x3F", 8));
  EXPECT_EQ(bytes(), expected);
  std::filesystem::copy_file(tests::sourceDir() / "tests/formats/golden/settingsbinary/example.dat",
                             folder.file("golden.dat"));
  EXPECT_EQ(bytes(), folder.read("golden.dat"));
}

TEST_F(BinaryFileWriter, WritesInPlace) {
  makeExample();
  writeAll();
  const std::string before = bytes();
  store->SetInt(nullptr, "View/Zoom", 3);
  store->SetString(nullptr, "View/Name", "left");
  ASSERT_TRUE(writeAll());
  std::string expected = before;
  expected.replace(0x0D, 4, intArea(3));
  expected.replace(0x20, 4, "left");
  EXPECT_EQ(bytes(), expected);
}

TEST_F(BinaryFileWriter, ShorterTextClearsTheRestOfItsRoom) {
  makeText("text", 6, "longer");
  writeAll();
  store->SetString(nullptr, "text", "a");
  writeAll();
  EXPECT_EQ(bytes(), record("text", lowHigh(6) + std::string("a\0\0\0\0\0", 6)));
}

TEST_F(BinaryFileWriter, NewFileTakesEveryPersistentItem) {
  makeInt("unchanged", 1);
  makeInt("fleeting", 2, 0);
  ASSERT_TRUE(writeAll());
  EXPECT_EQ(bytes(), record("unchanged", intArea(1)));
}

TEST_F(BinaryFileWriter, ExistingFileTakesWhatChanged) {
  makeInt("unchanged", 1);
  makeInt("changed", 2);
  makeInt("always", 3, IKelDataItem::kPersistent | IKelDataItem::kInitialiseAll);
  store->SetInt(nullptr, "changed", 4);
  putFile("");
  ASSERT_TRUE(writeAll()) << "an empty file is no new file";
  EXPECT_EQ(bytes(), record("changed", intArea(4)) + record("always", intArea(3)));
}

TEST_F(BinaryFileWriter, NothingIsFoundInANewFile) {
  const IPtr<KelDataFileWriter> writer(new KelDataFileWriter(path()));
  makeInt("twice", 1);
  IKelDataItem* item = nullptr;
  struct Catch : KelDataVisitor {
    explicit Catch(IKelDataItem*& found) : KelDataVisitor(kReading), item(found) {}
    bool VisitItem(IKelDataItem* visited) override { return (item = visited) != nullptr; }
    IKelDataItem*& item;
  } found(item);
  store->AcceptPath(&found, "twice");
  ASSERT_TRUE(writer->Begin());
  EXPECT_TRUE(item->Accept(writer.get()));
  EXPECT_TRUE(item->Accept(writer.get()));
  EXPECT_TRUE(writer->End());
  EXPECT_EQ(bytes(), record("twice", intArea(1)) + record("twice", intArea(1)));
}

TEST_F(BinaryFileWriter, LeavesTheLayerOfTheFileAlone) {
  makeInt("number", 1);
  putFile("");
  store->SetInt(nullptr, "number", 2);
  EXPECT_TRUE(write("number"));
  putFile("");
  EXPECT_TRUE(write("number"));
  EXPECT_EQ(bytes(), record("number", intArea(2))) << "still counts as changed";
}

TEST_F(BinaryFileWriter, RecordsStandInTheOrderOfTheirFirstWriting) {
  putFile("");
  makeInt("a", 0);
  makeInt("b", 0);
  for (const char* name : {"b", "a", "b"}) {
    store->SetInt(nullptr, name, number(name) + 1);
    EXPECT_TRUE(write(name));
  }
  EXPECT_EQ(bytes(), record("b", intArea(2)) + record("a", intArea(1)));
}

TEST_F(BinaryFileWriter, TooSmallARecordGetsAnotherAtEachWriting) {
  makeText("text", 4, "");
  store->SetString(nullptr, "text", "abcd");
  const std::string small = record("text", lowHigh(2) + "ol");
  const std::string fitting = record("text", lowHigh(4) + "abcd");
  putFile(small);
  EXPECT_TRUE(write("text"));
  EXPECT_TRUE(write("text"));
  EXPECT_EQ(bytes(), small + fitting + fitting);
  EXPECT_FALSE(read("text")) << "the first of the name counts";
}

TEST_F(BinaryFileWriter, LargerRecordThanNeededIsUsed) {
  makeInt("number", 0);
  store->SetInt(nullptr, "number", 7);
  putFile(record("number", "12345678"));
  EXPECT_TRUE(write("number"));
  EXPECT_EQ(bytes(), record("number", intArea(7) + "5678"));
}

TEST_F(BinaryFileWriter, TextOfOneCharacterMoreRunsOverTheNextRecord) {
  makeText("text", 3, "");
  makeInt("next", 9);
  writeAll();
  store->SetString(nullptr, "text", "abcd");
  ASSERT_TRUE(write("text"));
  EXPECT_EQ(bytes(),
            record("text", lowHigh(3) + "abc") + "d" + record("next", intArea(9)).substr(1));
  EXPECT_TRUE(read("text"));
  EXPECT_EQ(text("text"), "abc");
}

TEST_F(BinaryFileWriter, TextOfOneCharacterMoreAtTheEndShiftsWhatFollows) {
  makeText("text", 3, "abcd");
  makeInt("next", 9);
  ASSERT_TRUE(writeAll());
  EXPECT_EQ(bytes(), record("text", lowHigh(3) + "abc") + "d" + record("next", intArea(9)));
  EXPECT_FALSE(read("next"));
}

TEST_F(BinaryFileWriter, LargeBlobIsWrittenInFull) {
  const std::string data(5000, 'x');
  store->CreateBlob("blob", 5000, data.data(), 1);
  makeInt("next", 9);
  ASSERT_TRUE(writeAll());
  const std::string header = lowHigh(8 + 4098) + lowHigh(4) + "blob" + lowHigh(5000);
  EXPECT_EQ(bytes(), header + data + record("next", intArea(9)));
  store->SetBlob(nullptr, "blob", "?", 1);
  EXPECT_TRUE(read("blob"));
  EXPECT_EQ(blob("blob"), data);
  EXPECT_FALSE(read("next"));
}

TEST_F(BinaryFileWriter, EmptyBlobIsWritten) {
  store->CreateBlob("blob", 0, nullptr, 1);
  ASSERT_TRUE(writeAll());
  EXPECT_EQ(bytes(), record("blob", std::string(4098, '\0')));
  store->SetBlob(nullptr, "blob", "?", 1);
  EXPECT_FALSE(read("blob")) << "to read nothing is a failure";
  EXPECT_EQ(blob("blob"), "?");
}

TEST_F(BinaryFileWriter, LongNameHidesAllBehindIt) {
  const std::string longest(255, 'n');
  const std::string tooLong(256, 'm');
  makeInt("before", 1);
  makeInt(longest.c_str(), 2);
  makeInt(tooLong.c_str(), 3);
  makeInt("behind", 4);
  ASSERT_TRUE(writeAll());
  EXPECT_EQ(bytes(), record("before", intArea(1)) + record(longest, intArea(2)) +
                         record(tooLong, intArea(3)) + record("behind", intArea(4)));
  EXPECT_TRUE(read("before"));
  EXPECT_TRUE(read(longest.c_str()));
  EXPECT_FALSE(read(tooLong.c_str()));
  EXPECT_FALSE(read("behind"));
}

TEST_F(BinaryFileWriter, RecordsBeyondTheSizeFieldKeepItsLowBits) {
  makeText("text", 70000, "a");
  ASSERT_TRUE(writeAll());
  const std::string header = lowHigh((70000 + 10) & 0xFFFF) + lowHigh(4) + "text";
  EXPECT_EQ(bytes(), header + lowHigh(70000 & 0xFFFF) + "a" + std::string(69999, '\0'));
}

TEST_F(BinaryFileWriter, CutRecordStaysAndTheNextStandsBehindIt) {
  makeInt("number", 0);
  store->SetInt(nullptr, "number", 5);
  const std::string cut = record("number", intArea(1)).substr(0, 8);
  putFile(cut);
  EXPECT_TRUE(write("number"));
  EXPECT_EQ(bytes(), cut + record("number", intArea(5)));
}

TEST_F(BinaryFileWriter, EventsNeverReachTheFile) {
  store->CreateVoid("event", 1);
  ASSERT_TRUE(writeAll());
  EXPECT_EQ(bytes(), "");
}

TEST_F(BinaryFileWriter, FileThatCannotBeMadeFailsTheWalk) {
  makeInt("number", 1);
  const IPtr<IKelDataVisitor> writer(
      new KelDataFileWriter(wideOf(folder.file("missing") / "user.dat")));
  EXPECT_FALSE(writer->Begin());
  EXPECT_FALSE(writer->End());
  EXPECT_FALSE(store->Accept(writer.get()));
  const IPtr<IKelDataVisitor> onFolder(new KelDataFileWriter(wideOf(folder.path())));
  EXPECT_FALSE(store->Accept(onFolder.get()));
}

TEST_F(BinaryFileWriter, SecondBeginStartsAnew) {
  const IPtr<IKelDataVisitor> writer(new KelDataFileWriter(path()));
  makeInt("number", 1);
  EXPECT_TRUE(writer->Begin());
  EXPECT_TRUE(writer->Begin());
  EXPECT_TRUE(writer->End());
  EXPECT_FALSE(writer->End()) << "it is closed";
  EXPECT_FALSE(store->AcceptPath(nullptr, "number"));
}

TEST_F(BinaryFileWriter, FullDiskEndsTheWalkAndKeepsWhatStoodBefore) {
  makeExample();
  size_t writes = 0;
  {
    tests::TestDisk disk;
    ASSERT_TRUE(writeAll());
    writes = disk.writes.size();
  }
  const std::string whole = bytes();
  ASSERT_GE(writes, 10u);
  for (size_t refused = 0; refused < writes; ++refused) {
    for (const size_t taken : {0, 1, 3}) {
      std::filesystem::remove(folder.file("user.dat"));
      {
        tests::TestDisk disk;
        disk.refuseFrom(refused, taken);
        EXPECT_FALSE(writeAll()) << refused;
        EXPECT_EQ(disk.writes.size(), refused + 1) << "the walk ends";
      }
      const std::string part = bytes();
      EXPECT_EQ(part, whole.substr(0, part.size()));
      EXPECT_TRUE(writeAll()) << "the disk has room again";
    }
  }
}

TEST_F(BinaryFileWriter, FullDiskLeavesOtherRecordsAlone) {
  makeExample();
  ASSERT_TRUE(writeAll());
  const std::string before = bytes();
  for (size_t refused = 0; refused < 6; ++refused) {
    putFile(before);
    clearExample();
    {
      tests::TestDisk disk;
      disk.refuseFrom(refused);
      EXPECT_FALSE(writeAll());
    }
    EXPECT_EQ(bytes().size(), before.size());
    EXPECT_EQ(bytes().substr(0x104C), before.substr(0x104C)) << "not yet reached";
  }
}

TEST(BinaryFileClasses, AnswerForTheirNames) {
  KelDataFileWriter writer((OroString()));
  EXPECT_STREQ(writer.getClassName(), "KelDataFileWriter");
  EXPECT_EQ(writer.GetMode(), IKelDataVisitor::kWriting);
  EXPECT_NE(oroQueryClass<KelDataFile>(&writer), nullptr);
  EXPECT_NE(oroQueryClass<KelDataVisitor>(&writer), nullptr);
  EXPECT_NE(oroQuery<IKelDataVisitor>(&writer), nullptr);
  KelDataFileReader reader((OroString()), false);
  EXPECT_STREQ(reader.getClassName(), "KelDataFileReader");
  EXPECT_EQ(reader.GetMode(), IKelDataVisitor::kReading);
  EXPECT_EQ(oroQueryClass<KelDataFileWriter>(&reader), nullptr);
  EXPECT_EQ(tests::slotNumber(&KelDataFile::Participates),
            tests::slotNumber(&KelDataVisitor::VisitItem) + 1);
}

}  // namespace
