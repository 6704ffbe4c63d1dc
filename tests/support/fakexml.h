// FakeXml: a broker whose service "IOroDOMXml" is a small XML library of the test itself.
//
//   tests::FakeXml xml;
//   xml.registerService(KelCString::borrow("IOroErrorService"), &errors);
//   xml.savesLeft = 0;  // from now on nothing can be saved
//
// A new document at each request. It reads elements, attributes, texts, entities and comments, is
// strict about nesting and about the one root, and saves through a temporary file, with a tab for
// each level. The documents find their FakeXml by themselves; one at a time. A test may put another
// library in the place of this one.
#pragma once

#include <cstdint>
#include <limits>

#include "interfaces/IOroDOMXml.h"
#include "tests/support/fakebroker.h"

namespace tests {

// A document by itself.
IOroDOMXml* newFakeXmlDocument();

class FakeXml : public FakeBroker {
 public:
  FakeXml() { current() = this; }
  ~FakeXml() override { current() = nullptr; }

  int32_t getService(const KelCString& interfaceName, void** out) override;

  IOroDOMXml* (*make)() = newFakeXmlDocument;       // a document for each request
  bool available = true;                            // whether documents can be had
  int savesLeft = std::numeric_limits<int>::max();  // how many succeed from now on
  int documents = 0;                                // made so far
  int loads = 0;                                    // calls of load
  int saves = 0;                                    // calls of save

  static FakeXml*& current();
};

}  // namespace tests
