// Opening and saving 10,000,000 points as binary PLY by the whole executable, without and with the
// removal of duplicates between, beside the public programs that are installed. None of those
// removes exact duplicates from the command line, so they open and save alone, which is less work.
// COWL_BENCH_POINTS says another number of points.

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <vector>

#include "bench/support/ratios.h"
#include "components/points/formats/plywriter.h"
#include "tests/tempfolder.h"
#include "tests/testpaths.h"

namespace {

namespace fs = std::filesystem;

// Points that are made as they are asked for; each tenth is there already.
class MadePoints : public PointSource {
 public:
  explicit MadePoints(int64_t count) {
    head_.count = count;
    head_.hasColors = true;
  }
  std::span<const PointCloudHead> clouds() const override { return {&head_, 1}; }
  bool points(size_t, int64_t first, size_t count, double* xyz, PointColor* colors) override {
    for (size_t i = 0; i < count; ++i) {
      const int64_t n = (first + static_cast<int64_t>(i)) * 7919 % (head_.count - head_.count / 10);
      xyz[3 * i] = 637000 + static_cast<double>(n % 100000) / 100;
      xyz[3 * i + 1] = 849000 + static_cast<double>(n / 1000) / 100;
      xyz[3 * i + 2] = 400 + static_cast<double>(n % 6000) / 100;
      if (colors == nullptr) continue;
      colors[i] = {static_cast<uint8_t>(n), static_cast<uint8_t>(n / 256), 7};
    }
    return true;
  }
  void wrote(size_t) override {}

 private:
  PointCloudHead head_;
};

class FileOutput : public PointOutput {
 public:
  explicit FileOutput(const fs::path& path) : stream_(path, std::ios::binary) {}
  bool write(const char* bytes, size_t size) override {
    return static_cast<bool>(stream_.write(bytes, static_cast<std::streamsize>(size)));
  }

 private:
  std::ofstream stream_;
};

void makeFile(const fs::path& path, int64_t count) {
  MadePoints source(count);
  FileOutput file(path);
  PointOutputBuffer bytes(file);
  PointWriteOptions options;
  options.realBytes = 8;
  if (!PlyWriter(options).write(source, bytes)) std::abort();
}

// Runs a program without its output and gives its largest memory, in KiB.
long run(const std::vector<std::string>& command) {
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  int status = 0;
  rusage usage{};
  if (posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ) != 0) {
    std::abort();
  }
  wait4(child, &status, 0, &usage);
  posix_spawn_file_actions_destroy(&actions);
  return usage.ru_maxrss;
}

struct Peer {
  const char* name;
  std::vector<std::string> command;
};

struct Cost {
  double seconds;  // the least of some runs
  long mebibytes;
};

// In turn, so that a busy machine harms neither more than the other.
void compare(const std::string& name, const std::vector<std::string>& ours, const Peer& peer) {
  constexpr int kRounds = 3;
  Cost costs[2] = {{1e9, 0}, {1e9, 0}};
  for (int i = 0; i < 2 * kRounds; ++i) {
    const auto started = std::chrono::steady_clock::now();
    const long kibibytes = run(i % 2 == 0 ? ours : peer.command);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - started;
    costs[i % 2].seconds = std::min(costs[i % 2].seconds, took.count());
    costs[i % 2].mebibytes = std::max(costs[i % 2].mebibytes, kibibytes / 1024);
  }
  std::printf("%s: %.2f s, %s %.2f s, ratio %.2f (bar 1.00); %ld MiB, %ld MiB\n", name.c_str(),
              costs[0].seconds, peer.name, costs[1].seconds, costs[0].seconds / costs[1].seconds,
              costs[0].mebibytes, costs[1].mebibytes);
}

}  // namespace

int main(int argc, char** argv) {
  bench::Ratios ratios(argc, argv);
  const char* asked = std::getenv("COWL_BENCH_POINTS");
  const int64_t count = asked != nullptr ? std::atoll(asked) : 10000000;
  const std::string points = std::to_string(count) + " points as binary PLY";
  const std::string plain = "open and save " + points;
  const std::string cleaned = "open, deduplicate and save " + points + " (peers: open and save)";
  if (!ratios.wants(plain) && !ratios.wants(cleaned)) return 0;
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  tests::TempFolder folder;
  const std::string in = folder.file("in.ply").string();
  const std::string out = folder.file("out.ply").string();
  makeFile(in, count);
  const std::vector<std::string> ours = {(tests::stageDir() / "cowl").string(), "-input", in,
                                         "-output", out};
  const fs::path script = folder.file("clean.py");
  std::ofstream(script) << "import cowl\ncowl.deduplicate()\n";
  std::vector<std::string> cleaning = ours;
  cleaning.insert(cleaning.end(), {"-script", script.string()});
  const Peer peers[] = {
      {"CloudCompare",
       {"/usr/bin/CloudCompare", "-SILENT", "-AUTO_SAVE", "OFF", "-O", in, "-C_EXPORT_FMT", "PLY",
        "-SAVE_CLOUDS", "FILE", out}},
      {"pcl_ply2ply", {"/usr/bin/pcl_ply2ply", in, out}},
  };
  for (const Peer& peer : peers) {
    if (!fs::exists(peer.command[0])) continue;
    if (ratios.wants(plain)) compare(plain, ours, peer);
    if (ratios.wants(cleaned)) compare(cleaned, cleaning, peer);
  }
}
