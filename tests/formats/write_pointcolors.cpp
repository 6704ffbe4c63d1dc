// Writes files of point colours into the current directory, and beside each what it holds.
#include <cstdlib>
#include <vector>

#include "components/points/pointextrainfo.h"
#include "orobasictypes/binio.h"
#include "orobasictypes/bitvector.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orovectorarray.h"
#include "tests/formats/json.h"
#include "tests/support/countingmanager.h"

namespace {

using Array = IPtr<OroVectorArray>;
using Color = std::vector<float>;

class Colors {
 public:
  explicit Colors(const char* name) : name_(name), file_(OroPath(OroString(name))) {
    json_.open('[');
  }
  // `packed` and the colours are what the file has to hold.
  void put(const Array& array, const BitVector* skip, bool packed,
           const std::vector<Color>& colors) {
    good_ = array->WriteColors(file_, array->GetCount(), skip) && good_;
    json_.open('{').key("flags").integer((colors.empty() ? 0 : 1) + (packed ? 2 : 0));
    json_.key("colors").open('[');
    for (const Color& color : colors) {
      json_.open('[');
      for (const float channel : color) json_.number(channel);
      json_.close();
    }
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

// Place 0 has the first of the colours.
Array arrayOf(const std::vector<Color>& colors) {
  Array array(new OroVectorArray);
  if (colors.empty()) return array;
  array->AddUntil(static_cast<int32_t>(colors.size()) - 1);
  array->SetExtraInfo(new PointExtraInfo);
  for (size_t i = 0; i < colors.size(); ++i) {
    array->SetColor(static_cast<int32_t>(i), colors[i].data());
  }
  return array;
}

bool writeExample() {
  const std::vector<Color> colors = {{0, 0, 0}, {1, 0.5, 0}, {0, 0, 1}};
  Colors file("example.colors");
  file.put(arrayOf(colors), nullptr, false, colors);
  return file.save();
}

bool writeForms() {
  Colors file("forms.colors");
  file.put(arrayOf({}), nullptr, false, {});
  const std::vector<Color> colors = {{0, 0, 0}, {1, 0.2F, 0}, {0.4F, 0.6F, 0.8F}, {1, 1, 1}};
  const Array array = arrayOf(colors);
  BitVector skip;
  skip.Set(0);
  skip.Set(2);
  file.put(array, &skip, false, {colors[1], colors[3]});
  array->ExtraInfo()->GetPackedArray();
  array->SetPackedColors(true);
  file.put(array, nullptr, true, colors);
  file.put(array, &skip, true, {colors[1], colors[3]});
  array->ExtraInfo()->ClearColors();
  file.put(array, nullptr, true, {});
  return file.save();
}

}  // namespace

int main() {
  const tests::ManagedMemory memory;
  return writeExample() && writeForms() ? EXIT_SUCCESS : EXIT_FAILURE;
}
