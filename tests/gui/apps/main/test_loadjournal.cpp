#include "gui/apps/main/loadjournal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "interfaces/IOroErrorService.h"
#include "orobasictypes/iptr.h"
#include "tests/framework/managerfixture.h"

namespace {

using testids::kRecorder;
using testids::kUnknown;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class LoadJournalTest : public tests::ManagerFixture {
 protected:
  // The steps of all loads so far.
  std::vector<int32_t> steps() {
    std::vector<int32_t> all;
    OroString path;
    int32_t step = -1;
    int64_t time = -1;
    for (int32_t i = 1; i <= loads_->count(); ++i) {
      EXPECT_TRUE(loads_->load(i, path, step, time));
      EXPECT_GE(time, 0);
      all.push_back(step);
    }
    return all;
  }
  void load(const char* library) {
    known(kUnknown, library);
    EXPECT_EQ(component(kUnknown), nullptr) << library;
  }

  IPtr<LoadJournal> loads_{new LoadJournal};
  LoadJournal::Listening listening_{*loads_};
};

TEST_F(LoadJournalTest, HoldsALibraryOnceWithItsPathAndTime) {
  known(kRecorder, "fw_recorder");
  component(kRecorder);
  component(kRecorder);
  EXPECT_THAT(steps(), ElementsAre(kOroLoadDone));
  OroString path;
  int32_t step = -1;
  int64_t time = 0;
  ASSERT_TRUE(loads_->load(1, path, step, time));
  EXPECT_TRUE(path == tests::testLibrary("fw_recorder"));
  EXPECT_GT(time, 0);
  EXPECT_FALSE(loads_->load(0, path, step, time));
  EXPECT_FALSE(loads_->load(2, path, step, time));
  EXPECT_FALSE(loads_->load(-1, path, step, time));
  EXPECT_THAT(errors_.texts, IsEmpty());
}

TEST_F(LoadJournalTest, SaysAtWhichStepALibraryWasLeftAlone) {
  load("fw_noentry");
  ASSERT_EQ(errors_.texts.size(), 1u);
  EXPECT_THAT(errors_.texts[0], HasSubstr("fw_noentry has no entry point"));
  load("fw_version99");
  ASSERT_EQ(errors_.texts.size(), 2u);
  EXPECT_THAT(errors_.texts[1], HasSubstr("fw_version99 has version 99 of its entry point"));
  load("fw_status0");
  ASSERT_EQ(errors_.texts.size(), 3u);
  EXPECT_THAT(errors_.texts[2], HasSubstr("gave no component (status 0)"));
  load("fw_status2");
  EXPECT_THAT(errors_.texts.back(), HasSubstr("gave no component (status 2)"));
  load("fw_nullcomponent");
  EXPECT_THAT(errors_.texts.back(), HasSubstr("gave no component (status 1)"));
  EXPECT_THAT(steps(), ElementsAre(kOroLoadEntryPoint, kOroLoadVersion, kOroLoadComponent,
                                   kOroLoadComponent, kOroLoadComponent));
}

TEST_F(LoadJournalTest, SaysItOnceHoweverOftenTheLibraryIsAskedFor) {
  load("fw_version99");
  load("fw_version99");
  EXPECT_EQ(errors_.texts.size(), 1u);
  EXPECT_EQ(loads_->count(), 1);
}

TEST_F(LoadJournalTest, AFileThatDoesNotLoadIsToldByTheLoaderAlone) {
  load("fw_missing");
  ASSERT_EQ(errors_.texts.size(), 1u);
  EXPECT_THAT(errors_.texts[0], HasSubstr("Could not load this DLL"));
  EXPECT_THAT(steps(), ElementsAre(kOroLoadFile));
}

TEST_F(LoadJournalTest, AFileThatDoesNotLoadIsToldByTheLoaderAtEachRequest) {
  load("fw_missing");
  load("fw_missing");
  EXPECT_EQ(errors_.texts.size(), 2u);
  EXPECT_THAT(steps(), ElementsAre(kOroLoadFile)) << "in the journal once";
}

TEST_F(LoadJournalTest, TheKeyOfTheLibraryKeepsAllStepsQuiet) {
  for (const char* library : {"fw_missing", "fw_noentry", "fw_version99", "fw_nullcomponent"}) {
    setRegistry(std::string("COMPONENT/") + library + "/OpenFailsSilently", "1");
    load(library);
  }
  EXPECT_THAT(errors_.texts, IsEmpty());
  EXPECT_EQ(loads_->count(), 4);
}

TEST_F(LoadJournalTest, AKeyOfZeroDoesNotKeepItQuiet) {
  setRegistry("COMPONENT/fw_version99/OpenFailsSilently", "0");
  load("fw_version99");
  EXPECT_EQ(errors_.texts.size(), 1u);
}

TEST(LoadJournalGone, NothingListensAnyMore) {
  {
    const IPtr<LoadJournal> journal(new LoadJournal);
    const LoadJournal::Listening listening(*journal);
    tellComponentLoad({OroString(u"\\lib")});
    EXPECT_EQ(journal->count(), 1);
  }
  tellComponentLoad({OroString(u"\\lib")});
  const IPtr<LoadJournal> later(new LoadJournal);
  EXPECT_EQ(later->count(), 0);
}

}  // namespace
