// VertexArrayImp: vertices by their index, for whoever draws or meshes them.
//
// A view of something else that must live as long (RealPArray::MakeVertexArray). As the array
// behind it, for one thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class VertexArrayImp : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "VertexArrayImp"; }

  // Indices as in the array behind it.
  virtual void GetVertexF(int32_t i, float out[3]) const = 0;
  virtual void GetVertexD(int32_t i, double out[3]) const = 0;
};
