#include "services/knownfolders.h"

#include <cstring>
#include <optional>

#include "interfaces/IOroRegistry.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"
#include "platform/knownfolders.h"
#include "services/registryvalue.h"
#include "services/testaccess.h"

namespace {

struct FolderRow {
  const char* name;
  platform::KnownFolder folder;
};

constexpr FolderRow kFolders[] = {
    {"HOME", platform::KnownFolder::profile},
    {"PERSONAL", platform::KnownFolder::documents},
    {"COMMON_DOCUMENTS", platform::KnownFolder::commonDocuments},
    {"APPDATA", platform::KnownFolder::appData},
    {"COMMON_APPDATA", platform::KnownFolder::commonAppData},
};

std::optional<bool> defaultDirsWanted;  // empty until the registry was read

bool wantsDefaultDirs() {
  if (!defaultDirsWanted) {
    SPtr<Velmora::IOroRegistry> registry;
    KelCString key("PRODUCT_INFO/createDefaultDirs");
    defaultDirsWanted = !registry || registry->getInt(key, 1) == 1;
  }
  return *defaultDirsWanted;
}

// The system's folder of that name; empty if the name or the folder is unknown.
OroPath systemFolder(const char* name) {
  for (const FolderRow& row : kFolders) {
    if (std::strcmp(row.name, name) == 0) {
      return OroPath(OroString(platform::knownFolderPath(row.folder).c_str()));
    }
  }
  return OroPath();
}

bool hasValue(const KelCString* value) { return value != nullptr && !value->isEmpty(); }

// Empty unless another brand has named both its company's folder and its product.
OroPath altProductFolder(const OroPath& base) {
  const KelCString* const product = oroRegistryValue("ALT_PRODUCT_INFO/altProductName");
  const KelCString* const company = oroRegistryValue("ALT_PRODUCT_INFO/altCompanyFolder");
  if (!hasValue(product) || !hasValue(company)) return OroPath();
  return base.joined(OroString(*company)).joined(OroString(*product));
}

OroPath altKnownFolder(const char* folder, bool productFolder) {
  KelCString key("ALT_PRODUCT_INFO/");
  key.append(folder);
  const KelCString* const other = oroRegistryValue(key);
  const OroPath path = systemFolder(hasValue(other) ? other->text() : folder);
  return productFolder && !path.isEmpty() ? altProductFolder(path) : path;
}

// Empty while the product's name or version is not recorded.
OroPath productFolderIn(const OroPath& base, bool withVersion) {
  const KelCString* const name = oroRegistryValue("PRODUCT_INFO/appName");
  const KelCString* const version = oroRegistryValue("PRODUCT_INFO/displayVersion");
  if (name == nullptr || version == nullptr) return OroPath();
  const KelCString* const companyName = oroRegistryValue("PRODUCT_INFO/companyName");
  const OroString company = companyName != nullptr ? OroString(*companyName) : OroString("Velmora");
  const OroPath path = base.joined(company);
  if (!withVersion) return path;
  OroString title;
  if (version->isEmpty()) {
    oroTranslate(title, "%1 %2", company, OroString(*name));
  } else {
    oroTranslate(title, "%1 %2 %3", company, OroString(*name), OroString(*version));
  }
  return path.joined(title);
}

}  // namespace

OroPath oroKnownFolder(const char* folder, bool productFolder, bool withVersion) {
  OroPath path = altKnownFolder(folder, productFolder);
  if (path.isEmpty()) {
    path = systemFolder(folder);
    if (productFolder && !path.isEmpty()) path = productFolderIn(path, withVersion);
  }
  if (path.isEmpty()) return oroFallbackFolder();
  oroMakeDefaultDir(path);
  return path;
}

const OroPath& oroFallbackFolder() {
  static const auto& fallback = *new OroPath("C:\\");
  return fallback;
}

void oroMakeDefaultDir(const OroPath& path) {
  if (wantsDefaultDirs()) path.makeDirectory(true);
}

void testaccess::resetDefaultDirsWanted() { defaultDirsWanted.reset(); }
