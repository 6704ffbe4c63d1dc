// BracketTranslator: shows that a text went through the translator, by brackets around its key.
#pragma once

#include "interfaces/IOroTranslator.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/orotrivialtranslator.h"

namespace tests {

class BracketTranslator : public OroTrivialTranslator<> {
 public:
  bool lookup(const char* key, OroString& out) override {
    out = OroString("[");
    out.append(key);
    out.append("]");
    return true;
  }
};

}  // namespace tests
