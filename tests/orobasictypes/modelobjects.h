// Objects and ids for the tests of model files.
#pragma once

#include <cstdint>

#include "interfaces/IOroDataModelReadable.h"
#include "interfaces/IOroDataModelReader.h"
#include "interfaces/IOroDataModelWritable.h"
#include "interfaces/IOroDataModelWriter.h"
#include "orobasictypes/binio.h"
#include "orobasictypes/oroguid.h"

namespace tests {

constexpr GUID boxId = {
    0x1DBFCAD9, 0x0338, 0x4923, {0xA3, 0x29, 0xEA, 0xEA, 0x81, 0x06, 0x3F, 0xF0}};
constexpr GUID otherId = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};

// Saves itself as a bare value one way and as an element the other.
class Box : public IOroDataModelReadable, public IOroDataModelWritable {
 public:
  bool Read(BinInput& input) override { return input.Read(&size, 1) && answer; }
  bool ReadFrom(IOroDataModelReader& reader) override {
    return reader.ReadDoublePair(corner) && answer;
  }
  bool Write(BinOutput& output) override { return output.Write(&size, 1) && answer; }
  bool WriteTo(IOroDataModelWriter& writer) override {
    return writer.WriteDoublePair(corner) && answer;
  }
  GUID GetId() override { return boxId; }

  int32_t size = 0;
  double corner[2] = {};
  bool answer = true;  // what all of them give
};

}  // namespace tests
