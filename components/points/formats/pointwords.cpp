#include "components/points/formats/pointwords.h"

#include <algorithm>
#include <charconv>

#include "components/points/formats/pointreal.h"

namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view withoutPlus(std::string_view word) {
  if (word.starts_with('+') && !word.starts_with("+-")) word.remove_prefix(1);
  return word;
}

template <class T>
bool numberOf(std::string_view word, T& value) {
  word = withoutPlus(word);
  const char* const end = word.data() + word.size();
  const auto [next, error] = std::from_chars(word.data(), end, value);
  return error == std::errc{} && next == end;
}

}  // namespace

std::string_view pointTakeWord(std::string_view& line) {
  const size_t first = std::min(line.find_first_not_of(kBlanks), line.size());
  const size_t end = std::min(line.find_first_of(kBlanks, first), line.size());
  const std::string_view word = line.substr(first, end - first);
  line.remove_prefix(end);
  return word;
}

std::vector<std::string_view> pointWordsOf(std::string_view line) {
  std::vector<std::string_view> words;
  for (std::string_view word; !(word = pointTakeWord(line)).empty();) words.push_back(word);
  return words;
}

bool pointIsBlank(std::string_view line) {
  return line.find_first_not_of(kBlanks) == std::string_view::npos;
}

bool pointNumber(std::string_view word, double& value) {
  word = withoutPlus(word);
  const char* const end = word.data() + word.size();
  return !word.empty() && pointTakeReal(word.data(), end, value) == end;
}

bool pointNumber(std::string_view word, float& value) { return numberOf(word, value); }

bool pointWholeNumber(std::string_view word, int64_t& value) { return numberOf(word, value); }
