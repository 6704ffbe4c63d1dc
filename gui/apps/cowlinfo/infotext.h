// Texts of cowlinfo: what is shown of names and values that come from files.
//
// Bytes of a file may hold anything; what is shown is UTF-8 without control characters, so that no
// file can write to a terminal what its maker likes. Pure functions; any thread.
#pragma once

#include <string>
#include <string_view>

class OroString;

// UTF-8 with control characters as "\x1b" and quotes and backslashes as they are. Longer texts than
// `most` bytes are cut, with "..." behind; 0 cuts nothing.
std::string shownText(std::string_view utf8, size_t most = 0);
std::string shownText(const OroString& text, size_t most = 0);

// "3 files", "1 file".
std::string counted(uint64_t count, const char* one, const char* many);

// The translated text of an English key.
std::string infoText(const char* key, const std::string& a1 = {}, const std::string& a2 = {},
                     const std::string& a3 = {});
