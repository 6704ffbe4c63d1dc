#include "framework/kelregiter.h"

#include "framework/kelregistry.h"
#include "framework/subiter.h"

KelRegIter::KelRegIter(KelRegistry& registry, SubIter* firstLevel) : registry_(&registry) {
  levels_.add(firstLevel);
}

KelRegIter::~KelRegIter() {
  while (!levels_.isEmpty()) pop();
}

void KelRegIter::rewind() {
  while (levels_.count() > 1) pop();
  top().rewind();
}

void KelRegIter::first() {
  rewind();
  top().rewindAgain();
  settle();
}

void KelRegIter::next() {
  top().next();
  settle();
}

bool KelRegIter::atEnd() { return top().atEnd(); }

void KelRegIter::value(KelCString& out) { out = top().value(); }

void KelRegIter::key(KelCString& out) {
  out = levels_[1]->key();
  for (int32_t i = 2; i <= levels_.count(); ++i) {
    out.append('/');
    out.append(levels_[i]->key().text());
  }
}

void KelRegIter::pop() {
  delete levels_.last();
  levels_.pop();
}

// Enters the directory that the iterator stands on.
void KelRegIter::descend() {
  KelCString path;
  key(path);
  SubIter* level = registry_->subIter(path);
  if (level == nullptr) level = new SubIter(nullptr);  // a child with an empty key
  levels_.add(level);
  level->rewind();
}

// Goes on to the nearest entry. Only one level is left here, and only before the search: callers
// that walk deeper than one level expect to stop when a level runs out within it.
void KelRegIter::settle() {
  if (atEnd() && levels_.count() >= 2) {
    pop();
    top().next();
  }
  while (!atEnd() && top().value().isEmpty()) {
    if (maxDepth_ != 0 && levels_.count() >= maxDepth_) {
      top().next();
    } else {
      descend();
    }
  }
}
