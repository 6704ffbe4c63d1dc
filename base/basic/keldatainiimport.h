// KelDataIniImport: reads "[section]" and "key=value" lines into text items of a store.
//
//   bool whole = KelDataIniImport(store, true).run(file);
//
// Items that are there already keep their values; new ones are never saved. A line is at most 4095
// characters with its line feed. One use an object.
#pragma once

#include <string>
#include <string_view>

class IDataStore;
class OroString;

class KelDataIniImport {
 public:
  // With `expandEnv`, "${NAME}" in keys and values becomes the environment variable's value; what
  // names none stays as written. The store must outlive the import.
  KelDataIniImport(IDataStore& store, bool expandEnv) : store_(store), expandEnv_(expandEnv) {}

  // False when the file does not open, at the first line without a line feed, and at a section
  // without "]". What came before stays.
  bool run(const OroString& file);

 private:
  bool importLine(std::string_view line);
  void importKey(std::string_view key, std::string_view value);
  std::string finished(std::string_view text) const;

  IDataStore& store_;
  bool expandEnv_;
  std::string section_;
};
