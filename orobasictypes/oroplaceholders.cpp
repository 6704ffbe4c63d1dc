#include "orobasictypes/oroplaceholders.h"

#include <algorithm>

#include "orobasictypes/orostring.h"

namespace {

constexpr int32_t kLastNumber = 99;  // of two digits

}  // namespace

void oroFillNumbers(OroString& text, int32_t count, const OroString* arguments) {
  for (int32_t number = 1; number <= std::min(count, kLastNumber); ++number) {
    OroString placeholder("%");
    placeholder.append(OroString(number));
    const int32_t start = text.find(placeholder);
    if (start < 0) continue;
    const OroString& argument = arguments != nullptr ? arguments[number - 1] : OroString::empty();
    text = text.splice(start, start + placeholder.length(), argument);
  }
}
