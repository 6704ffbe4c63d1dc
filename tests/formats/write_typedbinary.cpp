// Writes typed binary files into the current directory, and beside each what it holds.
#include <bit>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "orobasictypes/binio.h"
#include "orobasictypes/oropath.h"
#include "tests/formats/json.h"

namespace {

// Puts each field into the file and into what it holds.
class Fields {
 public:
  explicit Fields(const char* name) : name_(name), file_(OroPath(OroString(name))) {
    json_.open('[');
  }

  void header(int32_t id, int32_t version) {
    good_ = BinMagic(id, version).Write(file_) && good_;
    json_.open('[').text("header").integer(id).integer(version).close();
  }
  void negativeHeader(int32_t value) {
    good_ = BinMagic(value).Write(file_) && good_;
    json_.open('[').text("negative header").integer(value).close();
  }
  // Integers that fit the width.
  template <std::integral T>
  void integers(int width, const std::vector<T>& values) {
    good_ = file_.Write(values.data(), width, static_cast<int64_t>(values.size())) && good_;
    json_.open('[').text(std::is_signed_v<T> ? "signed" : "unsigned").integer(width).open('[');
    for (const T value : values) json_.integer(value);
    json_.close().close();
  }
  template <std::floating_point T>
  void numbers(const std::vector<T>& values) {
    good_ = file_.Write(values.data(), static_cast<int64_t>(values.size())) && good_;
    json_.open('[').text(sizeof(T) == 4 ? "float" : "double").open('[');
    for (const T value : values) json_.number(value);
    json_.close().close();
  }
  void units(const char16_t* text) {
    good_ = OroString(text).write(file_) && good_;
    json_.open('[').text("units").text(std::u16string_view(text)).close();
  }
  void bytes(const std::string& bytes) {
    good_ = file_.WriteBytes(bytes.data(), static_cast<int64_t>(bytes.size())) && good_;
    json_.open('[').text("bytes").text(bytes).close();
  }

  bool save() {
    json_.close().save(name_);
    return file_.FlushAndClose() && good_;
  }

 private:
  std::string name_;
  BinOutputFile file_;
  tests::Json json_;
  bool good_ = true;
};

bool writeExample() {
  Fields fields("example.bin");
  fields.header(0x315E97, 2);
  fields.integers<int32_t>(4, {-2});
  fields.numbers<double>({2.5, -0.0});
  fields.integers<uint32_t>(3, {0x010203});
  fields.numbers<float>({1.5f});
  return fields.save();
}

template <class T>
void putExtremes(Fields& fields, int width) {
  using Wide = std::conditional_t<std::is_signed_v<T>, int64_t, uint64_t>;
  const int unused = 64 - 8 * std::min<int>(width, sizeof(T));
  const auto most = static_cast<T>(std::numeric_limits<Wide>::max() >> unused);
  const auto least = static_cast<T>(std::numeric_limits<Wide>::min() >> unused);
  fields.integers<T>(width,
                     {0, 1, most, least, static_cast<T>(most - 1), static_cast<T>(most / 3)});
}

bool writeWidths() {
  Fields fields("widths.bin");
  for (int width = 1; width <= 8; ++width) {
    putExtremes<int8_t>(fields, width);
    putExtremes<uint8_t>(fields, width);
    putExtremes<int16_t>(fields, width);
    putExtremes<uint16_t>(fields, width);
    putExtremes<int32_t>(fields, width);
    putExtremes<uint32_t>(fields, width);
    putExtremes<uint64_t>(fields, width);
  }
  return fields.save();
}

template <class T>
void putSpecials(Fields& fields) {
  using Limits = std::numeric_limits<T>;
  fields.numbers<T>({0, T(-0.0), 1, T(-0.1), Limits::max(), Limits::lowest(), Limits::min(),
                     Limits::denorm_min(), Limits::infinity(), -Limits::infinity(),
                     Limits::quiet_NaN(), Limits::signaling_NaN()});
}

bool writeFloats() {
  Fields fields("floats.bin");
  putSpecials<float>(fields);
  putSpecials<double>(fields);
  return fields.save();
}

bool writeChunks() {
  Fields fields("chunks.bin");
  fields.header(0, 0);
  fields.header(0x7FFFFF, 255);
  fields.negativeHeader(-1);
  fields.negativeHeader(-200);
  fields.units(u"caf\u00E9 \u20AC \xD83D\xDE00");
  fields.bytes(std::string("as it is\0\xFF", 10));
  fields.units(u"");
  return fields.save();
}

// Far more than any buffer, in pieces of all sizes.
bool writeLarge() {
  Fields fields("large.bin");
  std::mt19937_64 random(7);
  for (int i = 0; i < 300; ++i) {
    std::vector<uint64_t> integers(random() % 60);
    for (uint64_t& value : integers) value = random() & 0xFFFFFFFFFF;
    fields.integers<uint64_t>(5 + i % 4, integers);
    std::vector<double> numbers(random() % 60);
    for (double& value : numbers) value = std::bit_cast<double>(random() >> 2);
    fields.numbers(numbers);
    fields.bytes(std::string(random() % 3, 'x'));
  }
  return fields.save();
}

}  // namespace

int main() {
  const bool written =
      writeExample() && writeWidths() && writeFloats() && writeChunks() && writeLarge();
  return written ? EXIT_SUCCESS : EXIT_FAILURE;
}
