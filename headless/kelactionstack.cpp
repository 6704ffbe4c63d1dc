#include "headless/kelactionstack.h"

OroString KelActionStack::take(const void* id) {
  const int32_t index = find(id);
  if (index == 0) return {};
  OroString text = entries_[index].text;
  entries_.remove(index);
  return text;
}

void KelActionStack::replace(const void* id, const OroString& text) {
  const int32_t index = find(id);
  if (index != 0) entries_[index].text = text;
}

void KelActionStack::replaceTop(const OroString& text) {
  if (!isEmpty()) entries_.last().text = text;
}

OroString KelActionStack::top() const { return isEmpty() ? OroString() : entries_.last().text; }

int32_t KelActionStack::find(const void* id) const {
  for (int32_t i = entries_.count(); i > 0; --i) {
    if (entries_[i].id == id) return i;
  }
  return 0;
}
