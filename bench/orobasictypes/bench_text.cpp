// Texts against std::string_view and against ICU, called the way its users call it:
// UnicodeString::fromUTF8 and toUTF8String into a new std::string.

#include <string>
#include <string_view>

#include <unicode/unistr.h>

#include "bench/support/ratios.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orostring.h"

namespace {

// Twenty-four bytes each.
constexpr char shortAscii[] = "Advanced/Batch Process/1";
constexpr char shortMixed[] =
    "Gr\xC3\xB6\xC3\x9F"
    "e in m\xC2\xB2: \xE2\x82\xAC 12,50";

std::string repeated(std::string_view part, size_t bytes) {
  std::string text;
  while (text.size() + part.size() <= bytes) text += part;
  return text;
}

// Sentences in scripts of one, two and three bytes a letter.
std::string mixedText(size_t bytes) {
  return repeated(
      "The quick brown fox jumps over the lazy dog. "
      "Zw\xC3\xB6lf Boxk\xC3\xA4mpfer jagen Viktor quer \xC3\xBC"
      "ber den gro\xC3\x9F"
      "en Sylter Deich. "
      "\xD0\xA1\xD1\x8A\xD0\xB5\xD1\x88\xD1\x8C \xD0\xB5\xD1\x89\xD1\x91 "
      "\xD1\x8D\xD1\x82\xD0\xB8\xD1\x85 \xD0\xBC\xD1\x8F\xD0\xB3\xD0\xBA\xD0\xB8\xD1\x85 "
      "\xE6\x84\x9B\xE5\x9B\xBD\xE8\x80\x85\xE3\x80\x81\xE6\x98\x8E\xE6\x97\xA5\xE3\x81\xAF"
      "\xE6\x99\xB4\xE3\x82\x8C 42 \xE2\x82\xAC.\n",
      bytes);
}

// Handed on by reference, as names are to the broker and the settings.
[[gnu::noipa]] void pass(const KelCString& name) { benchmark::DoNotOptimize(name.text()); }
[[gnu::noipa]] void pass(const std::string_view& name) { benchmark::DoNotOptimize(name.data()); }

// The length of a literal costs the view nothing; that of a text met at run time does. A name that
// was passed on is looked at once more when it ends: one cycle that the view does not have.
const char* volatile met = "IOroRegistry";

void compareBorrowing(bench::Ratios& ratios) {
  ratios.compare(
      "KelCString::borrow of a literal", "std::string_view", 1.1,
      [] { benchmark::DoNotOptimize(KelCString::borrow("IOroRegistry").text()); },
      [] { benchmark::DoNotOptimize(std::string_view("IOroRegistry").data()); });
  ratios.compare(
      "KelCString::borrow of a literal, passed on", "std::string_view", 0,
      [] { pass(KelCString::borrow("IOroRegistry")); },
      [] { pass(std::string_view("IOroRegistry")); });
  ratios.compare(
      "KelCString::borrow of a text, passed on", "std::string_view", 1.1,
      [] { pass(KelCString::borrow(met)); }, [] { pass(std::string_view(met)); });
}

void compareUtf8(bench::Ratios& ratios, const std::string& name, double bar,
                 const std::string& text) {
  ratios.compare(
      "OroString::fromUtf8, " + name, "icu::UnicodeString::fromUTF8", bar,
      [&text] { benchmark::DoNotOptimize(OroString::fromUtf8(text.c_str()).text()); },
      [&text] {
        benchmark::DoNotOptimize(icu::UnicodeString::fromUTF8(text.c_str()).getBuffer());
      });
  const OroString ours = OroString::fromUtf8(text.c_str());
  const icu::UnicodeString theirs = icu::UnicodeString::fromUTF8(text);
  ratios.compare(
      "OroString::toUtf8, " + name, "icu::UnicodeString::toUTF8String", bar,
      [&ours] { benchmark::DoNotOptimize(ours.toUtf8()); },
      [&theirs] {
        std::string out;
        benchmark::DoNotOptimize(theirs.toUTF8String(out).data());
      });
}

}  // namespace

int main(int argc, char** argv) {
  bench::Ratios ratios(argc, argv);
  compareBorrowing(ratios);
  compareUtf8(ratios, "1 MB of ASCII", 0.5, repeated("line of plain text, 0123456789\n", 1 << 20));
  compareUtf8(ratios, "1 MB of mixed text", 1.0, mixedText(1 << 20));
  compareUtf8(ratios, "24 bytes of ASCII", 1.0, shortAscii);
  compareUtf8(ratios, "24 bytes of mixed text", 1.0, shortMixed);
}
