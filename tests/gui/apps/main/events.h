#pragma once

// What the doubles of these tests were asked to do, in order.

#include <string>
#include <string_view>
#include <vector>

class OroString;

namespace tests {

using Events = std::vector<std::string>;

/// Of the running test; AppWorld empties it.
Events& events();

/// Those that begin with one of the words.
Events eventsLike(const std::vector<std::string>& words);

void event(std::string_view text);
/// "name 'text'", the text as narrow text.
void event(std::string_view name, const OroString& text);
/// "name value"
void event(std::string_view name, long value);

}  // namespace tests
