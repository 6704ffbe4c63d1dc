#include "components/text/systemlocale.h"

#include <algorithm>

#include "orobasictypes/orofilereader.h"
#include "orobasictypes/oropath.h"
#include "platform/nationaltext.h"

namespace {

char smallLetter(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool hasPart(std::string_view tag, std::string_view part) {
  for (size_t at = 0; at <= tag.size();) {
    const size_t end = std::min(tag.find('-', at), tag.size());
    if (tag.substr(at, end - at) == part) return true;
    at = end + 1;
  }
  return false;
}

}  // namespace

SystemLocale::SystemLocale() {
  const std::string code = codeOf(platform::userLanguageTag());
  if (isInstalled(oroDirPath("language"), code)) language_->setLanguage(KelCString(code.c_str()));
}

bool SystemLocale::isInstalled(const OroPath& folder, const std::string& code) {
  if (code == "en") return true;
  OroFileReader file;
  return file.open(folder.joined(("velmora." + code + ".resx").c_str())) ||
         file.open(folder.joined((code + ".po").c_str()));
}

std::string SystemLocale::codeOf(std::string_view tag) {
  std::string small(tag);
  std::transform(small.begin(), small.end(), small.begin(), smallLetter);
  const std::string language = small.substr(0, small.find('-'));
  if (language != "zh") return language;
  const bool traditional = hasPart(small, "hant") ||
                           (!hasPart(small, "hans") &&
                            (hasPart(small, "tw") || hasPart(small, "hk") || hasPart(small, "mo")));
  return traditional ? "zh-tw" : "zh-cn";
}
