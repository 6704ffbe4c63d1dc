// The services that the memory layer works with. All are borrowed and may be null, which is normal:
// components bring them. For the sources of this folder; any thread.
#pragma once

#include <new>

class IGfxRenderer;
class IMemChecker;

namespace OroMM {
class IOroMManager;
}

namespace kelmemory {

// Looked up once, and kept for the life of the process whether it was there or not. A look-up that
// comes back here on its own thread, because memory is out in it, finds nothing.
OroMM::IOroMManager* manager();
IGfxRenderer* renderer();

// Looked up again as long as there is none, and null while it says that it is not active.
IMemChecker* activeChecker();

// An object in storage of its own that is made at the first call and never destroyed: static
// objects still allocate when the process ends, and the heap may be empty.
template <class T>
T& immortal() {
  alignas(T) static unsigned char storage[sizeof(T)];
  static T* const object = new (static_cast<void*>(storage)) T;
  return *object;
}

}  // namespace kelmemory
