// SubIter: walks the children of one registry node in the order of their making.
//
// A plain object that its maker deletes. The node must outlive it. Removed children are skipped.
#pragma once

#include <cstdint>

#include "orobasictypes/kelcstring.h"

class KelChildTable;

class SubIter {
 public:
  // Over nothing when there is no table. Stands on the first child.
  explicit SubIter(const KelChildTable* children);
  SubIter(const SubIter&) = delete;
  SubIter& operator=(const SubIter&) = delete;
  virtual ~SubIter() = default;

  virtual void rewind();
  virtual void rewindAgain();  // does the same; both places of the table are in use
  virtual void next();
  virtual bool atEnd() const;
  // The child's value and key; the empty text at the end. Borrowed from the node.
  virtual const KelCString& value() const;
  virtual const KelCString& key() const;

 private:
  const KelChildTable* children_;
  int32_t position_ = 0;
};
