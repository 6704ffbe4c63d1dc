#include "platform/wordwait.h"

#include "platform/posix/posixgate.h"

namespace platform {
namespace {

using Word = std::atomic<std::uint32_t>;
static_assert(sizeof(Word) == 4 && Word::is_always_lock_free,
              "the system reads it as a plain word");

long onWord(const Word& word, int operation, std::uint32_t value, const timespec* limit) {
  return syscall(SYS_futex, &word, operation | FUTEX_PRIVATE_FLAG, value, limit, nullptr, 0);
}

}  // namespace

void waitWhile(const Word& word, std::uint32_t value, int milliseconds) {
  const timespec limit{milliseconds / 1000, milliseconds % 1000 * 1000000L};
  onWord(word, FUTEX_WAIT, value, &limit);
}

void wakeOne(const Word& word) { onWord(word, FUTEX_WAKE, 1, nullptr); }

}  // namespace platform
