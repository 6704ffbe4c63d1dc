// LibrarySettings: SettingsWorld with the XML documents of the library that the product ships.
#pragma once

#include "components/xmldom/xmldocument.h"
#include "tests/base/basic/settingsworld.h"

namespace tests {

class LibrarySettings : public SettingsWorld {
 protected:
  static constexpr const char* kDocument = "user/velmora.iniml";
  static constexpr const char* kJournal = "user/velmora.iniml.changes";
  static constexpr const char* kRejected = "user/velmora.iniml.changes.rejected";

  LibrarySettings() {
    xml.make = []() -> IOroDOMXml* { return new XmlDocument; };
  }

  // What a start finds under the name; 0 when there is nothing.
  int32_t next(const char* name) {
    forget();
    Session session;
    return session.loaded(name);
  }
};

}  // namespace tests
