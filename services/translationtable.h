// TranslationTable: the translated texts of one language file or more, by their English source.
//
//   TranslationTable texts;
//   texts.store(OroString("Open"), OroString(u"\u00D6ffnen"));
//   if (const OroString* text = texts.find("Open")) out = *text;
//
// Keys are the narrow form of the source, so what has no narrow form is not told apart. It owns its
// texts. No lock: it is filled before it is read by more than one thread.
#pragma once

#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orohashtable.h"
#include "orobasictypes/orostring.h"

class TranslationTable {
 public:
  // Replaces the text of a source that is known.
  void store(const OroString& source, const OroString& text);

  // Borrowed until the next store; null for an unknown key.
  const OroString* find(const char* key) const;

  uint32_t count() const { return entries_.entryCount(); }

 private:
  static constexpr uint32_t kBuckets = 17;

  OroHashTable<KelCString, OroString> entries_ =
      OroHashTable<KelCString, OroString>::withBuckets(kBuckets);
};
