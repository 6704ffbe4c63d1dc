// A program for tests of what ends a process, or is decided at its start. The first argument says
// what it does:
//   exhaust     asks for a block that no heap gives
//   exhaust-new does so by operator new
//   exit        the same again while the process ends
//   flags       prints the break flag and the spin count
//   FOLDER END  keeps blocks in a file in the folder and ends by "return", "exit", "abort" or
//               "now"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <new>
#include <string>
#include <string_view>

#include "components/memorymanager/blockmanager.h"
#include "orobasictypes/kelbreakflag.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/orocondition.h"
#include "platform/text.h"

namespace {

void exhaust() {
  void* block = nullptr;
  kelMalloc(block, 4, 0x20000000);
}

struct ExhaustsAtTheEnd {
  bool armed = false;
  ~ExhaustsAtTheEnd() {
    if (!armed) return;
    exhaust();
    std::puts("not reached");
  }
};

void exhaustOperatorNew() {
  kelHelpOperatorNew();
#if COWL_SANITIZED
  // The sanitizers' own operator new does not call the handler.
  for (;;) std::get_new_handler()();
#else
  static volatile size_t tooMuch = PTRDIFF_MAX / 2;
  ::operator delete(::operator new(tooMuch));
#endif
}

int keepBlocks(const char* folder, std::string_view end) {
  BlockManager blocks({0, int64_t{1} << 40, platform::fromSystemPath(folder)});
  for (int i = 0; i < 200; ++i) std::memset(blocks.allocate(24576, false), i, 24576);
  const bool isEmpty = std::filesystem::is_empty(folder);
  std::printf("%lld bytes, %s\n", static_cast<long long>(blocks.swapBytes()),
              isEmpty ? "no name" : "a name");
  std::fflush(stdout);
  if (end == "exit") std::exit(7);
  if (end == "abort") std::abort();
  if (end == "now") std::_Exit(7);
  return 7;
}

}  // namespace

int main(int argc, char** argv) {
  static ExhaustsAtTheEnd atTheEnd;
  const std::string_view what = argc > 1 ? argv[1] : "";
  if (argc > 2) return keepBlocks(argv[1], argv[2]);
  if (what == "exhaust") exhaust();
  if (what == "exhaust-new") exhaustOperatorNew();
  if (what == "exit") {
    atTheEnd.armed = true;
    exhaust();
  }
  if (what == "flags") std::printf("%d %d\n", kelBreakEnabled(), OroCondition::spinCount());
  return 0;
}
