// The settings document and its journal: reading a document into the reader's table, one journalled
// set, and the commit at the end of a session.
//
// Peers: the XML parser alone that the library stands on, with and without a std::unordered_map of
// the values; one write of the line to a file that is opened and closed for it; the parser reading
// the document and saving it as often as a commit does, brought to the disk as well.

#include <string>
#include <unordered_map>
#include <utility>

#include "base/basic/keldatastore.h"
#include "base/basic/keldataxmlreader.h"
#include "bench/support/ratios.h"
#include "components/xmldom/xmldocument.h"
#include "framework/kelregistry.h"
#include "interfaces/IKelDataItem.h"
#include "orobasictypes/orowholefile.h"
#include "platform/descriptor.h"
#include "tests/platform/textof.h"
#include "tests/support/fakexml.h"
#include "tests/tempfolder.h"

namespace {

constexpr uint32_t kSaved = IKelDataItem::kPersistent | IKelDataItem::kJournalled;
constexpr int kValuesPerSection = 30;

std::string settingsDocument(int values) {
  std::string text = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<OroDataStore>\n";
  for (int i = 0; i < values; ++i) {
    const std::string number = std::to_string(i);
    const bool isText = i % 2 == 0;
    if (i % kValuesPerSection == 0) text += "\t<section name=\"Section " + number + "\">\n";
    text += "\t\t<value name=\"Setting " + number + "\" type=\"" +
            (isText ? "text_unicode\">Value of " : "integer\">") + number + "</value>\n";
    if (i % kValuesPerSection == kValuesPerSection - 1) text += "\t</section>\n";
  }
  return text + "</OroDataStore>\n";
}

using Map = std::unordered_map<std::string, std::pair<std::string, std::string>>;

void fill(const pugi::xml_node& element, std::string& path, Map& map) {
  const size_t length = path.size();
  for (const pugi::xml_node child : element.children()) {
    path += child.attribute("name").value();
    if (std::string_view(child.name()) == "value") {
      map[path] = {child.attribute("type").value(), child.child_value()};
    } else {
      path += '/';
      fill(child, path, map);
    }
    path.resize(length);
  }
}

class Files {
 public:
  Files() {
    services_.make = []() -> IOroDOMXml* { return new XmlDocument; };
    auto* const registry = new KelRegistry;
    services_.registerService(KelCString::borrow("IOroRegistry"), registry);
    for (const char* option : {"-inifile=", "-ini_out="}) {
      KelCString key((std::string("MAIN_ARGV/") + option).c_str());
      registry->setValue(key, KelCString((option + system("session")).c_str()));
    }
  }

  void write(const std::string& name, int values) const {
    folder_.write(name, settingsDocument(values));
  }
  void write(const std::string& name, const std::string& bytes) const {
    folder_.write(name, bytes);
  }
  OroPath path(const std::string& name) const {
    return OroPath(OroString(tests::textOf(folder_.file(name)).c_str()));
  }
  std::string system(const std::string& name) const { return folder_.file(name).string(); }

 private:
  tests::TempFolder folder_;
  tests::FakeXml services_;
};

void compareReading(bench::Ratios& ratios, const Files& files, int values) {
  const std::string name = std::to_string(values) + " settings";
  files.write(name, values);
  const OroPath path = files.path(name);
  const std::string file = files.system(name);
  const auto ours = [&] {
    KelDataXMLReader reader(path, false);
    benchmark::DoNotOptimize(reader.Begin());
  };
  ratios.compare(name + ", read", "pugixml and an unordered_map", 1.3, ours, [&] {
    pugi::xml_document document;
    document.load_file(file.c_str());
    Map map;
    std::string prefix;
    fill(document.document_element(), prefix, map);
    benchmark::DoNotOptimize(map.size());
  });
  ratios.compare(name + ", read", "pugixml alone", 0, ours, [&] {
    pugi::xml_document document;
    benchmark::DoNotOptimize(document.load_file(file.c_str()).offset);
  });
}

void compareSet(bench::Ratios& ratios, const Files& files) {
  files.write("session", 1);
  KelDataStore store(true, 50, 3000);
  store.CreateDirectory("Section");
  store.CreateInt("Section/Setting", 0, INT32_MIN, INT32_MAX, kSaved);
  int32_t value = 1000000;
  const OroPath floor = files.path("floor");
  const std::string line =
      "<section name=\"Section\"><value name=\"Setting\" type=\"integer\">1000000</value>"
      "</section>\n";
  ratios.compare(
      "a journalled set", "write of the line to a file opened for it", 3,
      [&] { store.SetInt(nullptr, "Section/Setting", ++value); },
      [&] {
        const int file = platform::openDescriptor(
            floor.wideText(), platform::openWrite | platform::openCreate | platform::openAppend);
        benchmark::DoNotOptimize(platform::writeDescriptor(file, line.data(), line.size()));
        platform::closeDescriptor(file);
      });
}

struct ToFile : pugi::xml_writer {
  explicit ToFile(const OroPath& path) { file.open(path); }
  void write(const void* data, size_t size) override {
    file.write(static_cast<const char*>(data), size);
  }
  OroWholeFile file;
};

void compareCommit(bench::Ratios& ratios, const Files& files, int values) {
  files.write("session", values);
  files.write("theirs", values);
  KelDataStore store(true, 50, 3000);
  store.CreateInt("Setting", 0, INT32_MIN, INT32_MAX, kSaved);
  int32_t value = 0;
  const std::string file = files.system("theirs");
  const OroPath path = files.path("theirs");
  ratios.compare(
      "commit of " + std::to_string(values) + " settings", "pugixml, load and save twice", 0,
      [&] {
        store.SetInt(nullptr, "Setting", ++value);
        store.CommitWriter();
      },
      [&] {
        for (int i = 0; i < 2; ++i) {
          pugi::xml_document document;
          document.load_file(file.c_str());
          ToFile target(path);
          document.save(target);
          target.file.commit();
        }
      });
}

}  // namespace

int main(int argc, char** argv) {
  bench::Ratios ratios(argc, argv);
  const Files files;
  compareReading(ratios, files, 3000);
  compareReading(ratios, files, 300000);
  compareSet(ratios, files);
  compareCommit(ratios, files, 3000);
  return 0;
}
