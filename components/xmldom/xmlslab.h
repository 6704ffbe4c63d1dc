// XmlSlab: the storage of many counted objects of one class that all end together.
//
//   XmlSlab<XmlElement> elements;
//   XmlElement* element = elements.make(document);
//
// Objects stand in blocks and keep their place. The slab holds the one reference on each, so that
// an IPtr which comes and goes does not end it; weak references are told when the slab ends them.
// One thread at a time.
#pragma once

#include <cstddef>
#include <new>
#include <utility>

#include "orobasictypes/kelrealloc.h"

template <class T>
class XmlSlab {
 public:
  XmlSlab() = default;
  ~XmlSlab() { clear(); }
  XmlSlab(const XmlSlab&) = delete;
  XmlSlab& operator=(const XmlSlab&) = delete;

  template <class... Arguments>
  T* make(Arguments&&... arguments) {
    if (newest_ == nullptr || newest_->used == kObjects) addBlock();
    T* const object = new (newest_->place(newest_->used)) T(std::forward<Arguments>(arguments)...);
    ++newest_->used;
    object->addRef();
    return object;
  }

  // Ends all objects.
  void clear() {
    while (newest_ != nullptr) {
      for (size_t i = newest_->used; i-- > 0;) {
        T* const object = std::launder(reinterpret_cast<T*>(newest_->place(i)));
        object->releaseNoDestroy();
        object->~T();
      }
      Block* const older = newest_->older;
      kelFree(newest_);
      newest_ = older;
    }
  }

 private:
  static constexpr size_t kObjects = 256;
  struct Block {
    void* place(size_t i) { return storage + i * sizeof(T); }
    Block* older;
    size_t used;
    alignas(T) std::byte storage[kObjects * sizeof(T)];
  };

  void addBlock() {
    void* room = nullptr;
    kelMalloc(room, sizeof(Block), 1);
    Block* const block = new (room) Block;
    block->older = newest_;
    block->used = 0;
    newest_ = block;
  }

  Block* newest_ = nullptr;  // the one that is being filled
};
