// The settings that the documents and journals of this folder hold. Each document is a process of
// its own, since the default paths hold for a process.
#pragma once

#include <string>

#include "tests/formats/settingsfile.h"

namespace tests {

inline void putExample(SettingsFile& file) {
  file.integer("GUI/Width", 1280);
  file.wide("GUI/Title", u"caf\u00E9 <1>");
  file.number("Scale", 0.5);
}

inline void putJournalExample(SettingsFile& file) {
  file.integer("GUI/Width", 1024);
  file.wide("Tip", u"R&D     ");
}

inline void putKinds(SettingsFile& file) {
  file.integer("Integers/least", INT32_MIN);
  file.integer("Integers/most", INT32_MAX);
  file.integer("Integers/zero", 0);
  for (const auto& [path, value] : {std::pair{"Floats/third", 1.0 / 3},
                                    {"Floats/most", 1.7e308},
                                    {"Floats/least", -1.7e308},
                                    {"Floats/small", 5e-324},
                                    {"Floats/zero", -0.0}}) {
    file.number(path, value);
  }
  file.narrow("Texts/narrow", "caf\xE9 \x80\xFF \t");
  file.wide("Texts/wide", u" \u20AC \uFFFD\n \U0001F600\xD800 ");
  file.wide("Texts/empty", u"");
  file.blob("Blobs/none", "");
  for (const int size : {1, 2, 3, 48, 49, 96, 100}) {
    std::string data;
    for (int i = 0; i < size; ++i) data += static_cast<char>(i * 83);
    file.blob(("Blobs/of/" + std::to_string(size)).c_str(), data);
  }
}

inline void putNames(SettingsFile& file) {
  for (const char* path : {"Item 10", "Item 9", "item 09", "A/x", "A b", "a/y", "A/z", "A/B/C/D/E",
                           "B", "Quotes \"and\" <others> & 'more'                     /'x'      ",
                           "caf\xC3\xA9/\xE2\x82\xAC"}) {
    file.integer(path, 1);
  }
}

inline void putMany(SettingsFile& file) {
  for (int i = 0; i < 3000; ++i) {
    const std::string path =
        "Section " + std::to_string(i % 50) + "/Setting number " + std::to_string(i);
    file.integer(path.c_str(), i * 7919);
  }
}

struct Contents {
  const char* name;
  void (*put)(SettingsFile& file);
};

inline constexpr Contents kContents[] = {
    {"example", putExample}, {"kinds", putKinds}, {"names", putNames}, {"many", putMany}};

}  // namespace tests
