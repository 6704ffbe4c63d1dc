#include "base/basic/keldatafilereader.h"

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <filesystem>

#include "interfaces/IKelDataFilter.h"
#include "interfaces/IOroDirService.h"
#include "orobasictypes/oropath.h"
#include "tests/base/basic/binaryfiletest.h"
#include "tests/base/basic/recordingreceiver.h"
#include "tests/support/fakebroker.h"

namespace {

using testing::ElementsAre;
using tests::lowHigh;
using tests::record;

class BinaryFileReader : public tests::BinaryFileTest {};

class NameFilter : public IKelDataFilter {
 public:
  static constexpr const char* className() { return "NameFilter"; }
  using Offers = OroOffers<NameFilter, IKelDataFilter>;
  explicit NameFilter(const char* name) : name_(name) {}
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  bool Accept(IKelDataItem* item) override { return name_ == item->GetName(); }

 private:
  std::string name_;
};

class OptionsFolder : public IOroDirService {
 public:
  static constexpr const char* className() { return "OptionsFolder"; }
  using Offers = OroOffers<OptionsFolder, IOroDirService>;
  explicit OptionsFolder(const OroString& path) : path_(path) {}
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  const OroPath& getDir(const char* name) override {
    asked.emplace_back(name);
    return path_;
  }
  void setDir(const char*, const OroPath&) override {}

  std::vector<std::string> asked;

 private:
  OroPath path_;
};

TEST_F(BinaryFileReader, ReadsEveryKindBack) {
  makeExample();
  ASSERT_TRUE(writeAll());
  clearExample();
  EXPECT_EQ(exampleValues(), "-----");
  EXPECT_TRUE(readAll());
  EXPECT_EQ(exampleValues(), "zntsS");
}

TEST_F(BinaryFileReader, FloatsKeepTheirBits) {
  store->CreateFloat("nan", 0, -1e308, 1e308, 1);
  store->CreateFloat("zero", 1, -1, 1, 1);
  putFile(record("zero", std::string("\0\0\0\0\0\0\0\x80", 8)));
  ASSERT_TRUE(read("zero"));
  EXPECT_TRUE(std::signbit(store->GetFloat("zero", nullptr)));
}

TEST_F(BinaryFileReader, IntegersAreLittleEndianAndClamped) {
  makeInt("number", 0);
  store->CreateInt("small", 0, -5, 5, 1);
  putFile(record("number", "\x04\x03\x02\x81") + record("small", "\x04\x03\x02\x01"));
  EXPECT_TRUE(readAll());
  EXPECT_EQ(static_cast<uint32_t>(number("number")), 0x81020304u);
  EXPECT_EQ(number("small"), 5);
}

TEST_F(BinaryFileReader, MissingFileFailsTheWalkAndKeepsTheValues) {
  makeInt("number", 4);
  EXPECT_FALSE(readAll());
  EXPECT_FALSE(read("number"));
  EXPECT_EQ(number("number"), 4);
  EXPECT_FALSE(std::filesystem::exists(folder.file("user.dat"))) << "reading makes no file";
}

TEST_F(BinaryFileReader, WalkGoesOnBehindAMissingRecord) {
  makeInt("a", 0);
  makeInt("b", 0);
  makeInt("c", 0);
  putFile(record("c", std::string("\x03\0\0\0", 4)) + record("a", std::string("\x01\0\0\0", 4)));
  EXPECT_FALSE(readAll());
  EXPECT_EQ(number("a"), 1);
  EXPECT_EQ(number("b"), 0);
  EXPECT_EQ(number("c"), 3);
}

TEST_F(BinaryFileReader, OtherItemsAreNotReadAndDoNotFail) {
  makeInt("fleeting", 1, 0);
  makeInt("refused", 2);
  makeInt("chosen", 3);
  putFile(record("chosen", std::string("\x09\0\0\0", 4)) +
          record("refused", std::string("\x09\0\0\0", 4)) +
          record("fleeting", std::string("\x09\0\0\0", 4)));
  const IPtr<IKelDataFilter> filter(new NameFilter("chosen"));
  EXPECT_TRUE(readAll(filter.get()));
  EXPECT_EQ(number("fleeting"), 1);
  EXPECT_EQ(number("refused"), 2);
  EXPECT_EQ(number("chosen"), 9);
  std::filesystem::remove(folder.file("user.dat"));
  EXPECT_TRUE(writeAll(filter.get()));
  EXPECT_EQ(bytes(), record("chosen", std::string("\x09\0\0\0", 4)));
}

TEST_F(BinaryFileReader, ReadsSilentlyUnlessToldToNotify) {
  makeInt("number", 1);
  putFile(record("number", std::string("\x02\0\0\0", 4)));
  tests::RecordingReceiver receiver;
  store->AddReceiver("number", &receiver);
  EXPECT_TRUE(read("number"));
  EXPECT_EQ(number("number"), 2);
  EXPECT_THAT(receiver.calls, ElementsAre());
  store->SetInt(&receiver, "number", 1);
  EXPECT_TRUE(read("number", true));
  EXPECT_TRUE(read("number", true));
  EXPECT_THAT(receiver.calls, ElementsAre("int number 2")) << "only what changed";
  store->RemoveReceiver("number", &receiver);
}

TEST_F(BinaryFileReader, NotifiesEveryKind) {
  makeExample();
  writeAll();
  clearExample();
  tests::RecordingReceiver receiver;
  for (const char* path : kExamplePaths) store->AddReceiver(path, &receiver);
  for (const char* path : kExamplePaths) EXPECT_TRUE(read(path, true));
  EXPECT_EQ(receiver.calls.size(), 5u);
  EXPECT_EQ(exampleValues(), "zntsS");
  for (const char* path : kExamplePaths) store->RemoveReceiver(path, &receiver);
}

TEST_F(BinaryFileReader, WhatWasReadCountsAsChangedForTheWriter) {
  makeInt("number", 1);
  const std::string file = record("number", std::string("\x02\0\0\0", 4));
  putFile(file);
  ASSERT_TRUE(read("number"));
  putFile("");
  ASSERT_TRUE(writeAll());
  EXPECT_EQ(bytes(), file);
}

TEST_F(BinaryFileReader, KindsAreNotTold) {
  makeInt("setting", 0);
  putFile(record("setting", std::string("\x01\0\0\0\xFF\xFF\xFF\xFF", 8)));
  EXPECT_TRUE(read("setting"));
  EXPECT_EQ(number("setting"), 1);
}

TEST_F(BinaryFileReader, AreaMustBeLargeEnough) {
  store->CreateFloat("float", 1, 0, 9, 1);
  makeText("text", 4, "old");
  store->CreateOroString("wide", 4, OroString(u"old"), 1);
  store->CreateBlob("blob", 3, "old", 1);
  makeInt("number", 1);
  const auto areaOf = [&](const char* name, const std::string& area) {
    putFile(record(name, area));
    return read(name);
  };
  EXPECT_FALSE(areaOf("number", std::string(3, '\1')));
  EXPECT_TRUE(areaOf("number", std::string(4, '\1')));
  EXPECT_FALSE(areaOf("float", std::string(7, '\0')));
  EXPECT_TRUE(areaOf("float", std::string(8, '\0')));
  EXPECT_FALSE(areaOf("text", lowHigh(2) + "ab"));
  EXPECT_TRUE(areaOf("text", lowHigh(3) + "abc")) << "one byte less than is written is enough";
  EXPECT_EQ(text("text"), "abc");
  EXPECT_FALSE(areaOf("wide", lowHigh(6) + std::string("a\0b\0c\0", 6) + "x"));
  EXPECT_TRUE(areaOf("wide", lowHigh(8) + std::string("a\0b\0c\0d\0", 8)));
  EXPECT_TRUE(store->GetOroString("wide", nullptr) == "abcd");
  EXPECT_FALSE(areaOf("blob", lowHigh(1) + std::string(4095, 'x')));
  EXPECT_TRUE(areaOf("blob", lowHigh(1) + std::string(4096, 'x')));
  EXPECT_EQ(blob("blob"), "x");
}

TEST_F(BinaryFileReader, FieldOfATextIsItsRoom) {
  makeText("text", 4, "old");
  store->CreateOroString("wide", 4, OroString(u"old"), 1);
  const auto areaOf = [&](const char* name, int field, std::string rest) {
    rest.resize(16);
    putFile(record(name, lowHigh(field) + rest));
    return read(name);
  };
  EXPECT_TRUE(areaOf("text", 4, "ab"));
  EXPECT_EQ(text("text"), "ab") << "ends at its first zero";
  EXPECT_TRUE(areaOf("text", 2, "xyz"));
  EXPECT_EQ(text("text"), "xy");
  EXPECT_FALSE(areaOf("text", 5, "ab"));
  EXPECT_FALSE(areaOf("text", -1, "ab"));
  EXPECT_FALSE(areaOf("text", 0, "ab")) << "to read nothing is a failure";
  EXPECT_EQ(text("text"), "xy");
  EXPECT_TRUE(areaOf("wide", 7, std::string("a\0b\0c\0d\0", 8)));
  EXPECT_TRUE(store->GetOroString("wide", nullptr) == "abc") << "half of it, rounded down";
  EXPECT_TRUE(areaOf("wide", 0, "ab"));
  EXPECT_TRUE(store->GetOroString("wide", nullptr).isEmpty());
  EXPECT_FALSE(areaOf("wide", 9, "ab"));
  EXPECT_FALSE(areaOf("wide", -2, "ab"));
}

TEST_F(BinaryFileReader, LengthsThatNoRecordHasEndTheSearch) {
  makeInt("number", 1);
  const std::string good = record("number", std::string("\x02\0\0\0", 4));
  const std::string damaged[] = {
      lowHigh(0) + lowHigh(1) + "x",
      lowHigh(-1) + lowHigh(1) + "x",
      lowHigh(INT16_MIN) + lowHigh(1) + "x",
      lowHigh(9) + lowHigh(-1) + "x1234",
      lowHigh(9) + lowHigh(INT16_MIN) + "x1234",
      lowHigh(256 + 8) + lowHigh(256) + std::string(260, 'x'),
      lowHigh(0) + lowHigh(6) + "number" + std::string("\x03\0\0\0", 4),
  };
  for (const std::string& front : damaged) {
    putFile(front + good);
    EXPECT_FALSE(read("number"));
    EXPECT_EQ(number("number"), 1);
  }
}

TEST_F(BinaryFileReader, RecordShorterThanItsNameIsPassedOverByItsSize) {
  makeInt("number", 1);
  const std::string good = record("number", std::string("\x02\0\0\0", 4));
  putFile(lowHigh(5) + lowHigh(3) + "x" + good);
  EXPECT_TRUE(read("number"));
  EXPECT_EQ(number("number"), 2);
  std::string crawl;
  for (int i = 0; i < 5000; ++i) crawl += lowHigh(2);
  putFile(crawl);
  EXPECT_FALSE(read("number")) << "and the search comes to an end";
  putFile(lowHigh(7) + lowHigh(6) + "number");
  EXPECT_FALSE(read("number"));
}

TEST_F(BinaryFileReader, NamesCompareWhole) {
  makeInt("Number", 1);
  makeInt("Num", 2);
  const std::string area("\x09\0\0\0", 4);
  putFile(record("number", area) + record("Num", area) + record("Numbers", area));
  EXPECT_FALSE(readAll());
  EXPECT_EQ(number("Number"), 1);
  EXPECT_EQ(number("Num"), 9);
}

TEST_F(BinaryFileReader, BlobCountIsTakenAsItStands) {
  store->CreateBlob("blob", 3, "old", 1);
  const auto countOf = [&](int count, size_t bytes) {
    putFile(lowHigh(8 + 4098) + lowHigh(4) + "blob" + lowHigh(count) + std::string(bytes, 'x'));
    return read("blob");
  };
  EXPECT_FALSE(countOf(-1, 4096));
  EXPECT_FALSE(countOf(INT16_MIN, 4096));
  EXPECT_FALSE(countOf(0, 4096));
  EXPECT_FALSE(countOf(INT16_MAX, 4096)) << "the file ends before";
  EXPECT_EQ(blob("blob"), "old");
  EXPECT_TRUE(countOf(INT16_MAX, INT16_MAX));
  EXPECT_EQ(blob("blob").size(), 32767u) << "beyond its area";
}

TEST_F(BinaryFileReader, FileCutAnywhereGivesTheWholeRecordsInFrontOfTheCut) {
  makeExample();
  writeAll();
  const std::string whole = bytes();
  // Behind these bytes the settings are whole: of the blob's zeros none is read.
  constexpr size_t ends[] = {0x11, 0x26, 0x3C, 0x4F, 0x105D};
  for (size_t cut = 0; cut <= whole.size(); ++cut) {
    if (cut > 0x60 && cut < whole.size() - 20) continue;  // in the blob's zeros
    clearExample();
    putFile(whole.substr(0, cut));
    EXPECT_EQ(readAll(), cut == whole.size()) << cut;
    std::string expected = "zntsS";
    for (size_t i = 0; i < 5; ++i) {
      if (cut < ends[i]) expected[i] = '-';
    }
    EXPECT_EQ(exampleValues(), expected) << cut;
  }
}

TEST_F(BinaryFileReader, FlippedBitsAreReadAndWrittenOverWithoutHarm) {
  makeExample();
  writeAll();
  const std::string whole = bytes();
  for (size_t place = 0; place < whole.size(); ++place) {
    if (place > 0x60 && place < whole.size() - 20) continue;
    for (int bit = 0; bit < 8; ++bit) {
      std::string damaged = whole;
      damaged[place] = static_cast<char>(damaged[place] ^ (1 << bit));
      putFile(damaged);
      clearExample();
      readAll();
      EXPECT_LE(text("View/Name").size(), 6u);
      EXPECT_LE(store->GetOroString("View/Title", nullptr).length(), 3);
      EXPECT_LE(blob("View/State").size(), 4112u);
      clearExample();
      EXPECT_TRUE(writeAll()) << "what cannot be found is appended";
      EXPECT_LE(bytes().size(), 2 * whole.size() + 1);
    }
  }
}

TEST_F(BinaryFileReader, NoPathMeansTheFileOfTheOptions) {
  tests::FakeBroker broker;
  const IPtr<OptionsFolder> options(new OptionsFolder(wideOf(folder.path())));
  broker.registerService(KelCString::borrow("IOroDirService"), options.get());
  makeInt("number", 7);
  const IPtr<IKelDataVisitor> writer(new KelDataFileWriter((OroString())));
  ASSERT_TRUE(store->Accept(writer.get()));
  EXPECT_THAT(options->asked, ElementsAre("options"));
  EXPECT_EQ(bytes(), record("number", std::string("\x07\0\0\0", 4)));
  const IPtr<IKelDataVisitor> reader(new KelDataFileReader((OroString()), false));
  store->SetInt(nullptr, "number", 1);
  EXPECT_TRUE(store->Accept(reader.get()));
  EXPECT_EQ(number("number"), 7);
  EXPECT_TRUE(store->Accept(reader.get()));
  EXPECT_THAT(options->asked, ElementsAre("options", "options")) << "it keeps what it found";
}

TEST_F(BinaryFileReader, WithoutAPathAndDirectoriesNothingOpens) {
  makeInt("number", 7);
  const IPtr<IKelDataVisitor> writer(new KelDataFileWriter((OroString())));
  EXPECT_FALSE(store->Accept(writer.get()));
  const IPtr<IKelDataVisitor> reader(new KelDataFileReader((OroString()), false));
  EXPECT_FALSE(store->Accept(reader.get()));
}

TEST_F(BinaryFileReader, VisitsOutsideAWalkFail) {
  makeExample();
  const IPtr<IKelDataVisitor> closed(new KelDataFileReader(path(), false));
  const IPtr<IKelDataVisitor> closedWriter(new KelDataFileWriter(path()));
  store->SetInt(nullptr, "View/Zoom", 1);
  struct Handing : KelDataVisitor {
    explicit Handing(IKelDataVisitor& other) : KelDataVisitor(kReading), to(other) {}
    bool VisitItem(IKelDataItem* item) override { return item->Accept(&to); }
    IKelDataVisitor& to;
  };
  Handing reading(*closed);
  Handing writing(*closedWriter);
  EXPECT_FALSE(store->AcceptPath(&reading, "View/Zoom"));
  EXPECT_FALSE(store->AcceptPath(&writing, "View/Zoom"));
}

}  // namespace
