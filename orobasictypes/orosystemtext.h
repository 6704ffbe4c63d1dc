// Text as the person at the system's own prompt types and reads it.
//
// Inside, arguments are bytes widened one by one and paths have "\" on every system. Take these
// where such a text comes in as a file name or goes out in a message. Any thread.
#pragma once

#include <string>

#include "orobasictypes/orostring.h"

class OroPath;

// An argument's bytes read in the system's encoding: UTF-8 on Linux, the ANSI code page on Windows.
// A text with no widened byte comes back as it is.
OroString oroArgumentText(const OroString& argument);

// A path in the form of the system, for messages; never for a file name of the program.
OroString oroShownPath(const OroPath& path);

// A message with the reason behind it: "Cannot write a.xyz: No space left on device". The message
// alone where there is no reason.
OroString oroWithReason(const OroString& message, const OroString& reason);

// The text in UTF-8 for a terminal: names of files and texts from them come from anywhere, so "?"
// stands for each control character but line ends and tabs.
std::string oroTerminalText(const OroString& text);
