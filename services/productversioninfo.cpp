#include "services/productversioninfo.h"

#include <algorithm>
#include <cstdio>
#include <string>

bool ProductVersionInfo::read(const char* product) {
  const std::string name = std::string("SOFTWARE\\Velmora\\") + product;
  const platform::RegistryKey machine =
      platform::registryRoot(platform::RegistryRoot::localMachine);
  if (platform::registryOpenKey(machine, name, platform::registryRead, key_) !=
      platform::registryOk) {
    return false;
  }
  readNumber("Current Version", currentVersion_);
  readNumber("Current SR", currentSR_);
  readNumber("Latest Version", latestVersion_);
  readNumber("Latest SR", latestSR_);
  platform::registryCloseKey(key_);
  key_ = nullptr;
  return true;
}

void ProductVersionInfo::readNumber(const char* name, int32_t& number) const {
  char text[10] = {};
  uint32_t type = platform::registryTypeNone;
  uint32_t size = sizeof text;
  if (platform::registryQueryValue(key_, std::string_view(name), &type, text, &size) !=
          platform::registryOk ||
      type != platform::registryTypeText) {
    return;
  }
  text[sizeof text - 1] = '\0';  // nine characters hold no number that is too large
  int value = 0;
  if (std::sscanf(text, "%i", &value) == 1) number = value;
}
