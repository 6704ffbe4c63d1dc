// KelActionStack: the texts of what a run is doing, newest last, each under an id of its caller.
//
// An id may stand in it more than once; the newest entry is meant. Owned by one object, one thread.
#pragma once

#include "orobasictypes/oroarray.h"
#include "orobasictypes/orostring.h"

class KelActionStack {
 public:
  void push(const void* id, const OroString& text) { entries_.add(Entry{id, text}); }

  // Takes the newest entry of the id out and gives its text; empty for an unknown id.
  OroString take(const void* id);

  // Replaces the text of the newest entry of the id; an unknown id changes nothing.
  void replace(const void* id, const OroString& text);

  // Replaces the text of the newest entry; an empty stack stays so.
  void replaceTop(const OroString& text);

  bool isEmpty() const { return entries_.isEmpty(); }

  // The text of the newest entry, empty for an empty stack.
  OroString top() const;

 private:
  struct Entry {
    const void* id = nullptr;
    OroString text;
  };

  int32_t find(const void* id) const;  // 0 when there is none

  OroArray<Entry> entries_;
};
