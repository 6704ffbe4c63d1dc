#include "tests/services/translationworld.h"

#include <string_view>

#include "components/xmldom/xmldocument.h"
#include "interfaces/IOroDirService.h"
#include "interfaces/IOroStrSupport.h"
#include "interfaces/IOroTranslator.h"
#include "orobasictypes/testaccess.h"
#include "services/errorservice.h"

namespace tests {
namespace {

class LanguageDirectory : public IOroDirService {
 public:
  static constexpr const char* className() { return "LanguageDirectory"; }
  using Offers = OroOffers<LanguageDirectory, IOroDirService>;
  explicit LanguageDirectory(const OroPath& path) : path_(path) {}
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  const OroPath& getDir(const char* name) override {
    return std::string_view(name) == "language" ? path_ : other_;
  }
  void setDir(const char*, const OroPath&) override {}

 private:
  OroPath path_;
  OroPath other_{"Q:\\nothing"};
};

class StripSupport : public IOroStrSupport {
 public:
  static constexpr const char* className() { return "StripSupport"; }
  using Offers = OroOffers<StripSupport, IOroStrSupport>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  int32_t unusedSlot1() override { return 0; }
  void toNarrow(KelCString& out, const OroString& text) override {
    std::string ascii;
    for (const char16_t unit : std::u16string_view(text.wideText())) {
      if (unit < 128) ascii += static_cast<char>(unit);
    }
    out = KelCString(ascii.c_str());
  }
  int32_t compare(const OroString& left, const OroString& right) override {
    return left.compareOrdinal(right);
  }
  bool isSpace(char16_t unit) override { return unit == u' ' || (unit >= 9 && unit <= 13); }
  bool isDigit(char16_t unit) override { return unit >= u'0' && unit <= u'9'; }
  bool contains(const OroString& text, const OroString& part, bool) override {
    return text.find(part) >= 0;
  }
  void stripSpace(OroString& text) override {
    const std::u16string whole(text.wideText());
    size_t first = 0;
    size_t last = whole.size();
    while (first < last && isSpace(whole[first])) ++first;
    while (last > first && isSpace(whole[last - 1])) --last;
    text = OroString(whole.substr(first, last - first).c_str());
  }
  void normalize(OroString&) override {}
  void toLower(OroString&) override {}
  void toUpper(OroString&) override {}
};

}  // namespace

TranslationWorld::TranslationWorld() {
  testaccess::resetDirPath();
  testaccess::resetStrSupport();
  heard.clear();
  publish("IOroDirService", new LanguageDirectory(languages()));
  std::filesystem::create_directory(folder_.file("lang"));
}

TranslationWorld::~TranslationWorld() {
  testaccess::resetModuleTranslator();
  testaccess::resetDirPath();
  testaccess::resetStrSupport();
}

void TranslationWorld::publishXml(const char* name) {
  const IPtr<XmlDocument> document = new XmlDocument;  // goes when the name has one
  publish(name, document.get());
}

void TranslationWorld::publishXml() {
  publishXml("IOroDOMXml");
  publishXml("IOroDOMXmlV2");
}

void TranslationWorld::listen() {
  const IPtr<ErrorService> errors = new ErrorService(false, nullptr);
  errors->addListener(new RecordingListener(heard, "errors"));
  publish("IOroErrorService", errors.get());
}

void TranslationWorld::publishStrip() {
  testaccess::resetStrSupport();
  publish("IOroStrSupport", new StripSupport);
}

void TranslationWorld::writeLanguage(const std::string& name, const std::string& bytes) const {
  folder_.write(std::filesystem::path("lang") / name, bytes);
}

std::u16string TranslationWorld::text(IOroTranslator& translator, const char* key) {
  OroString out("before");
  return translator.translate(out, key).wideText();
}

std::string TranslationWorld::wideBytes(const std::u16string& units) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : units) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

}  // namespace tests
