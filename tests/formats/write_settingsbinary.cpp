// Writes binary settings files into the current directory, and beside each what it gives.
#include <cstdlib>
#include <limits>
#include <string>

#include "base/basic/keldatafilewriter.h"
#include "base/basic/keldatastore.h"
#include "orobasictypes/iptr.h"
#include "tests/formats/json.h"

namespace {

// A store whose settings go to one file, and what a reader is to find there.
class Settings {
 public:
  explicit Settings(const char* name) : name_(name) { json_.open('['); }

  KelDataStore& store() { return *store_; }
  void write() {
    const IPtr<IKelDataVisitor> writer(new KelDataFileWriter(OroString(name_)));
    good_ = store_->Accept(writer.get()) && good_;
  }

  Settings& integer(const char* path, int32_t value) {
    open("integer", path).integer(value).close();
    return *this;
  }
  Settings& real(const char* path, double value) {
    open("float", path).number(value).close();
    return *this;
  }
  Settings& text(const char* path, int capacity, const char* value) {
    open("text", path).integer(capacity).text(std::string_view(value)).close();
    return *this;
  }
  Settings& wide(const char* path, int capacity, const char16_t* value) {
    open("wide text", path).integer(capacity).text(std::u16string_view(value)).close();
    return *this;
  }
  Settings& blob(const char* path, const std::string& value) {
    open("blob", path).text(value).close();
    return *this;
  }
  // Of an integer, and of a text.
  Settings& keeps(const char* path) {
    open("integer", path).null().close();
    return *this;
  }
  Settings& keeps(const char* path, int capacity) {
    open("text", path).integer(capacity).null().close();
    return *this;
  }

  bool save() {
    json_.close().save(name_);
    return good_;
  }

 private:
  tests::Json& open(const char* kind, const char* path) {
    return json_.open('[').text(std::string_view(kind)).text(std::string_view(path));
  }

  const char* name_;
  IPtr<KelDataStore> store_{new KelDataStore(true, 5, 20)};
  tests::Json json_;
  bool good_ = true;
};

constexpr int32_t kLeast = -2147483647 - 1;
constexpr int32_t kMost = 2147483647;
constexpr double kLargest = std::numeric_limits<double>::max();

void makeInt(KelDataStore& store, const char* path, int32_t value) {
  store.CreateInt(path, value, kLeast, kMost, 1);
}

bool writeExample() {
  Settings file("example.dat");
  KelDataStore& store = file.store();
  store.CreateDirectory("View");
  makeInt(store, "View/Zoom", 75);
  store.CreateString("View/Name", 6, "top", 1);
  store.CreateOroString("View/Title", 3, OroString(u"a\u20AC"), 1);
  store.CreateBlob("View/State", 3, "\x01\x00\xFF", 1);
  store.CreateFloat("Scale", 0.5, -10, 10, 1);
  file.write();
  file.integer("View/Zoom", 75).text("View/Name", 6, "top").wide("View/Title", 3, u"a\u20AC");
  file.blob("View/State", std::string("\x01\x00\xFF", 3)).real("Scale", 0.5);
  return file.save();
}

bool writeExtremes() {
  Settings file("extremes.dat");
  KelDataStore& store = file.store();
  makeInt(store, "least", kLeast);
  makeInt(store, "most", kMost);
  makeInt(store, "transient", 5);
  store.CreateInt("fleeting", 5, kLeast, kMost, 0);
  store.CreateFloat("small", -4.9e-324, -1, 1, 1);
  store.CreateFloat("large", kLargest, -kLargest, kLargest, 1);
  store.CreateString("full", 4, "\x80\xE9y\xFF", 1);
  store.CreateString("empty", 4, "", 1);
  store.CreateOroString("wide", 5, OroString(u"\xD83D\xDE00\xFFFF\x0001z"), 1);
  store.CreateOroString("wide empty", 2, OroString::empty(), 1);
  makeInt(store, "last", 9);
  file.write();
  file.integer("least", kLeast).integer("most", kMost).integer("transient", 5).keeps("fleeting");
  file.real("small", -4.9e-324).real("large", kLargest);
  file.text("full", 4, "\x80\xE9y\xFF").text("empty", 4, "");
  file.wide("wide", 5, u"\xD83D\xDE00\xFFFF\x0001z").wide("wide empty", 2, u"");
  file.keeps("absent").keeps("las").keeps("last2").integer("last", 9);
  return file.save();
}

// A second session: over the value where it fits, behind the others where it is new.
bool writeSessions() {
  Settings file("sessions.dat");
  KelDataStore& store = file.store();
  makeInt(store, "number", 1);
  store.CreateString("text", 8, "longer", 1);
  file.write();
  store.CopyLayers(0, 1);
  makeInt(store, "later", 2);
  store.SetInt(nullptr, "number", 3);
  store.SetString(nullptr, "text", "s");
  store.SetInt(nullptr, "later", 4);
  file.write();
  file.integer("number", 3).text("text", 8, "s").integer("later", 4);
  return file.save();
}

// A setting whose room has grown gets records that nobody reads.
bool writeGrown() {
  {
    Settings first("grown.dat");
    first.store().CreateString("text", 3, "abc", 1);
    first.write();
  }
  Settings file("grown.dat");
  KelDataStore& store = file.store();
  store.CreateString("text", 9, "", 1);
  makeInt(store, "last", 0);
  store.SetString(nullptr, "text", "nine char");
  store.SetInt(nullptr, "last", 7);
  file.write();
  file.keeps("text", 9).text("text", 3, "abc").integer("last", 7);
  return file.save();
}

bool writeNames() {
  Settings file("names.dat");
  const std::string longest(255, 'n');
  file.store().CreateDirectory("\xC3\xA4");
  makeInt(file.store(), "\xC3\xA4/\xE9", 10);
  makeInt(file.store(), longest.c_str(), 11);
  file.write();
  file.integer("\xC3\xA4/\xE9", 10).integer(longest.c_str(), 11);
  return file.save();
}

// A name that is too long hides what stands behind it.
bool writeBlobs() {
  Settings file("blobs.dat");
  std::string bytes(4096, '\0');
  for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7 + i / 256);
  const std::string longName(256, 'b');
  file.store().CreateBlob("full", 4096, bytes.data(), 1);
  file.store().CreateBlob("one", 1, "\xAA", 1);
  makeInt(file.store(), "number", 5);
  makeInt(file.store(), longName.c_str(), 6);
  makeInt(file.store(), "behind", 7);
  file.write();
  file.blob("full", bytes).blob("one", "\xAA").integer("number", 5);
  file.keeps(longName.c_str()).keeps("behind");
  return file.save();
}

}  // namespace

int main() {
  const bool written = writeExample() && writeExtremes() && writeSessions() && writeGrown() &&
                       writeNames() && writeBlobs();
  return written ? EXIT_SUCCESS : EXIT_FAILURE;
}
