#include "framework/subiter.h"

#include "framework/kelchildtable.h"
#include "framework/kelregistry.h"

namespace {
const KelCString kNothing;
}

SubIter::SubIter(const KelChildTable* children) : children_(children) { SubIter::next(); }

void SubIter::rewind() {
  position_ = 0;
  next();
}

void SubIter::rewindAgain() { rewind(); }

void SubIter::next() {
  if (children_ == nullptr) return;
  do {
    ++position_;
  } while (position_ <= children_->nodeCount() && children_->node(position_) == nullptr);
}

bool SubIter::atEnd() const { return children_ == nullptr || position_ > children_->nodeCount(); }

const KelCString& SubIter::value() const {
  return atEnd() ? kNothing : children_->node(position_)->ownValue();
}

const KelCString& SubIter::key() const { return atEnd() ? kNothing : children_->key(position_); }
