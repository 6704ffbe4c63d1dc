#include "services/translationtable.h"

void TranslationTable::store(const OroString& source, const OroString& text) {
  const KelCString key(source.toNarrow());
  uint32_t bucket = 0;
  // A text of its own: placeholders are filled in owned texts alone.
  OroString owned(text.wideText());
  if (auto* const entry = entries_.find(key, &bucket)) {
    entry->value = owned;
  } else {
    entries_.insert(bucket, key, owned);
  }
}

const OroString* TranslationTable::find(const char* key) const {
  const auto* const entry = entries_.find(KelCString::borrow(key));
  return entry != nullptr ? &entry->value : nullptr;
}
