// A session that never ends by itself, to be killed: it sets the settings of a document in turn and
// says so, and now and then merges the journal by reading or commits.
//
//   settingssession FOLDER FIRST
//
// The document is "settings" in the folder. Set number n puts n into the integer "i<n % 10>" and,
// each eighth time, a blob of that many bytes into "S/blob". When a set is done the program writes
// its number and a line feed to its standard output, as one block.

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "base/basic/keldatastore.h"
#include "components/xmldom/xmldocument.h"
#include "framework/kelregistry.h"
#include "interfaces/IKelDataItem.h"
#include "tests/support/fakexml.h"

namespace {

constexpr uint32_t kSaved = IKelDataItem::kPersistent | IKelDataItem::kJournalled;

void addArgument(KelRegistry& registry, const char* key, const std::string& text) {
  KelCString path(key);
  registry.setValue(path, KelCString(text.c_str()));
}

void setOne(KelDataStore& store, int number) {
  store.SetInt(nullptr, ("i" + std::to_string(number % 10)).c_str(), number);
  if (number % 8 == 0) {
    const std::vector<unsigned char> data(static_cast<size_t>(number % 20000),
                                          static_cast<unsigned char>(number));
    store.SetBlob(nullptr, "S/blob", data.data(), static_cast<int32_t>(data.size()));
  }
  const std::string line = std::to_string(number) + "\n";
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fflush(stdout);
}

[[noreturn]] void run(int number) {
  KelDataStore store(true, 5, 20);
  for (int i = 0; i < 10; ++i) {
    store.CreateInt(("i" + std::to_string(i)).c_str(), 0, 0, INT32_MAX, kSaved);
  }
  store.CreateDirectory("S");
  store.CreateBlob("S/blob", 0, nullptr, kSaved);
  store.Accept(store.GetReader());
  for (;; ++number) {
    setOne(store, number);
    if (number % 7 == 0) {
      store.SetReader(store.CreateDefaultReader());
      store.Accept(store.GetReader());
    }
    if (number % 11 == 0) store.CommitWriter();
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return EXIT_FAILURE;
  tests::FakeXml services;
  services.make = []() -> IOroDOMXml* { return new XmlDocument; };
  auto* const registry = new KelRegistry;
  services.registerService(KelCString::borrow("IOroRegistry"), registry);
  const std::string document = std::string(argv[1]) + "/settings";
  addArgument(*registry, "MAIN_ARGV/1", "-inifile=" + document);
  addArgument(*registry, "MAIN_ARGV/2", "-ini_out=" + document);
  run(std::atoi(argv[2]));
}
