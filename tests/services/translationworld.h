// TranslationWorld: a process with a directory of languages and, where a test wants them, XML
// documents of the library's own class, a language in force and a text service.
#pragma once

#include <string>
#include <vector>

#include "tests/services/recordinglistener.h"
#include "tests/services/servicetest.h"
#include "tests/services/testlanguage.h"

class IOroTranslator;

namespace tests {

class TranslationWorld : public ServiceTest {
 protected:
  TranslationWorld();
  ~TranslationWorld() override;

  // Makes documents known under one name, "IOroDOMXml" or "IOroDOMXmlV2", or under both.
  void publishXml(const char* name);
  void publishXml();
  // From now on reports are kept in `heard`, as each has its text and severity.
  void listen();
  // A text service that strips the ends of a text, as that of the component library does.
  void publishStrip();

  // A file of that name in the directory named "language".
  void writeLanguage(const std::string& name, const std::string& bytes) const;
  OroPath languages() const { return base("lang"); }

  static std::u16string text(IOroTranslator& translator, const char* key);
  // The bytes of units of 16 bits behind the mark of such a file.
  static std::string wideBytes(const std::u16string& units);

  static inline std::vector<HeardError> heard;  // outlives the listener, whose end it hears
};

}  // namespace tests
