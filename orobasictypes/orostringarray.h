// OroStringArray: a growable array of wide texts, filled from index 1; slot 0 is no item.
//
//   OroStringArray names;
//   names.append(OroString(u"first", "first"));
//   for (int i = 1; i <= names.lastIndex(); ++i) show(names[i]);
//
// It owns its texts; copying copies them. One owner at a time. References to items are valid until
// the array grows.
#pragma once

#include <cstdint>

#include "orobasictypes/oroarray.h"
#include "orobasictypes/orostring.h"

class OroStringArray {
 public:
  OroStringArray() noexcept = default;
  // With room for the slots 0 to capacity - 1.
  explicit OroStringArray(int32_t capacity) : texts_(capacity) {}

  int32_t lastIndex() const { return texts_.count(); }    // 0 when there is no item
  int32_t capacity() const { return texts_.capacity(); }  // slots, slot 0 included
  // Slot `index`; the empty string when it does not exist. Below 0: slot 0.
  const OroString& operator[](int32_t index) const;

  // Makes the slot when it does not exist yet; leaves the last index alone. Below 0: slot 0.
  OroString& operator[](int32_t index) { return texts_[index]; }
  void append(const OroString& text) { texts_.add(text); }
  void setLastIndex(int32_t index) { texts_.setCount(index); }  // texts beyond it stay
  void clear() { texts_.clear(); }                              // gives the storage back

 private:
  OroArray<OroString> texts_;
};
