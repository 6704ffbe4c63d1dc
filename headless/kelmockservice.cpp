#include "headless/kelmockservice.h"

#include <limits>
#include <string>

#include "headless/testaccess.h"
#include "interfaces/IDataStore.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/sptr.h"

namespace {

// The percent that was written last; a new text makes the next one count again.
constexpr int32_t kNoPercent = -1;
int32_t lastPercent = kNoPercent;

std::u16string unitsOf(const OroString& text) { return text.wideText(); }

// Cut towards zero; what is no 32-bit number is the smallest one, as the processor has it.
int32_t cutToInt(float value) {
  constexpr float limit = 2147483648.0f;
  const bool fits = value >= -limit && value < limit;
  return fits ? static_cast<int32_t>(value) : std::numeric_limits<int32_t>::min();
}

}  // namespace

void headlesstest::forgetPercent() { lastPercent = kNoPercent; }

KelMockService::KelMockService() {
  SPtr<IDataStore> store;
  if (!store) return;
  if (store->GetInt("GUI/CommandLine Progress Window", nullptr) != 0) window_.create();
  sink_.open(store->GetOroString("GUI/CommandLine Log File", nullptr));
}

void KelMockService::closeSinks() {
  window_.destroy();
  sink_.close();
}

// What every change of the two stacks does once the stack has changed.
void KelMockService::announce(KelRecordKind kind, const OroString& text) {
  window_.pump();
  if (window_.exists()) {
    OroString command;
    currentCommand(command);
    window_.setActionText(unitsOf(actions_.top()));
    window_.setCommandText(unitsOf(command));
  }
  sink_.write({kind, unitsOf(text)});
  lastPercent = kNoPercent;
}

bool KelMockService::Update(float fraction) {
  setPercent(cutToInt(fraction * 100.0f + 0.5f));
  return true;
}

void KelMockService::startAction(const void* id, const OroString& text) {
  actions_.push(id, text);
  announce(KelRecordKind::startAction, text);
}

void KelMockService::stopAction(const void* id) {
  announce(KelRecordKind::stopAction, actions_.take(id));
}

void KelMockService::setAction(const void* id, const OroString& text) {
  actions_.replace(id, text);
  announce(KelRecordKind::setAction, text);
}

void KelMockService::currentAction(OroString& text) { text = actions_.top(); }

void KelMockService::startBusy(const OroString& text, int32_t, const void* id) {
  startAction(idOr(id), text);
}

void KelMockService::startBusy2(const OroString& text, int32_t, const void* id) {
  startAction(idOr(id), text);
}

void KelMockService::startBusy3(const OroString& text, int32_t, const void* id) {
  startAction(idOr(id), text);
}

void KelMockService::startBusy4(const OroString& text, int32_t, const void* id) {
  startAction(idOr(id), text);
}

void KelMockService::stopBusy(int32_t, int32_t, const void* id) { stopAction(idOr(id)); }

void KelMockService::stopBusy2(int32_t, int32_t, const void* id) { stopAction(idOr(id)); }

void KelMockService::setBusyText(const OroString& text) {
  actions_.replaceTop(text);
  announce(KelRecordKind::setAction, text);
}

void KelMockService::setPercent(int32_t percent) {
  window_.setPercent(percent);
  window_.pump();
  if (percent == lastPercent) return;
  sink_.write({KelRecordKind::percent, {}, percent});
  lastPercent = percent;
}

void KelMockService::getRange(int32_t* low, int32_t* high) {
  *low = 0;
  *high = 100;
}

void KelMockService::setStatusText(const OroString& text) { window_.setActionText(unitsOf(text)); }

void KelMockService::clearStatusText() { window_.setActionText(u""); }

void KelMockService::setFraction(float fraction) { setPercent(cutToInt(fraction * 100.0f)); }

void KelMockService::setFractionFor(const void*, float fraction) { setFraction(fraction); }

void KelMockService::startCommand(const void* id, const OroString& text) {
  commands_.push(id, text);
  announce(KelRecordKind::startCommand, text);
}

void KelMockService::stopCommand(const void* id) {
  announce(KelRecordKind::stopCommand, commands_.take(id));
}

void KelMockService::currentCommand(OroString& text) { text = commands_.top(); }

void KelMockService::closeText(OroString& text, int32_t kind) {
  text = kind == 1 ? OroString(u"Close Window") : OroString();
}

void KelMockService::onError(const OroString& text, const int32_t* severity, const KelCString&) {
  const bool isError = *severity == 1;
  sink_.write({isError ? KelRecordKind::error : KelRecordKind::warning, unitsOf(text)});
}
