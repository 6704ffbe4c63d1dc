// IOroDataModelWritable: an object that can be written into a model file.
//
// A component's object offers it, and hands itself to IOroDataModelWriter. Plain: no count, no
// query. Thread of the writer.
#pragma once

#include "orobasictypes/oroguid.h"

class BinOutput;
class IOroDataModelWriter;

class IOroDataModelWritable {
 public:
  // Writes itself as typed values. True when all went out.
  virtual bool Write(BinOutput& output) = 0;
  // Writes itself as elements.
  virtual bool WriteTo(IOroDataModelWriter& writer) = 0;
  // What kind of object it is, for the element that holds it.
  virtual GUID GetId() = 0;

 protected:
  ~IOroDataModelWritable() = default;
};
