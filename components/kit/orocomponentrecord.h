// OroComponentRecord: all that a component library says about itself, in one constant.
//
//   constexpr OroClassEntry kClasses[] = {
//       {{0x7A3C9F10, 0x52E4, 0x4B0D, {0x9A, 0x61, 0x0E, 0x3D, 0x77, 0x21, 0xC4, 0x58}},
//        KelGreeter::className(), OroSharing::shared, oroMake<KelGreeter>},
//   };
//   const OroComponentRecord oroComponentRecord{"hello", kComponentId, kClasses};
//
// A library defines oroComponentRecord once and links componentkit, which brings its EntryPoint.
#pragma once

#include <cstdint>
#include <span>

#include "orobasictypes/iorounknown.h"
#include "orobasictypes/oroguid.h"

// What getClassObject answers for an object of the class.
enum class OroSharing : int32_t {
  eachNew = 1,  // a new object for each request, owned by whoever takes the first reference
  shared = 2,   // one object for the process; make the class the default of its interfaces
};

struct OroClassEntry {
  GUID id;
  const char* className;  // what its objects answer to getClassName
  OroSharing sharing;
  IOroUnknown* (*make)();  // a new object, count 0; null or an exception is a failure
};

struct OroComponentRecord {
  const char* name;  // as in messages and in the application description
  GUID id;
  std::span<const OroClassEntry> classes;
  void (*started)() = nullptr;   // called once the broker can be asked
  void (*stopping)() = nullptr;  // called once, when the component is to end its work
  // How the names of its XLIFF files in the directory named "language" begin ("points" for
  // "points_de"); null for a component whose texts stand in the application's own table.
  const char* translations = nullptr;
};

// The usual `make`.
template <class T>
IOroUnknown* oroMake() {
  return new T;
}

// Defined by each component library.
extern const OroComponentRecord oroComponentRecord;
