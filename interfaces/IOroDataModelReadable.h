// IOroDataModelReadable: an object that a model file can be read into.
//
// A component's object offers it, and hands itself to IOroDataModelReader. Plain: no count, no
// query. Thread of the reader.
#pragma once

class BinInput;
class IOroDataModelReader;

class IOroDataModelReadable {
 public:
  // Reads itself as typed values, from where the input stands. True when it came whole.
  virtual bool Read(BinInput& input) = 0;
  // Reads itself as elements.
  virtual bool ReadFrom(IOroDataModelReader& reader) = 0;

 protected:
  ~IOroDataModelReadable() = default;
};
