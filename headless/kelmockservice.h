// KelMockService: answers for the interactive services in a run without a user interface.
//
// It drops most calls, answers queries with neutral values, and turns the few that matter into the
// records of a KelRecordSink and, where it is asked for, a small progress window. attachHeadless
// makes the one of the process and publishes it; after detach it lives on without sink and window.
// Main thread.
#pragma once

#include "headless/kelactionstack.h"
#include "headless/kelrecordsink.h"
#include "interfaces/IGuiBusyState.h"
#include "interfaces/IGuiCursor.h"
#include "interfaces/IGuiStatusBar.h"
#include "interfaces/IGuiThemeMgr.h"
#include "interfaces/IInfoBar.h"
#include "interfaces/IInfoBar2.h"
#include "interfaces/IOroErrorListener.h"
#include "interfaces/IOroProgress.h"
#include "orobasictypes/orooffers.h"
#include "platform/progresswindow.h"

class KelMockService : public IGuiBusyState,
                       public IOroProgress,
                       public IGuiStatusBar,
                       public IInfoBar,
                       public IInfoBar2,
                       public IGuiCursor,
                       public IGuiThemeMgr,
                       public IOroErrorListener {
 public:
  // Reads the settings "GUI/CommandLine Progress Window" and "GUI/CommandLine Log File"; later
  // changes of them go unseen.
  KelMockService();

  static constexpr const char* className() { return "KelMockService"; }
  using Offers = OroOffers<KelMockService, IGuiBusyState, IGuiStatusBar, IOroProgress, IGuiCursor,
                           IGuiThemeMgr, IInfoBar, IInfoBar2, IOroErrorListener>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // Destroys the window, writes the trailer and closes the sink.
  void closeSinks();
  // Whether records go anywhere.
  bool keepsRecords() const { return sink_.isOpen(); }

  // IOroProgress
  bool Update(float fraction) override;  // rounds to whole percents
  bool IsCancelled() override { return false; }
  void startAction(const void* id, const OroString& text) override;
  void stopAction(const void* id) override;
  void setAction(const void* id, const OroString& text) override;
  void currentAction(OroString& text) override;  // IGuiBusyState's as well
  int32_t resolve(int32_t value) override { return value; }

  // IGuiBusyState
  void startBusy(const OroString& text, int32_t flag, const void* id) override;
  void startBusy2(const OroString& text, int32_t flag, const void* id) override;
  void startBusy3(const OroString& text, int32_t flag, const void* id) override;
  void startBusy4(const OroString& text, int32_t flag, const void* id) override;
  void stopBusy(int32_t flag, int32_t flag2, const void* id) override;
  void stopBusy2(int32_t flag, int32_t flag2, const void* id) override;
  void setBusyText(const OroString& text) override;
  // IInfoBar's as well. A value that was just written is not written again.
  void setPercent(int32_t percent) override;

  // IGuiStatusBar
  void getRange(int32_t* low, int32_t* high) override;
  void setProgress(int32_t percent) override { setPercent(percent); }
  bool isEnabled() override { return true; }

  // IInfoBar; a status text goes to the window alone.
  void setStatusText(const OroString& text) override;
  void clearStatusText() override;
  void clearPercent() override { setPercent(0); }
  void setFraction(float fraction) override;  // cuts to whole percents
  void setFractionFor(const void* id, float fraction) override;

  // IInfoBar2
  void startCommand(const void* id, const OroString& text) override;
  void stopCommand(const void* id) override;
  void currentCommand(OroString& text) override;

  // IGuiThemeMgr
  bool isThemed() override { return true; }
  void closeText(OroString& text, int32_t kind) override;

  // IOroErrorListener; everything but an error is written as a warning.
  void onError(const OroString& text, const int32_t* severity, const KelCString& detail) override;

  // Operations of the interfaces above that mean nothing without a user interface.
  int32_t unusedSlot1() override { return 0; }
  int32_t unusedSlot2() override { return 0; }
  int32_t unusedSlot3() override { return 0; }
  int32_t unusedSlot4() override { return 0; }
  int32_t unusedSlot5() override { return 0; }
  int32_t unusedSlot6() override { return 0; }
  int32_t unusedSlot7() override { return 0; }
  int32_t unusedSlot8() override { return 0; }
  int32_t unusedSlot9() override { return 0; }
  int32_t unusedSlot10() override { return 0; }
  int32_t unusedSlot11() override { return 0; }
  int32_t unusedSlot12() override { return 0; }
  int32_t unusedSlot13() override { return 0; }
  int32_t unusedSlot14() override { return 0; }
  int32_t unusedSlot15() override { return 0; }

 private:
  void announce(KelRecordKind kind, const OroString& text);
  const void* idOr(const void* id) const { return id != nullptr ? id : this; }

  platform::ProgressWindow window_;
  KelActionStack actions_;
  KelActionStack commands_;
  KelRecordSink sink_;
};
