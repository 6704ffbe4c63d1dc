// What only the process itself can tell, put into the registry before any component exists: how it
// was started, and what its executable says of the product. Without a registry nothing is recorded;
// nothing is reported. Main thread, once.
#pragma once

#include <cstdint>

class OroString;

// "MAIN_ARGV0": the file of the product's module, which is the executable unless
// "PRODUCT_INFO/dllId" names a part of another loaded module's path; "ORIGINAL_MAIN_ARGV0": always
// the executable; "MAIN_ARGV/1" and on: the arguments. Characters from 128 on are dropped.
void putArgumentsInRegistry(int32_t argc, const OroString* argv);

// "PRODUCT_INFO/Build Number" and "PRODUCT_INFO/displayVersion" from the version, and the
// overrides below.
void putProductFactsInRegistry();

// Facts that a build may fix; null leaves a key alone.
struct ProductOverrides {
  const char* appName;            // "PRODUCT_INFO/appName"
  const char* altCompanyFolder;   // "ALT_PRODUCT_INFO/altCompanyFolder"
  const char* altProductName;     // "ALT_PRODUCT_INFO/altProductName"
  const char* nativeFileVersion;  // "PRODUCT_INFO/cwlFileVersion"
};

extern ProductOverrides productOverrides;
