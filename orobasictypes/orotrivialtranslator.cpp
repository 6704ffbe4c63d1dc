#include "orobasictypes/orotrivialtranslator.h"

#include <utility>

#include "orobasictypes/orostring.h"

namespace {

constexpr int32_t kMaxArguments = 10;    // what substitute() reads
constexpr int32_t kMaxPlaceholder = 99;  // two digits

// The text is made aside, so that `out` may be one of the arguments.
OroString& substituted(OroTrivialTranslator& translator, OroString& out, const char* key,
                       const OroString* const (&arguments)[kMaxArguments]) {
  OroString text;
  translator.lookup(key, text);
  text.substitute(arguments);
  out = std::move(text);
  return out;
}

// Replaces the first "%" and number by the argument. The first place counts, even where it is the
// beginning of a longer number; a text without the number stays.
void replacePlaceholder(OroString& text, int32_t number, const OroString& argument) {
  OroString placeholder("%");
  placeholder.append(OroString(number));
  const int32_t start = text.find(placeholder, 0);
  if (start >= 0) text = text.splice(start, start + placeholder.length(), argument);
}

}  // namespace

bool OroTrivialTranslator::lookup(const char* key, OroString& out) {
  out = OroString(key);
  return true;
}

OroString& OroTrivialTranslator::translate(OroString& out, const char* key) {
  out = OroString();
  lookup(key, out);
  return out;
}

OroString& OroTrivialTranslator::translate1(OroString& out, const char* key, const OroString* a1) {
  return substituted(*this, out, key, {a1});
}

OroString& OroTrivialTranslator::translate2(OroString& out, const char* key, const OroString* a1,
                                            const OroString* a2) {
  return substituted(*this, out, key, {a1, a2});
}

OroString& OroTrivialTranslator::translate3(OroString& out, const char* key, const OroString* a1,
                                            const OroString* a2, const OroString* a3) {
  return substituted(*this, out, key, {a1, a2, a3});
}

OroString& OroTrivialTranslator::translate4(OroString& out, const char* key, const OroString* a1,
                                            const OroString* a2, const OroString* a3,
                                            const OroString* a4) {
  return substituted(*this, out, key, {a1, a2, a3, a4});
}

OroString& OroTrivialTranslator::translate5(OroString& out, const char* key, const OroString* a1,
                                            const OroString* a2, const OroString* a3,
                                            const OroString* a4, const OroString* a5) {
  return substituted(*this, out, key, {a1, a2, a3, a4, a5});
}

OroString& OroTrivialTranslator::translate6(OroString& out, const char* key, const OroString* a1,
                                            const OroString* a2, const OroString* a3,
                                            const OroString* a4, const OroString* a5,
                                            const OroString* a6) {
  return substituted(*this, out, key, {a1, a2, a3, a4, a5, a6});
}

OroString& OroTrivialTranslator::translateArray(OroString& out, const char* key, int32_t count,
                                                const OroString* arguments) {
  OroString text;
  lookup(key, text);
  // In number order, each in what the one before has left: callers rely on it.
  for (int32_t i = 1; i <= count && i <= kMaxPlaceholder; ++i) {
    replacePlaceholder(text, i, arguments[i - 1]);
  }
  out = std::move(text);
  return out;
}

bool OroTrivialTranslator::setLanguage(IOroLanguageID*) { return false; }
