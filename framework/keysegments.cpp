#include "framework/keysegments.h"

#include <cstring>

KeySegments::KeySegments(KelCString& key) {
  if (!key.isEmpty()) rest_ = key.writableText();
}

bool KeySegments::next() {
  restore();
  if (isLast()) return false;
  segment_ = rest_;
  separator_ = std::strchr(rest_, '/');
  if (separator_ != nullptr) {
    *separator_ = '\0';
    rest_ = separator_ + 1;
  } else {
    rest_ += std::strlen(rest_);
  }
  return true;
}

void KeySegments::restore() {
  if (separator_ != nullptr) *separator_ = '/';
  separator_ = nullptr;
}
