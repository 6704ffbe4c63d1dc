// OroStringArray: a growable array of wide texts, filled from index 1; slot 0 is no item.
//
//   OroStringArray names;
//   names.append(OroString(u"first", "first"));
//   for (int i = 1; i <= names.lastIndex(); ++i) show(names[i]);
//
// It owns its texts. A plain value with one owner at a time. References to items are valid until
// the array grows.
#pragma once

#include <cstdint>

#include "orobasictypes/orostring.h"

class OroStringArray {
 public:
  OroStringArray() noexcept = default;
  OroStringArray(const OroStringArray& other);
  OroStringArray(OroStringArray&& other) noexcept;
  OroStringArray& operator=(const OroStringArray& other);
  OroStringArray& operator=(OroStringArray&& other) noexcept;
  ~OroStringArray();

  int32_t lastIndex() const { return last_; }
  int32_t capacity() const { return capacity_; }  // slots, slot 0 included
  const OroString& operator[](int index) const;   // the empty string beyond the capacity

  // Grows when the index lies beyond the capacity, and leaves the last index alone. Below 0: slot
  // 0.
  OroString& operator[](int index);
  void append(const OroString& text);
  void setLastIndex(int index);  // grows when needed; texts beyond it stay
  void clear();                  // frees all

 private:
  void growTo(int32_t slots);

  int32_t capacity_ = 0;
  OroString* data_ = nullptr;
  int32_t last_ = 0;  // 0 when there is no item
};
