// Writes model files into the current directory, and beside each what it holds.
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "interfaces/IOroDataModelWritable.h"
#include "interfaces/IOroDataModelWriter.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orofilewrite.h"
#include "orobasictypes/oroguid.h"
#include "orobasictypes/oropath.h"
#include "tests/formats/json.h"

namespace {

constexpr GUID boxId = {
    0x1DBFCAD9, 0x0338, 0x4923, {0xA3, 0x29, 0xEA, 0xEA, 0x81, 0x06, 0x3F, 0xF0}};
constexpr char boxIdText[] = "{1DBFCAD9-0338-4923-A329-EAEA81063FF0}";

class Box : public IOroDataModelWritable {
 public:
  bool Write(BinOutput&) override { return true; }
  bool WriteTo(IOroDataModelWriter&) override { return true; }
  GUID GetId() override { return boxId; }
};

// Puts each item into the file and into what it holds.
class Items {
 public:
  Items(const char* name, int32_t fileVersion) : name_(name), writer_(fileVersion) {
    good_ = writer_.Open(OroPath(OroString(name)));
    json_.open('{').key("version").integer(fileVersion >= 1 && fileVersion <= 9 ? 0 : 1);
    json_.key("items").open('[');
  }

  void begin(int32_t tag, int32_t version) {
    good_ = writer_.BeginElement(tag, version) && good_;
    json_.open('[').text("element").integer(tag).integer(version).open('[');
  }
  void end() {
    good_ = writer_.EndElement() && good_;
    json_.close().close();
  }
  void beginObject(int32_t version) {
    Box box;
    good_ = writer_.BeginObject(box, version) && good_;
    json_.open('[').text("object").text(boxIdText).integer(version).open('[');
  }
  void endObject() {
    good_ = writer_.EndObject() && good_;
    json_.close().close();
  }
  void beginNamed(const char* name) {
    good_ = writer_.BeginStringObject(KelCString(name)) && good_;
    json_.open('[').text("named object").text(name).open('[');
  }
  void endNamed() {
    good_ = writer_.EndStringObject() && good_;
    json_.close().close();
  }

  void point(const std::vector<double>& values) {
    list("point", values, writer_.WritePoint(values.data()));
  }
  void matrix(const std::vector<double>& values) {
    list("matrix", values, writer_.WriteMatrix(values.data()));
  }
  void doubles(const std::vector<double>& values) {
    list("doubles", values, writer_.WriteDoublePair(values.data()));
  }
  void floats(const std::vector<float>& values) {
    list("floats", values, writer_.WriteFloatPair(values.data()));
  }
  void text(const std::string& text) {
    good_ = writer_.WriteText(KelCString(text.c_str())) && good_;
    json_.open('[').text("text").text(text).close();
  }
  void wideText(const std::u16string& text) {
    good_ = writer_.WriteOroString(OroString(text.c_str())) && good_;
    json_.open('[').text("wide text").text(text).close();
  }
  void id() {
    good_ = writer_.WriteId(boxId) && good_;
    json_.open('[').text("id").text(boxIdText).close();
  }

  void number(double value) { bare("double", value, writer_.WriteDouble(value)); }
  void number(float value) { bare("float", value, writer_.WriteFloat(value)); }
  void integer(int8_t value) { bareInteger("int8", value, writer_.WriteInt8(value)); }
  void integer(uint8_t value) { bareInteger("uint8", value, writer_.WriteUInt8(value)); }
  void integer(int32_t value) { bareInteger("int32", value, writer_.WriteInt32(value)); }
  void integer(uint32_t value) { bareInteger("uint32", value, writer_.WriteUInt32(value)); }

  bool save() {
    keep();
    return writer_.Close() && good_;
  }
  // Leaves the file as a writer does that was stopped: the root has no size.
  bool cutOff() {
    keep();
    writer_.BeginElement(1, 0);
    return good_;
  }

 private:
  void keep() { json_.close().close().save(name_); }
  template <class T>
  void list(const char* kind, const std::vector<T>& values, bool written) {
    json_.open('[').text(kind);
    for (const T value : values) json_.number(value);
    json_.close();
    good_ = written && good_;
  }
  void bare(const char* kind, double value, bool written) {
    json_.open('[').text(kind).number(value).close();
    good_ = written && good_;
  }
  void bareInteger(const char* kind, int64_t value, bool written) {
    json_.open('[').text(kind).integer(value).close();
    good_ = written && good_;
  }

  std::string name_;
  OroFileWrite<> writer_;
  tests::Json json_;
  bool good_ = true;
};

// Sizes of 8 bytes, and of 4.
constexpr int32_t wide = 0;
constexpr int32_t narrow = 1;

bool writeExample(const char* name, int32_t fileVersion) {
  Items items(name, fileVersion);
  items.point({1, 2, 3});
  items.beginObject(5);
  items.integer(int32_t{7});
  items.wideText(u"A\u00E9");
  items.endObject();
  return items.save();
}

bool writeEmpty() { return Items("empty.model", wide).save(); }

template <class T>
void putExtremes(Items& items) {
  items.integer(std::numeric_limits<T>::min());
  items.integer(std::numeric_limits<T>::max());
  items.integer(static_cast<T>(-2));
}

bool writeAll(const char* name, int32_t fileVersion) {
  Items items(name, fileVersion);
  items.begin(0xFFFFFF, 255);
  items.doubles({-0.0, std::numeric_limits<double>::infinity()});
  items.floats({1.5f, std::numeric_limits<float>::quiet_NaN()});
  items.matrix({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 0.1});
  items.begin(0, 0);
  items.end();
  items.end();
  items.beginNamed("name");
  items.id();
  items.beginObject(0);
  items.beginNamed("");
  items.endNamed();
  items.endObject();
  items.endNamed();
  items.text("caf\xE9");
  items.text("");
  items.wideText(u"\u20AC \xD83D\xDE00");
  items.wideText(u"");
  putExtremes<int8_t>(items);
  putExtremes<uint8_t>(items);
  putExtremes<int32_t>(items);
  putExtremes<uint32_t>(items);
  items.number(1e-300);
  items.number(-3.25f);
  return items.save();
}

void putTree(Items& items, std::mt19937& random, int depth) {
  for (unsigned i = random() % 12; i > 0; --i) {
    switch (random() % 5) {
      case 0:
        items.text(std::string(random() % 3000, static_cast<char>('a' + depth)));
        break;
      case 1:
        items.wideText(std::u16string(random() % 500, u'\u0416'));
        break;
      case 2:
        items.integer(static_cast<int32_t>(random()));
        break;
      default:
        if (depth == 0) break;
        items.begin(static_cast<int32_t>(random() % 0xFFFF), static_cast<int32_t>(random() % 256));
        putTree(items, random, depth - 1);
        items.end();
    }
  }
}

// Elements of all lengths, over many blocks of the file.
bool writeLarge(const char* name, int32_t fileVersion) {
  Items items(name, fileVersion);
  std::mt19937 random(11);
  for (int i = 0; i < 20; ++i) {
    items.begin(0x2000 + i, 1);
    putTree(items, random, 4);
    items.end();
  }
  return items.save();
}

bool writeCutOff() {
  Items items("cutoff.model", wide);
  for (int32_t i = 0; i < 500; ++i) {
    items.begin(0x1234, 1);
    items.integer(i);
    items.end();
  }
  return items.cutOff();
}

}  // namespace

int main() {
  const bool written =
      writeExample("example.model", wide) && writeExample("narrow.model", narrow) && writeEmpty() &&
      writeAll("all.model", wide) && writeAll("allnarrow.model", 9) &&
      writeLarge("large.model", wide) && writeLarge("largenarrow.model", narrow) && writeCutOff();
  return written ? EXIT_SUCCESS : EXIT_FAILURE;
}
