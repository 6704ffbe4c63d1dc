#pragma once

// A modal box with a text and buttons. It blocks the caller until it is answered. Where no box can
// be shown (Linux, or no display) the text and a line feed go to standard error instead, and the
// answer is the harmless one: OK, or "no" to a question.
// Any thread.

#include <string>

namespace platform {

/// Bits of a box's style and its answers, with the numbers of the system.
inline constexpr unsigned boxOk = 0;
inline constexpr unsigned boxYesNo = 4;
inline constexpr unsigned boxErrorIcon = 16;
inline constexpr unsigned boxWarningIcon = 48;
inline constexpr unsigned boxInformationIcon = 64;
inline constexpr int answerOk = 1;
inline constexpr int answerYes = 6;
inline constexpr int answerNo = 7;

/// Shows the box without an owner window and returns the answer.
int messageBox(const std::u16string& title, const std::u16string& text, unsigned style);

/// Replaces the box; gets the same arguments and gives the answer.
extern int (*messageBoxHook)(const std::u16string& title, const std::u16string& text,
                             unsigned style);

}  // namespace platform
