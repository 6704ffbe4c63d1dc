// Writes files of point arrays into the current directory, and beside each what it holds.
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

#include "orobasictypes/binio.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orovectorarray.h"
#include "tests/formats/json.h"
#include "tests/support/countingmanager.h"

namespace {

using Array = IPtr<OroVectorArray>;

class Arrays {
 public:
  explicit Arrays(const char* name) : name_(name), file_(OroPath(OroString(name))) {
    json_.open('[');
  }
  void put(const Array& array) {
    good_ = array->Write(file_) && good_;
    json_.open('[');
    for (int32_t i = 1; i <= array->GetCount(); ++i) {
      const OroVector point = array->GetVector(i);
      json_.open('[').number(point.x).number(point.y).number(point.z).close();
    }
    json_.close();
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

bool writeExample() {
  Arrays arrays("example.points");
  const Array array(new OroVectorArray);
  array->Add(1, -2, 0.5);
  array->Add(0, 1e6, -0.0);
  arrays.put(array);
  return arrays.save();
}

bool writeEdges() {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  Arrays arrays("edges.points");
  const Array array(new OroVectorArray);
  arrays.put(array);
  array->Add(infinity, -infinity, std::numeric_limits<double>::denorm_min());
  array->Add(std::numeric_limits<double>::max(), 0, -1e-300);
  arrays.put(array);
  array->AddUntil(5);
  arrays.put(array);
  return arrays.save();
}

// Around the ends of blocks, and with blocks that do not exist.
bool writeSizes() {
  Arrays arrays("sizes.points");
  std::mt19937 random(4);
  for (const int32_t count : {1, 42, 1023, 1024, 1025, 3000}) {
    const Array array(new OroVectorArray(count + 1));
    array->SetCount(count);
    for (int32_t i = 1; i <= count; i += i == 1030 ? 1500 : 7) {
      array->Set(i, std::ldexp(random(), -20), random(), -1.0 / i);
    }
    arrays.put(array);
  }
  return arrays.save();
}

}  // namespace

int main() {
  const tests::ManagedMemory memory;
  memory.manager->logs = false;
  return writeExample() && writeEdges() && writeSizes() ? EXIT_SUCCESS : EXIT_FAILURE;
}
