// Opening and saving point files through the interfaces, with the document at a broker.

#include "components/points/pointdocument.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "base/basic/kelcustomdatastore.h"
#include "components/points/pointapplication.h"
#include "components/points/pointclouddata.h"
#include "components/points/pointfiletype.h"
#include "components/points/pointfiletypes.h"
#include "components/points/pointopener.h"
#include "components/points/pointsavedata.h"
#include "components/points/pointsaver.h"
#include "components/points/worlddata.h"
#include "interfaces/IOroDocObjectItr.h"
#include "orobasictypes/oropath.h"
#include "services/errorservice.h"
#include "tests/components/textlistener.h"
#include "tests/support/countingmanager.h"
#include "tests/tempfolder.h"

namespace {

class PointDocumentTest : public testing::Test {
 protected:
  void SetUp() override {
    document_->makeDocument();
    errors_->addListener(listener_.get());
    broker_.registerService(KelCString::borrow("IOroDoc"), document_.get());
    broker_.registerService(KelCString::borrow("IOroErrorService"), errors_.get());
  }

  OroPath path(const char* name) {
    return OroPath(OroString(folder_.file(name).u16string().c_str()));
  }
  bool open(const char* name, const std::string& text) {
    folder_.write(name, text);
    return open(name);
  }
  bool open(const char* name) { return opener_->open(path(name), nullptr, 1); }

  // The steps of a save as the command-line flow takes them.
  bool save(const char* name) {
    saveData_->setPath(path(name));
    IPtr<IWriteScene> writer(types_->writerFor());
    writer->setSaveData(saveData_.get());
    const int32_t code = oroQuery<IWriteSceneV3>(writer.get())->prepare(path(name));
    saveData_->setStatus(code);
    if (code < 1000) {
      IPtr<IOroDocObjectItr> walk(document_->objectIterator(2, 0, 0, 0));
      for (; !walk->atEnd(); walk->next()) {
        if (writer->canSave(walk->current())) writer->addObject(walk->current());
      }
    }
    const bool done = saver_->save(saveData_.get(), writer.get(), 0, 0);
    writer->setSaveData(nullptr);
    return done;
  }

  tests::TempFolder folder_;
  tests::ManagedMemory memory_;
  tests::FakeBroker& broker_ = memory_.broker;
  IPtr<tests::TextListener> listener_{new tests::TextListener};
  IPtr<ErrorService> errors_{new ErrorService(false, [](int) { std::_Exit(3); })};
  IPtr<PointDocument> document_{new PointDocument};
  IPtr<PointOpener> opener_{new PointOpener};
  IPtr<PointSaver> saver_{new PointSaver};
  IPtr<PointSaveData> saveData_{new PointSaveData};
  IPtr<PointFileTypes> types_{new PointFileTypes};
};

TEST_F(PointDocumentTest, ANewDocumentHoldsOnlyItsWorld) {
  document_->makeDocument();
  ASSERT_EQ(document_->objects().size(), 1u);
  IOroDocObject* world = document_->objects()[0];
  EXPECT_TRUE(world->name() == "World");
  auto* data = oroQuery<IOroWorldData>(world->data(WorldData::classId()));
  ASSERT_NE(data, nullptr);
  EXPECT_TRUE(data->excludedFromSave());
  EXPECT_EQ(world->data(PointCloudData::classId()), nullptr);
}

TEST_F(PointDocumentTest, AnOpenedFileIsSavedAgainByteForByte) {
  const std::string text =
      "637177.98 849393.95 411.19 84 102 93\n637177.30 849396.95 411.25 0 0 0\n";
  ASSERT_TRUE(open("in.xyz", text));
  EXPECT_TRUE(document_->objects()[1]->name() == "in");
  ASSERT_TRUE(save("out.xyz"));
  EXPECT_EQ(folder_.read("out.xyz"), text);
  EXPECT_TRUE(listener_->texts.empty());
}

TEST_F(PointDocumentTest, ALargeFileCrossesTheBlocks) {
  std::string text;
  for (int i = 0; i < 40000; ++i) text += std::to_string(i) + ".25 -1.00 2.50\n";
  ASSERT_TRUE(open("in.txt", text));
  ASSERT_TRUE(save("OUT.ASC"));
  EXPECT_EQ(folder_.read("OUT.ASC"), text);
}

TEST_F(PointDocumentTest, ABadLineIsReportedWithItsNumberAndNothingIsKept) {
  EXPECT_FALSE(open("in.xyz", "1 2 3\n1 2\n"));
  EXPECT_EQ(document_->objects().size(), 1u);
  ASSERT_EQ(listener_->texts.size(), 1u);
  EXPECT_NE(listener_->texts[0].find("in.xyz, line 2: a point needs three coordinates"),
            std::string::npos)
      << listener_->texts[0];
  EXPECT_EQ(listener_->texts[0].rfind("error: ", 0), 0u);
}

TEST_F(PointDocumentTest, AMissingFileAFolderAndAnUnknownTypeAreErrors) {
  EXPECT_FALSE(open("absent.xyz"));
  std::filesystem::create_directory(folder_.file("folder.xyz"));
  EXPECT_FALSE(open("folder.xyz"));
  EXPECT_FALSE(open("in.png", "1 2 3\n"));
  EXPECT_FALSE(open("in", "1 2 3\n"));
  ASSERT_EQ(listener_->texts.size(), 4u);
  EXPECT_NE(listener_->texts[0].find("Cannot open the file"), std::string::npos);
  EXPECT_NE(listener_->texts[1].find("folder.xyz is a directory, not a file"), std::string::npos);
  EXPECT_NE(listener_->texts[2].find("type of the file"), std::string::npos);
}

// In a broker of its own, which offers no memory manager.
TEST(PointDocumentWithoutMemory, ReportsThatNoPointsCanBeHeld) {
  const tests::TempFolder folder;
  tests::FakeBroker broker;
  testaccess::resetArrayManager();
  IPtr<tests::TextListener> listener(new tests::TextListener);
  IPtr<ErrorService> errors(new ErrorService(false, [](int) { std::_Exit(3); }));
  IPtr<PointDocument> document(new PointDocument);
  errors->addListener(listener.get());
  broker.registerService(KelCString::borrow("IOroDoc"), document.get());
  broker.registerService(KelCString::borrow("IOroErrorService"), errors.get());
  folder.write("in.xyz", "1 2 3\n");
  const OroPath path{OroString(folder.file("in.xyz").u16string().c_str())};
  EXPECT_FALSE(IPtr<PointOpener>(new PointOpener)->open(path, nullptr, 1));
  ASSERT_EQ(listener->texts.size(), 1u);
  EXPECT_NE(listener->texts[0].find("There is no memory manager for the points of the file"),
            std::string::npos);
  EXPECT_TRUE(document->objects().empty());
}

TEST_F(PointDocumentTest, AnEmptyFileIsAWarning) {
  EXPECT_TRUE(open("in.xyz", "# nothing\n"));
  ASSERT_EQ(listener_->texts.size(), 1u);
  EXPECT_EQ(listener_->texts[0].rfind("warning: ", 0), 0u);
}

TEST_F(PointDocumentTest, OpeningInTheModeThatReplacesLeavesThatFileAlone) {
  ASSERT_TRUE(open("a.xyz", "1 2 3\n"));
  ASSERT_TRUE(open("b.xyz", "4 5 6\n"));
  EXPECT_EQ(document_->objects().size(), 3u);
  opener_->setMode(0);
  ASSERT_TRUE(open("c.xyz", "7 8 9\n"));
  ASSERT_EQ(document_->objects().size(), 2u);
  EXPECT_TRUE(document_->objects()[0]->name() == "World");
  EXPECT_TRUE(document_->objects()[1]->name() == "c");
  EXPECT_FALSE(open("absent.xyz"));
  EXPECT_EQ(document_->objects().size(), 1u);
}

TEST_F(PointDocumentTest, TheActiveObjectIsTheOneAddedLast) {
  ASSERT_TRUE(open("a.xyz", "1 2 3\n"));
  ASSERT_TRUE(open("b.xyz", "4 5 6\n"));
  IPtr<IOroDocObjectItr> walk(document_->objectIterator(1, 0, 0, 0));
  ASSERT_FALSE(walk->atEnd());
  EXPECT_TRUE(walk->current()->name() == "b");
  walk->next();
  EXPECT_TRUE(walk->atEnd());
}

TEST_F(PointDocumentTest, WithNothingToSaveAnOlderFileStays) {
  folder_.write("out.xyz", "old");
  EXPECT_FALSE(save("out.xyz"));
  EXPECT_EQ(folder_.read("out.xyz"), "old");
  EXPECT_EQ(listener_->texts.size(), 1u);
}

TEST_F(PointDocumentTest, AnUnknownTypeIsNotSaved) {
  ASSERT_TRUE(open("in.xyz", "1 2 3\n"));
  EXPECT_FALSE(save("out.png"));
  EXPECT_FALSE(std::filesystem::exists(folder_.file("out.png")));
  saveData_->setStatus(static_cast<int32_t>(PointFileType::text));
  EXPECT_FALSE(saver_->save(saveData_.get(), nullptr, 0, 0));
  EXPECT_FALSE(saver_->save(nullptr, nullptr, 0, 0));
}

TEST_F(PointDocumentTest, ASaveIntoAnAbsentFolderIsAnErrorAndLeavesNothing) {
  ASSERT_TRUE(open("in.xyz", "1 2 3\n"));
  EXPECT_FALSE(save("absent/out.xyz"));
  std::filesystem::create_directory(folder_.file("out.xyz"));
  EXPECT_FALSE(save("out.xyz"));
  EXPECT_EQ(listener_->texts.size(), 2u);
  int entries = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
    ++entries;
  }
  EXPECT_EQ(entries, 2);  // in.xyz and the folder: no temporary file is left
}

TEST_F(PointDocumentTest, ASaveReplacesAnOlderFileAndLeavesNoTemporaryOne) {
  folder_.write("out.xyz", "old");
  ASSERT_TRUE(open("in.xyz", "1 2 3\n"));
  ASSERT_TRUE(save("out.xyz"));
  EXPECT_EQ(folder_.read("out.xyz"), "1 2 3\n");
  int entries = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
    ++entries;
  }
  EXPECT_EQ(entries, 2);
}

TEST_F(PointDocumentTest, ColoursAreSavedOnlyWhereAllPointsHaveThem) {
  ASSERT_TRUE(open("a.xyz", "1 2 3 4 5 6\n"));
  ASSERT_TRUE(open("b.xyz", "7.5 8 9\n"));
  ASSERT_TRUE(save("out.xyz"));
  EXPECT_EQ(folder_.read("out.xyz"), "1 2 3\n7.5 8.0 9.0\n");
  ASSERT_EQ(listener_->texts.size(), 2u);
  EXPECT_EQ(listener_->texts[0].rfind("warning: Of 2 points 1 have no colour, so the file ", 0),
            0u);
  EXPECT_EQ(listener_->texts[1].rfind("warning: ", 0), 0u);
  EXPECT_NE(listener_->texts[1].find("2 of them were joined into one"), std::string::npos);
}

TEST_F(PointDocumentTest, TheSettingForDecimalsOverridesTheFiles) {
  IDataStore* store = new KelCustomDataStore;
  broker_.registerService(KelCString::borrow("IDataStore"), store);
  IPtr<PointApplication> application(new PointApplication);
  application->prepare();
  ASSERT_TRUE(open("in.xyz", "1.5 2.5 3.5\n"));
  ASSERT_TRUE(save("as-read.xyz"));
  EXPECT_EQ(folder_.read("as-read.xyz"), "1.5 2.5 3.5\n");
  ASSERT_TRUE(store->SetInt(nullptr, "Points/Decimals", 3));
  ASSERT_TRUE(save("three.xyz"));
  EXPECT_EQ(folder_.read("three.xyz"), "1.500 2.500 3.500\n");
}

TEST_F(PointDocumentTest, NamesBeyondAsciiNameTheirFiles) {
  const std::u16string name = u"\u00E9\u4E2D\U0001F600.xyz";
  folder_.write(std::filesystem::path(name), "1 2 3\n");
  const OroPath file{OroString(folder_.file(std::filesystem::path(name)).u16string().c_str())};
  EXPECT_TRUE(opener_->open(file, nullptr, 1));
  EXPECT_EQ(document_->objects().size(), 2u);
}

TEST_F(PointDocumentTest, AWalkKeepsItsObjectsWhileTheDocumentChanges) {
  ASSERT_TRUE(open("in.xyz", "1 2 3\n"));
  IPtr<IOroDocObjectItr> walk(document_->objectIterator(2, 0, 0, 0));
  document_->remove(document_->objects()[1]);
  walk->next();
  ASSERT_FALSE(walk->atEnd());
  EXPECT_TRUE(walk->current()->name() == "in");
  walk->next();
  walk->next();
  EXPECT_TRUE(walk->atEnd());
  EXPECT_EQ(walk->current(), nullptr);
}

}  // namespace
