// KeySegments: takes a registry key apart at its slashes, one segment after the other.
//
//   for (KeySegments segments(key); segments.next();) use(segments.text());
//
// The key's own buffer serves as workspace: the slash behind the current segment is a zero byte
// until the next step, and is back when the walk goes. A borrowed key gets a buffer of its own.
#pragma once

#include "orobasictypes/kelcstring.h"

class KeySegments {
 public:
  explicit KeySegments(KelCString& key);
  ~KeySegments() { restore(); }
  KeySegments(const KeySegments&) = delete;
  KeySegments& operator=(const KeySegments&) = delete;

  // To the next segment; false at the end of the key. "A//B" has an empty one in the middle, "/A"
  // one in front, "A/" none behind.
  bool next();
  // The current segment, terminated; empty before the first step.
  const char* text() const { return segment_; }
  // Whether nothing stands behind the current segment and its slash.
  bool isLast() const { return rest_ == nullptr || *rest_ == '\0'; }

 private:
  void restore();

  const char* segment_ = "";
  char* rest_ = nullptr;       // what stands behind the segment; null for a null key
  char* separator_ = nullptr;  // the zero byte that stands in for a slash
};
