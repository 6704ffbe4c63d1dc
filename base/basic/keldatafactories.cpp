#include "base/basic/keldatafactories.h"

#include "base/basic/keldatafilereader.h"
#include "base/basic/keldatafilewriter.h"
#include "base/basic/keldataregistry.h"
#include "base/basic/keldataxmlreader.h"
#include "base/basic/keldataxmlwriter.h"

namespace {

bool commitDocument(IKelDataVisitor* writer) {
  auto* const file = oroQueryClass<KelDataXMLFile>(writer);
  return file == nullptr || file->Commit();
}

KelDataFactories builtInFactories() {
  KelDataFactories factories;
  factories.defaultXmlReader = []() -> IKelDataVisitor* {
    return new KelDataXMLReader(OroString(), false);
  };
  factories.defaultXmlWriter = []() -> IKelDataVisitor* { return new KelDataXMLWriter; };
  factories.registryReader = []() -> IKelDataVisitor* {
    return new KelDataRegistry(IKelDataVisitor::kReading);
  };
  factories.registryWriter = []() -> IKelDataVisitor* {
    return new KelDataRegistry(IKelDataVisitor::kWriting);
  };
  factories.fileReader = [](const OroString& path, bool notify) -> IKelDataVisitor* {
    return new KelDataFileReader(path, notify);
  };
  factories.fileWriter = [](const OroString& path) -> IKelDataVisitor* {
    return new KelDataFileWriter(path);
  };
  factories.xmlReader = [](const OroString& path, bool notify) -> IKelDataVisitor* {
    return new KelDataXMLReader(path, notify);
  };
  factories.xmlWriter = [](const OroString& path) -> IKelDataVisitor* {
    return new KelDataXMLWriter(path);
  };
  factories.commit = commitDocument;
  return factories;
}

}  // namespace

KelDataFactories& kelDataFactories() {
  static KelDataFactories factories = builtInFactories();
  return factories;
}
