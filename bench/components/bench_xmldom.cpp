// XML documents against the parser that they stand on: a settings document read and walked.

#include <memory>
#include <string>

#include "bench/support/ratios.h"
#include "components/xmldom/xmldocument.h"
#include "framework/kelcomponentmanager.h"
#include "framework/oroobjectbroker.h"
#include "interfaces/IOroDOMXmlElementItr.h"
#include "orobasictypes/orostring.h"
#include "tests/framework/testlibrary.h"
#include "tests/tempfolder.h"

namespace {

constexpr int kValuesPerSection = 30;

std::string settingsDocument(int values) {
  std::string text = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<OroDataStore>\n";
  for (int i = 0; i < values; ++i) {
    const std::string number = std::to_string(i);
    if (i % kValuesPerSection == 0) text += "\t<section name=\"Section " + number + "\">\n";
    text += "\t\t<value name=\"Setting " + number + "\" type=\"text_unicode\">Value of " + number +
            "</value>\n";
    if (i % kValuesPerSection == kValuesPerSection - 1) text += "\t</section>\n";
  }
  return text + "</OroDataStore>\n";
}

// Three levels, as a settings document has them.
size_t walk(IOroDOMXmlElement& element) {
  size_t units = 0;
  OroString text;
  for (IOroDOMXmlElementItr* at = element.children(); !at->atEnd(); at->advance()) {
    IOroDOMXmlElement& child = *at->element();
    units += std::string_view(child.attribute("name")).size();
    if (std::string_view(child.tagName()) != "value") {
      units += walk(child);
      continue;
    }
    child.wideAttribute("type", text);
    units += static_cast<size_t>(text.length());
    child.text(text);
    units += static_cast<size_t>(text.length());
  }
  return units;
}

size_t walk(pugi::xml_node element) {
  size_t bytes = 0;
  for (const pugi::xml_node child : element.children()) {
    bytes += std::string_view(child.attribute("name").value()).size();
    if (std::string_view(child.name()) != "value") {
      bytes += walk(child);
      continue;
    }
    bytes += std::string(child.attribute("type").value()).size();
    bytes += std::string(child.child_value()).size();
  }
  return bytes;
}

void compareReading(bench::Ratios& ratios, const tests::TempFolder& folder, int values) {
  const std::string name = std::to_string(values) + " settings";
  const auto file = folder.write(name + ".xml", settingsDocument(values));
  const OroPath path(tests::wideTextOf(file));
  ratios.compare(
      name + ", read and walked", "pugixml", 0,
      [&] {
        const IPtr<IOroDOMXml> document(new XmlDocument);
        document->load(path);
        benchmark::DoNotOptimize(walk(*document->root()));
      },
      [&] {
        pugi::xml_document document;
        document.load_file(file.c_str());
        benchmark::DoNotOptimize(walk(document.document_element()));
      });
  const IPtr<IOroDOMXml> ours(new XmlDocument);
  ours->load(path);
  pugi::xml_document theirs;
  theirs.load_file(file.c_str());
  const OroPath saved(tests::wideTextOf(folder.file("ours.xml")));
  const auto peerFile = folder.file("theirs.xml");
  ratios.compare(
      name + ", saved (ours to the disk itself)", "pugixml save_file", 0,
      [&] { ours->save(saved); }, [&] { theirs.save_file(peerFile.c_str()); });
}

}  // namespace

int main(int argc, char** argv) {
  // Counts change under the broker's lock, as they do in the product.
  KelComponentManager manager;
  OroObjectBroker broker(&manager);
  oroSetBroker(&broker);
  bench::Ratios ratios(argc, argv);
  const tests::TempFolder folder;
  compareReading(ratios, folder, 3000);
  compareReading(ratios, folder, 30000);
  oroSetBroker(nullptr);
}
