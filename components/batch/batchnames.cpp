#include "components/batch/batchnames.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "orobasictypes/orofile.h"

namespace {

constexpr int kMostOfOneName = 10000;

bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

// The digits at the front of the text, without the zeros that lead, taken off it.
std::u16string_view takeNumber(std::u16string_view& text) {
  const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
  std::u16string_view number = text.substr(0, static_cast<size_t>(end - text.begin()));
  text.remove_prefix(number.size());
  while (number.size() > 1 && number.front() == u'0') number.remove_prefix(1);
  return number;
}

int compareNumbers(std::u16string_view left, std::u16string_view right) {
  if (left.size() != right.size()) return left.size() < right.size() ? -1 : 1;
  return left.compare(right);
}

int compareNaturally(std::u16string_view left, std::u16string_view right) {
  while (!left.empty() && !right.empty()) {
    int order = 0;
    if (isDigit(left.front()) && isDigit(right.front())) {
      order = compareNumbers(takeNumber(left), takeNumber(right));
    } else {
      order = static_cast<int>(left.front()) - static_cast<int>(right.front());
      left.remove_prefix(1);
      right.remove_prefix(1);
    }
    if (order != 0) return order;
  }
  return static_cast<int>(right.empty()) - static_cast<int>(left.empty());
}

void appendTime(OroString& name, const char* format, const std::tm& time) {
  char text[32];
  if (std::strftime(text, sizeof text, format, &time) > 0) name.append(text);
}

}  // namespace

bool comesBefore(const OroString& name, const OroString& other) {
  const OroString left = name.toLower();
  const OroString right = other.toLower();
  const int order = compareNaturally(left.wideText(), right.wideText());
  return order != 0 ? order < 0 : name.compareOrdinal(other) < 0;
}

std::tm batchTime() {
  const std::time_t now = std::time(nullptr);
  const std::tm* const local = std::localtime(&now);
  return local != nullptr ? *local : std::tm{};
}

OroString batchFileName(const OroString& inputName, const BatchJob& job, const std::tm& time) {
  const OroPath input(inputName);
  OroString name(job.prefix);
  name.append(input.fileName(false));
  name.append(job.postfix);
  if ((job.dateAndTime & BatchJob::kDate) != 0) appendTime(name, "_%Y%m%d", time);
  if ((job.dateAndTime & BatchJob::kTime) != 0) appendTime(name, "_%H%M%S", time);
  const OroString extension = input.extension();
  if (extension.isEmpty()) return name;
  name.append(OroPath::extensionMark());
  name.append(extension);
  return name;
}

OroPath freeFile(const OroPath& directory, const OroString& name) {
  OroPath file = directory.joined(name);
  for (int number = 2; oroAccess(file, 0); ++number) {
    if (number > kMostOfOneName) return {};
    file = directory.joined(name);
    OroString mark(u"_");
    mark.append(OroString(number));
    file.insertBeforeExtension(mark);
  }
  return file;
}
