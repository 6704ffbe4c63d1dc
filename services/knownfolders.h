// Folders that the system keeps for a user or for all users, with the product's own folders in
// them.
//
// The directory service asks here. A product that carries another brand replaces folders and names
// through the registry's "ALT_PRODUCT_INFO" values. Main thread.
#pragma once

class OroPath;

// The path of "HOME", "PERSONAL", "COMMON_DOCUMENTS", "APPDATA" or "COMMON_APPDATA", and "C:" where
// there is none. With `productFolder` extended by the company's folder, and `withVersion` by the
// product's name and version in that; another brand has company and product instead, version or
// not. Makes the directory where default directories are wanted.
OroPath oroKnownFolder(const char* folder, bool productFolder, bool withVersion);

// The path that stands for "nowhere better": "C:".
const OroPath& oroFallbackFolder();

// Makes the directory and its parents where default directories are wanted; the registry's
// "PRODUCT_INFO/createDefaultDirs", read once, says so unless it is there and not 1. Failure is
// ignored.
void oroMakeDefaultDir(const OroPath& path);
