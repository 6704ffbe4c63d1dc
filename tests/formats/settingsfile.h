// SettingsFile: a store whose settings are written to a settings document and its journal in the
// current directory, and beside them what each holds.
//
//   tests::SettingsFile file("kinds.iniml");
//   file.integer("A/i", 5);
//   file.saveJournal();   // kinds.iniml.changes
//   file.saveDocument();  // kinds.iniml; the journal is gone then
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/basic/keldatastore.h"
#include "components/xmldom/xmldocument.h"
#include "framework/kelregistry.h"
#include "interfaces/IKelDataItem.h"
#include "tests/formats/json.h"
#include "tests/support/fakexml.h"

namespace tests {

class SettingsFile {
 public:
  explicit SettingsFile(std::string name) : name_(std::move(name)), store_(true, 50, 3000) {
    xml_.make = []() -> IOroDOMXml* { return new XmlDocument; };
    auto* const registry = new KelRegistry;
    xml_.registerService(KelCString::borrow("IOroRegistry"), registry);
    KelCString key("MAIN_ARGV/1");
    registry->setValue(key, KelCString(("-inifile=" + name_).c_str()));
    KelCString otherKey("MAIN_ARGV/2");
    registry->setValue(otherKey, KelCString(("-ini_out=" + name_).c_str()));
    std::ofstream(name_, std::ios::binary) << "<OroDataStore/>";
  }

  void integer(const char* path, int32_t value) {
    declare(path);
    store_.CreateInt(path, ~value, INT32_MIN, INT32_MAX, kSaved);
    store_.SetInt(nullptr, path, value);
    begin(path, "integer").integer(value).close();
  }
  void number(const char* path, double value) {
    declare(path);
    store_.CreateFloat(path, 1.25, -kMost, kMost, kSaved);
    store_.SetFloat(nullptr, path, value);
    begin(path, "float").number(value).close();
  }
  void narrow(const char* path, const char* text) {
    declare(path);
    store_.CreateString(path, 1000, "default", kSaved);
    store_.SetString(nullptr, path, text);
    begin(path, "text_latin1").text(std::string_view(text)).close();
  }
  void wide(const char* path, const char16_t* text) {
    declare(path);
    store_.CreateOroString(path, 1000, OroString("default"), kSaved);
    store_.SetOroString(nullptr, path, OroString(text));
    begin(path, "text_unicode").text(std::u16string_view(text)).close();
  }
  void blob(const char* path, const std::string& data) {
    declare(path);
    store_.CreateBlob(path, 7, "default", kSaved);
    store_.SetBlob(nullptr, path, data.data(), static_cast<int32_t>(data.size()));
    begin(path, "binary_base64").text(std::string_view(data)).close();
  }

  // What the journal holds so far. False when there is none.
  bool saveJournal() { return save(name_ + ".changes"); }
  bool saveDocument() { return store_.CommitWriter() && save(name_); }

 private:
  static constexpr uint32_t kSaved = IKelDataItem::kPersistent | IKelDataItem::kJournalled;
  static constexpr double kMost = 1.7976931348623157e308;

  void declare(const std::string& path) {
    for (size_t slash = 0; (slash = path.find('/', slash + 1)) != path.npos;) {
      store_.CreateDirectory(path.substr(0, slash).c_str());
    }
  }
  Json& begin(const char* path, const char* type) {
    values_.emplace_back();
    return values_.back().open('[').text(std::string_view(path)).text(std::string_view(type));
  }
  bool save(const std::filesystem::path& file) {
    std::error_code failure;
    const auto bytes = std::filesystem::file_size(file, failure);
    if (failure) return false;
    Json all;
    all.open('{').key("bytes").integer(bytes).key("values").open('[');
    for (const Json& value : values_) all.json(value);
    all.close().close().save(file);
    return true;
  }

  std::string name_;
  FakeXml xml_;
  KelDataStore store_;
  std::vector<Json> values_;
};

}  // namespace tests
