#include "components/text/textsupport.h"

#include <string>
#include <string_view>

#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orostring.h"
#include "platform/nationaltext.h"
#include "platform/text.h"

namespace {

// The string's own operations would ask for this very service.
std::u16string_view unitsOf(const OroString& text) { return text.wideText(); }

// A null text has nothing to change and stays null.
template <class Change>
void change(OroString& text, const Change& changed) {
  if (!text.isNull()) text = OroString(std::u16string(changed(unitsOf(text))).c_str());
}

std::u16string_view stripped(std::u16string_view units) {
  while (!units.empty() && platform::isBlank(units.front())) units.remove_prefix(1);
  while (!units.empty() && platform::isBlank(units.back())) units.remove_suffix(1);
  return units;
}

}  // namespace

void TextSupport::toNarrow(KelCString& out, const OroString& text) {
  out = KelCString(platform::toCodePage(unitsOf(text)).c_str());
}

int32_t TextSupport::compare(const OroString& left, const OroString& right) {
  const int order = platform::compareNational(unitsOf(left), unitsOf(right));
  return (order > 0) - (order < 0);
}

bool TextSupport::isSpace(char16_t unit) { return platform::isBlank(unit); }

bool TextSupport::isDigit(char16_t unit) { return platform::isDigit(unit); }

bool TextSupport::contains(const OroString& text, const OroString& part, bool caseSensitive) {
  const std::u16string_view units = unitsOf(text);
  const std::u16string_view wanted = unitsOf(part);
  if (wanted.empty()) return false;
  if (caseSensitive) return units.find(wanted) != units.npos;
  return platform::smallLetters(units).find(platform::smallLetters(wanted)) != units.npos;
}

void TextSupport::stripSpace(OroString& text) { change(text, stripped); }

void TextSupport::normalize(OroString& text) { change(text, platform::composed); }

void TextSupport::toLower(OroString& text) { change(text, platform::smallLetters); }

void TextSupport::toUpper(OroString& text) { change(text, platform::capitalLetters); }
