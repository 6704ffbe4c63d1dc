// The places of the interactive services' operations: components are compiled against them.

#include <gtest/gtest.h>

#include "interfaces/IGuiBusyState.h"
#include "interfaces/IGuiCursor.h"
#include "interfaces/IGuiStatusBar.h"
#include "interfaces/IGuiThemeMgr.h"
#include "interfaces/IInfoBar.h"
#include "interfaces/IInfoBar2.h"
#include "interfaces/IOroProgress.h"
#include "tests/support/slotnumber.h"

namespace {

using tests::slotNumber;

TEST(InteractiveSlots, Progress) {
  EXPECT_EQ(slotNumber(&IOroProgress::Update), 1);
  EXPECT_EQ(slotNumber(&IOroProgress::IsCancelled), 2);
  EXPECT_EQ(slotNumber(&IOroProgress::unusedSlot6), 6);
  EXPECT_EQ(slotNumber(&IOroProgress::startAction), 7);
  EXPECT_EQ(slotNumber(&IOroProgress::stopAction), 8);
  EXPECT_EQ(slotNumber(&IOroProgress::setAction), 9);
  EXPECT_EQ(slotNumber(&IOroProgress::currentAction), 10);
  EXPECT_EQ(slotNumber(&IOroProgress::resolve), 13);
}

TEST(InteractiveSlots, BusyState) {
  EXPECT_EQ(slotNumber(&IGuiBusyState::startBusy), 1);
  EXPECT_EQ(slotNumber(&IGuiBusyState::startBusy2), 2);
  EXPECT_EQ(slotNumber(&IGuiBusyState::stopBusy), 3);
  EXPECT_EQ(slotNumber(&IGuiBusyState::setBusyText), 6);
  EXPECT_EQ(slotNumber(&IGuiBusyState::currentAction), 7);
  EXPECT_EQ(slotNumber(&IGuiBusyState::startBusy3), 8);
  EXPECT_EQ(slotNumber(&IGuiBusyState::startBusy4), 9);
  EXPECT_EQ(slotNumber(&IGuiBusyState::stopBusy2), 10);
  EXPECT_EQ(slotNumber(&IGuiBusyState::setPercent), 13);
}

TEST(InteractiveSlots, StatusBarCursorAndTheme) {
  EXPECT_EQ(slotNumber(&IGuiStatusBar::getRange), 11);
  EXPECT_EQ(slotNumber(&IGuiStatusBar::setProgress), 12);
  EXPECT_EQ(slotNumber(&IGuiStatusBar::isEnabled), 13);
  EXPECT_EQ(slotNumber(&IGuiCursor::unusedSlot1), 1);
  EXPECT_EQ(slotNumber(&IGuiCursor::unusedSlot4), 4);
  EXPECT_EQ(slotNumber(&IGuiThemeMgr::isThemed), 10);
  EXPECT_EQ(slotNumber(&IGuiThemeMgr::closeText), 16);
}

TEST(InteractiveSlots, InfoBars) {
  EXPECT_EQ(slotNumber(&IInfoBar::setStatusText), 1);
  EXPECT_EQ(slotNumber(&IInfoBar::clearStatusText), 2);
  EXPECT_EQ(slotNumber(&IInfoBar::setPercent), 3);
  EXPECT_EQ(slotNumber(&IInfoBar::clearPercent), 4);
  EXPECT_EQ(slotNumber(&IInfoBar::setFraction), 5);
  EXPECT_EQ(slotNumber(&IInfoBar::setFractionFor), 6);
  EXPECT_EQ(slotNumber(&IInfoBar2::unusedSlot1), 1);
  EXPECT_EQ(slotNumber(&IInfoBar2::startCommand), 3);
  EXPECT_EQ(slotNumber(&IInfoBar2::stopCommand), 4);
  EXPECT_EQ(slotNumber(&IInfoBar2::currentCommand), 5);
}

}  // namespace
