#include "platform/wordwait.h"

#include "platform/win32/win32gate.h"

namespace platform {
namespace {

using Word = std::atomic<std::uint32_t>;
static_assert(sizeof(Word) == 4 && Word::is_always_lock_free,
              "the system reads it as a plain word");

// The system takes addresses of words that it could change, and changes none.
void* addressOf(const Word& word) { return const_cast<Word*>(&word); }

}  // namespace

void waitWhile(const Word& word, std::uint32_t value, int milliseconds) {
  WaitOnAddress(addressOf(word), &value, sizeof value, static_cast<DWORD>(milliseconds));
}

void wakeOne(const Word& word) { WakeByAddressSingle(addressOf(word)); }

}  // namespace platform
