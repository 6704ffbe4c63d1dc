#include "tests/gui/apps/main/events.h"

#include "orobasictypes/orostring.h"

namespace tests {

Events& events() {
  static Events list;
  return list;
}

void event(std::string_view text) { events().emplace_back(text); }

void event(std::string_view name, const OroString& text) {
  events().push_back(std::string(name) + " '" + text.toNarrow() + "'");
}

void event(std::string_view name, long value) {
  events().push_back(std::string(name) + " " + std::to_string(value));
}

}  // namespace tests
