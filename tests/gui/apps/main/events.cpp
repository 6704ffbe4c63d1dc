#include "tests/gui/apps/main/events.h"

#include "orobasictypes/orostring.h"

namespace tests {

Events& events() {
  static Events list;
  return list;
}

Events eventsLike(const std::vector<std::string>& words) {
  Events some;
  for (const std::string& text : events()) {
    for (const std::string& word : words) {
      if (text.rfind(word, 0) == 0) some.push_back(text);
    }
  }
  return some;
}

void event(std::string_view text) { events().emplace_back(text); }

void event(std::string_view name, const OroString& text) {
  events().push_back(std::string(name) + " '" + text.toNarrow() + "'");
}

void event(std::string_view name, long value) {
  events().push_back(std::string(name) + " " + std::to_string(value));
}

}  // namespace tests
