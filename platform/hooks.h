#pragma once

// What a test must not do to the real machine goes through a function pointer that it can
// replace: a hook. A null hook means the real call. HookGuard sets a hook and puts the old value
// back when it goes, also when the test fails.
// Hooks are plain variables: set them while no other thread runs.
//
//   platform::HookGuard guard(platform::messageBoxHook,
//                             [](const std::u16string&, const std::u16string&, unsigned) {
//                               return platform::answerYes;
//                             });

#include <type_traits>

namespace platform {

template <class Function>
class HookGuard {
 public:
  HookGuard(Function*& hook, std::type_identity_t<Function>* replacement)
      : hook_(hook), before_(hook) {
    hook_ = replacement;
  }
  ~HookGuard() { hook_ = before_; }
  HookGuard(const HookGuard&) = delete;
  HookGuard& operator=(const HookGuard&) = delete;

 private:
  Function*& hook_;   // the variable that is replaced
  Function* before_;  // what stood there
};

}  // namespace platform
