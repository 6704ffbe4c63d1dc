// The 16-byte identifier of classes and components, and its two text forms.
//
// Take GUID wherever a class id or a component id is meant; it is a plain value, made as an
// aggregate: GUID{0x1DBFCAD9, 0x0338, 0x4923, {0xA3, 0x29, ...}}. Any thread, no ownership.
#pragma once

#include <cstdint>
#include <string_view>

class KelCString;

struct GUID {
  uint32_t data1 = 0;  // the first word; also the hash in tables keyed by a GUID
  uint16_t data2 = 0;  // machine byte order, as data1 and data3
  uint16_t data3 = 0;
  uint8_t data4[8] = {};

  bool isNull() const { return *this == GUID{}; }

  // Field by field, so that padding or byte order never decide.
  friend constexpr bool operator==(const GUID& a, const GUID& b) {
    if (a.data1 != b.data1 || a.data2 != b.data2 || a.data3 != b.data3) return false;
    for (int i = 0; i < 8; ++i) {
      if (a.data4[i] != b.data4[i]) return false;
    }
    return true;
  }

  // An order for ordered maps and sets: the fields in turn, unsigned.
  friend constexpr bool operator<(const GUID& a, const GUID& b) {
    if (a.data1 != b.data1) return a.data1 < b.data1;
    if (a.data2 != b.data2) return a.data2 < b.data2;
    if (a.data3 != b.data3) return a.data3 < b.data3;
    for (int i = 0; i < 8; ++i) {
      if (a.data4[i] != b.data4[i]) return a.data4[i] < b.data4[i];
    }
    return false;
  }
};

static_assert(sizeof(GUID) == 16);

// The id as messages show it: eleven "0x%x" values, comma and blank between, lower case, no
// padding.
KelCString oroGuidText(const GUID& id);

// Reads "{1DBFCAD9-0338-4923-A329-EAEA81063FF0}" with or without braces, or the eleven values of
// oroGuidText, in either letter case. False, and `id` left alone, for anything else.
bool oroParseGuid(std::string_view text, GUID& id);
