// Reading and writing a text point file, and a whole empty run of the executable.
//
// The floor for reading is what the machine allows at best: the number parser of the standard
// library in a bare loop over the mapped file, with no check of what it reads.

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <charconv>
#include <fstream>
#include <string>
#include <vector>

#include "bench/support/blockmemory.h"
#include "bench/support/ratios.h"
#include "components/points/formats/pointlinetext.h"
#include "components/points/pointclouddata.h"
#include "components/points/pointdocument.h"
#include "components/points/pointopener.h"
#include "orobasictypes/oropath.h"
#include "platform/files.h"
#include "tests/tempfolder.h"
#include "tests/testpaths.h"
#include "tools/samplepoints.h"

namespace {

constexpr int kPoints = 110000;

const char* skipTo(const char* at, const char* end, bool blank) {
  while (at != end && (*at == ' ' || *at == '\n') != blank) ++at;
  return at;
}

template <class Number>
const char* take(const char* at, const char* end, Number& number) {
  at = skipTo(at, end, false);
  return std::from_chars(at, end, number).ptr;
}

// Points and colours of a clean file.
size_t readBare(const std::u16string& path) {
  platform::MappedFile file;
  if (!file.open(path)) return 0;
  std::vector<OroVector> positions;
  std::vector<PointColor> colors;
  const char* at = file.data();
  const char* const end = at + file.size();
  while (end - at > 1) {
    OroVector p;
    PointColor c;
    at = take(take(take(at, end, p.x), end, p.y), end, p.z);
    at = take(take(take(at, end, c.red), end, c.green), end, c.blue);
    positions.push_back(p);
    colors.push_back(c);
    at = skipTo(at, end, true);
  }
  return positions.size() + colors.size();
}

void run(const std::string& program) {
  std::string name = program;
  char* const arguments[] = {name.data(), nullptr};
  pid_t child = 0;
  int status = 0;
  if (posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments, environ) != 0) return;
  waitpid(child, &status, 0);
  benchmark::DoNotOptimize(status);
}

void compareReading(bench::Ratios& ratios, const std::filesystem::path& file) {
  bench::BlockMemory memory;
  IPtr<PointDocument> document(new PointDocument);
  IPtr<PointOpener> opener(new PointOpener);
  memory.broker.registerService(KelCString::borrow("IOroDoc"), document.get());
  const OroPath path{OroString(file.u16string().c_str())};
  ratios.compare(
      "open a text point file of 110,000 points", "from_chars over a mapped file", 1.3,
      [&] {
        if (!opener->open(path, nullptr, 1)) std::abort();
        document->remove(document->objects().back());
      },
      [&] { benchmark::DoNotOptimize(readBare(file.u16string())); });
}

class Nowhere : public PointOutput {
 public:
  bool write(const char*, size_t) override { return true; }
};

void compareWriting(bench::Ratios& ratios) {
  std::vector<OroVector> positions;
  for (int i = 0; i < 1000; ++i) positions.emplace_back(637177.98 + i, 849393.95 - i, 411.19);
  const PointLineText lines(2, ' ', PointLineText::Colors::channels);
  Nowhere nowhere;
  PointOutputBuffer buffer(nowhere);
  std::vector<char> out(positions.size() * 128);
  ratios.compare(
      "write 1,000 points as text", "to_chars with a fixed precision", 0,
      [&] {
        lines.put(buffer, &positions[0].x, nullptr, positions.size());
        benchmark::DoNotOptimize(buffer.flush());
      },
      [&] {
        char* at = out.data();
        char* const end = at + out.size();
        for (const OroVector& p : positions) {
          for (const double value : {p.x, p.y, p.z}) {
            at = std::to_chars(at, end, value, std::chars_format::fixed, 2).ptr;
            *at++ = ' ';
          }
        }
        benchmark::DoNotOptimize(at);
      });
}

}  // namespace

int main(int argc, char** argv) {
  bench::Ratios ratios(argc, argv);
  tests::TempFolder folder;
  const auto file = folder.file("points.xyz");
  {
    std::ofstream stream(file, std::ios::binary);
    stream << samplepoints::lines(kPoints);
  }
  compareReading(ratios, file);
  compareWriting(ratios);
  const std::string cowl = (tests::stageDir() / "cowl").string();
  ratios.compare(
      "an empty run of cowl", "a run of /bin/true", 0, [&] { run(cowl); },
      [] { run("/bin/true"); });
}
