// Settings by path against a std::unordered_map<std::string, int32_t> of the same paths.
//
// The peer is asked in two ways: with a std::string at hand, and with the literal that a caller of
// the store has, from which it must first make one. Each round goes through all paths in turn.

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/basic/gendatastore.h"
#include "bench/support/ratios.h"
#include "orobasictypes/iptr.h"

namespace {

constexpr size_t kPaths = 1024;  // a power of two

struct Settings {
  Settings() {
    const char* const sections[] = {"GUI", "Scripting", "Fonts and Languages",
                                    "Advanced/Batch Processing"};
    for (const char* section : sections) store->CreateDirectory(section);
    for (size_t n = 0; n < kPaths; ++n) {
      const std::string leaf = "Setting number " + std::to_string(n);
      heads.push_back(std::string(sections[n % 4]) + "/");
      leaves.push_back(leaf);
      paths.push_back(heads.back() + leaf);
      store->CreateInt(paths.back().c_str(), static_cast<int32_t>(n), INT32_MIN, INT32_MAX, 0);
      map[paths.back()] = static_cast<int32_t>(n);
    }
    for (size_t n = 0; n < kPaths; ++n) {
      texts.push_back(paths[n].c_str());
      pieces.push_back({heads[n].c_str(), leaves[n].c_str(), nullptr});
    }
  }

  struct Pieces {
    const char* parts[3];
  };
  IPtr<IDataStore> store{new GenDataStore};
  std::unordered_map<std::string, int32_t> map;
  std::vector<std::string> heads, leaves, paths;
  std::vector<const char*> texts;
  std::vector<Pieces> pieces;
};

class Turn {
 public:
  size_t next() { return at_++ % kPaths; }

 private:
  size_t at_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  bench::Ratios ratios(argc, argv);
  Settings settings;
  IDataStore* const store = settings.store.get();
  Turn ours, peer;
  int32_t value = 0;

  const auto get = [&] {
    benchmark::DoNotOptimize(store->GetInt(settings.texts[ours.next()], nullptr));
  };
  const auto set = [&] { store->SetInt(nullptr, settings.texts[ours.next()], ++value); };
  const auto peerGet = [&] {
    benchmark::DoNotOptimize(settings.map.find(settings.paths[peer.next()])->second);
  };
  const auto peerGetLiteral = [&] {
    benchmark::DoNotOptimize(settings.map.find(settings.texts[peer.next()])->second);
  };

  ratios.compare("get", "unordered_map, string at hand", 0, get, peerGet);
  ratios.compare("get", "unordered_map, literal", 0, get, peerGetLiteral);
  ratios.compare("set", "unordered_map, string at hand", 0, set,
                 [&] { settings.map.find(settings.paths[peer.next()])->second = ++value; });
  ratios.compare("set", "unordered_map, literal", 0, set,
                 [&] { settings.map.find(settings.texts[peer.next()])->second = ++value; });
  ratios.compare(
      "get by pieces", "unordered_map, joined", 0,
      [&] {
        const size_t n = ours.next();
        benchmark::DoNotOptimize(store->GetInt(settings.pieces[n].parts, nullptr));
      },
      [&] {
        const size_t n = peer.next();
        benchmark::DoNotOptimize(settings.map.find(settings.heads[n] + settings.leaves[n])->second);
      });
  ratios.compare(
      "missing item", "unordered_map, literal", 0,
      [&] { benchmark::DoNotOptimize(store->Exists("GUI/There is no such setting")); },
      [&] { benchmark::DoNotOptimize(settings.map.find("GUI/There is no such setting")); });
  return 0;
}
