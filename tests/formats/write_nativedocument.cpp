// Writes native documents into the current directory, and beside each what it holds.
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "components/points/formats/cwlwriter.h"
#include "tests/components/points/formats/pointmedia.h"
#include "tests/formats/json.h"

namespace {

tests::Json describe(const std::vector<tests::Cloud>& clouds) {
  tests::Json json;
  json.open('[');
  for (const tests::Cloud& cloud : clouds) {
    json.open('{').key("name").text(std::u16string_view(cloud.name.wideText()));
    json.key("decimals").integer(cloud.decimals).key("scale").number(cloud.scale).key("grid");
    if (cloud.grid) {
      json.open('[');
      for (const double scale : cloud.grid->scale) json.number(scale);
      for (const double offset : cloud.grid->offset) json.number(offset);
      json.close();
    } else {
      json.null();
    }
    json.key("points").open('[');
    for (const double coordinate : cloud.xyz) json.number(coordinate);
    json.close().key("colours");
    if (cloud.colors.empty()) {
      json.null();
    } else {
      json.open('[');
      for (const auto& color : cloud.colors) {
        json.integer(color.red).integer(color.green).integer(color.blue);
      }
      json.close();
    }
    json.key("selected").open('[');
    for (const int point : cloud.selected) json.integer(point);
    json.close().close();
  }
  json.close();
  return json;
}

bool write(const std::string& name, const std::vector<tests::Cloud>& clouds) {
  const tests::Saved saved = tests::save<CwlWriter>(clouds);
  std::ofstream(name, std::ios::binary) << saved.bytes;
  describe(clouds).save(name);
  return saved.good;
}

tests::Cloud exampleCloud() {
  tests::Cloud cloud;
  cloud.name = OroString(u"A\u00E9", 2);
  cloud.decimals = 2;
  cloud.xyz = {1, 2, 3};
  cloud.colors = {{255, 128, 0}};
  cloud.selected = {1};
  return cloud;
}

bool writeLarge() {
  tests::Cloud colored = tests::spreadCloud(3000, true);
  colored.name = OroString(u"\u6A4B", 1);
  colored.scale = 0.25;
  colored.grid = PointGrid{{0.01, 0.02, 1.0 / 3}, {1, -2, 1e300}};
  colored.selected = {1, 31, 32, 3000};
  tests::Cloud plain = tests::spreadCloud(1500, false);
  plain.decimals = 15;
  for (int i = 2; i <= 1500; i += 2) plain.selected.push_back(i);
  return write("large.cwl", {colored, plain, tests::Cloud()});
}

}  // namespace

int main() {
  const bool good =
      write("example.cwl", {exampleCloud()}) && write("empty.cwl", {}) && writeLarge();
  return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
