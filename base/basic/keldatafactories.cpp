#include "base/basic/keldatafactories.h"

#include "base/basic/keldatafilereader.h"
#include "base/basic/keldatafilewriter.h"
#include "base/basic/keldataregistry.h"

namespace {

KelDataFactories builtInFactories() {
  KelDataFactories factories;
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
  return factories;
}

}  // namespace

KelDataFactories& kelDataFactories() {
  static KelDataFactories factories = builtInFactories();
  return factories;
}
