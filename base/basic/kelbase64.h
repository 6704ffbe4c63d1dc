// Base64 as settings documents hold it: the standard alphabet with '=' to fill up, in lines of 48
// bytes. Pure functions, any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// A line feed stands behind every 48 bytes, but not at the end.
std::string kelBase64Encode(const void* data, size_t size);

// Indents text of several lines as the content of an element `depth` levels below the root. Text
// of one line stays as it is.
std::string kelBase64Indent(const std::string& text, size_t depth);

// White space is skipped; the first other unit outside the alphabet, '=' included, ends the text.
std::vector<unsigned char> kelBase64Decode(std::u16string_view text);
