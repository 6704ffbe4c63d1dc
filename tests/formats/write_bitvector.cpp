// Writes files of bit vectors into the current directory, and beside each what it holds.
#include <cstdlib>
#include <random>
#include <vector>

#include "orobasictypes/binio.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/oropath.h"
#include "tests/formats/json.h"

namespace {

class Vectors {
 public:
  explicit Vectors(const char* name) : name_(name), file_(OroPath(OroString(name))) {
    json_.open('[');
  }
  void version(int32_t version) { file_.SetFileVersion(version); }
  // What has to become of it is told by who knows it.
  void put(const BitVector& bits, bool sparse) {
    good_ = bits.Write(file_) && good_;
    json_.open('{').key("words").integer((int64_t{bits.MaximumBit()} + 1) / 32);
    json_.key("form").integer(sparse ? 1 : 0).key("count").integer(bits.KnownCount());
    json_.key("bits").open('[');
    for (int32_t b = bits.NextSet(-1); b >= 0; b = bits.NextSet(b)) json_.integer(b);
    json_.close().close();
  }
  bool save() {
    json_.close().save(name_);
    return file_.FlushAndClose() && good_;
  }

 private:
  const char* name_;
  BinOutputFile file_;
  tests::Json json_;
  bool good_ = true;
};

BitVector bitsOf(const std::vector<int32_t>& set, int32_t maximumBit) {
  BitVector bits(maximumBit);
  for (const int32_t b : set) bits.Set(b);
  return bits;
}

bool writeExample() {
  Vectors vectors("example.bits");
  vectors.put(bitsOf({1, 40, 1100}, 1119), true);
  return vectors.save();
}

bool writeForms() {
  Vectors vectors("forms.bits");
  vectors.put(bitsOf({}, 0), false);
  vectors.put(bitsOf({0, 31}, 0), false);
  vectors.put(bitsOf({}, 2000), true);
  BitVector all(1055);
  all.Not();  // not counted, and 33 words are: the count is found
  vectors.put(all, false);
  BitVector uncounted(63);
  uncounted.Not();
  vectors.put(uncounted, false);
  vectors.version(12);
  vectors.put(bitsOf({7}, 3199), false);
  vectors.version(13);
  vectors.put(bitsOf({7}, 3199), true);
  return vectors.save();
}

bool writeSizes() {
  Vectors vectors("sizes.bits");
  std::mt19937 random(9);
  for (const int32_t maximum : {31, 1023, 1024, 40000, 131071, 200000}) {
    for (const uint32_t kept : {3U, 200U}) {
      BitVector bits(maximum);
      for (int32_t b = 0; b <= maximum; ++b) {
        if (random() % kept == 0) bits.Set(b);
      }
      vectors.put(bits, kept == 200 && maximum > 1023);
    }
  }
  return vectors.save();
}

}  // namespace

int main() { return writeExample() && writeForms() && writeSizes() ? EXIT_SUCCESS : EXIT_FAILURE; }
