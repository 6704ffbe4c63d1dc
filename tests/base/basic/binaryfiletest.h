// BinaryFileTest: a fixture with a store and one binary settings file in a folder of its own, and
// short verbs for writing and reading it.
#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <string>

#include "base/basic/keldatafilereader.h"
#include "base/basic/keldatafilewriter.h"
#include "base/basic/keldatastore.h"
#include "tests/tempfolder.h"

namespace tests {

class BinaryFileTest : public testing::Test {
 protected:
  static OroString wideOf(const std::filesystem::path& path) {
    return OroString(path.u16string().c_str());
  }
  OroString path() const { return wideOf(folder.file("user.dat")); }
  std::string bytes() const { return folder.read("user.dat"); }
  void putFile(const std::string& content) const { folder.write("user.dat", content); }

  // One walk over all items, or over the item of that path.
  bool writeAll(IKelDataFilter* filter = nullptr) {
    const IPtr<IKelDataVisitor> writer(new KelDataFileWriter(path()));
    writer->SetFilter(filter);
    return store->Accept(writer.get());
  }
  bool write(const char* item) {
    const IPtr<IKelDataVisitor> writer(new KelDataFileWriter(path()));
    return store->AcceptPath(writer.get(), item);
  }
  bool readAll(IKelDataFilter* filter = nullptr) {
    const IPtr<IKelDataVisitor> reader(new KelDataFileReader(path(), false));
    reader->SetFilter(filter);
    return store->Accept(reader.get());
  }
  bool read(const char* item, bool notify = false) {
    const IPtr<IKelDataVisitor> reader(new KelDataFileReader(path(), notify));
    return store->AcceptPath(reader.get(), item);
  }

  void makeInt(const char* name, int32_t value, uint32_t flags = 1) {
    ASSERT_TRUE(store->CreateInt(name, value, INT32_MIN, INT32_MAX, flags));
  }
  void makeText(const char* name, int32_t capacity, const char* text) {
    ASSERT_TRUE(store->CreateString(name, capacity, text, 1));
  }
  int32_t number(const char* name) { return store->GetInt(name, nullptr); }
  std::string text(const char* name) { return store->GetString(name, nullptr); }
  std::string blob(const char* name) {
    int32_t size = 0;
    const void* const data = store->GetBlob(name, size, nullptr);
    return {static_cast<const char*>(data), static_cast<size_t>(size)};
  }

  // One setting of each kind, in the walk's order; what the format's page shows as its example.
  void makeExample() {
    store->CreateDirectory("View");
    makeInt("View/Zoom", 75);
    makeText("View/Name", 6, "top");
    store->CreateOroString("View/Title", 3, OroString(u"a\u20AC"), 1);
    store->CreateBlob("View/State", 3, "\x01\x00\xFF", 1);
    store->CreateFloat("Scale", 0.5, -10, 10, 1);
  }
  static constexpr const char* kExamplePaths[] = {"View/Zoom", "View/Name", "View/Title",
                                                  "View/State", "Scale"};
  // Other values in the same settings.
  void clearExample() {
    store->SetInt(nullptr, "View/Zoom", 1);
    store->SetString(nullptr, "View/Name", "?");
    store->SetOroString(nullptr, "View/Title", OroString(u"?"));
    store->SetBlob(nullptr, "View/State", "?", 1);
    store->SetFloat(nullptr, "Scale", 1);
  }
  // Which settings of the example have its values, one letter each: "zntsS" or with "-" instead.
  std::string exampleValues() {
    std::string result;
    result += number("View/Zoom") == 75 ? 'z' : '-';
    result += text("View/Name") == "top" ? 'n' : '-';
    result += store->GetOroString("View/Title", nullptr) == OroString(u"a\u20AC") ? 't' : '-';
    result += blob("View/State") == std::string("\x01\x00\xFF", 3) ? 's' : '-';
    result += store->GetFloat("Scale", nullptr) == 0.5 ? 'S' : '-';
    return result;
  }

  TempFolder folder;
  const IPtr<KelDataStore> store{new KelDataStore(true, 5, 20)};
};

// A 16-bit number as it stands in the file.
inline std::string lowHigh(int value) {
  return {static_cast<char>(value), static_cast<char>(value >> 8)};
}

// A record with that area.
inline std::string record(const std::string& name, const std::string& area) {
  const auto length = static_cast<int>(name.size());
  return lowHigh(length + 4 + static_cast<int>(area.size())) + lowHigh(length) + name + area;
}

}  // namespace tests
