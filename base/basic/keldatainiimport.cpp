#include "base/basic/keldatainiimport.h"

#include <cstdint>
#include <cstdio>
#include <optional>

#include "interfaces/IDataStore.h"
#include "orobasictypes/orostring.h"
#include "platform/files.h"
#include "platform/process.h"

namespace {

constexpr int kLineBuffer = 4096;  // with the terminator

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view white = " \t\n\v\f\r";
  const size_t first = text.find_first_not_of(white);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(white) + 1 - first);
}

std::optional<std::string> variable(std::string_view name) {
  return name.empty() ? std::nullopt : platform::environment(name);
}

// One pass: what a variable brings in is not looked at again.
std::string expanded(std::string_view text) {
  std::string result;
  for (;;) {
    const size_t start = text.find("${");
    const size_t end = text.find('}', start);
    if (start == std::string_view::npos || end == std::string_view::npos) break;
    const auto value = variable(text.substr(start + 2, end - start - 2));
    result += text.substr(0, start);
    result += value ? std::string_view(*value) : text.substr(start, end + 1 - start);
    text.remove_prefix(end + 1);
  }
  return result.append(text);
}

}  // namespace

bool KelDataIniImport::run(const OroString& file) {
  std::FILE* const stream = platform::openFile(file.wideText(), "rb");
  if (stream == nullptr) return false;
  char line[kLineBuffer];
  while (std::fgets(line, sizeof line, stream) != nullptr) {
    if (!importLine(line)) return false;  // The file stays open; kept.
  }
  std::fclose(stream);
  return true;
}

// The line ends at its first zero byte, so that one with such a byte inside has no line feed.
bool KelDataIniImport::importLine(std::string_view line) {
  if (!line.ends_with('\n')) return false;
  if (line.starts_with(';')) return true;
  if (line.starts_with('[')) {
    const size_t close = line.find(']');
    if (close == std::string_view::npos) return false;
    section_ = line.substr(1, close - 1);
    store_.CreateDirectory(section_.c_str());
    return true;
  }
  const size_t equals = line.find('=');
  if (equals != std::string_view::npos) importKey(line.substr(0, equals), line.substr(equals + 1));
  return true;
}

void KelDataIniImport::importKey(std::string_view key, std::string_view value) {
  const std::string path = section_ + "/" + finished(key);
  const std::string text = finished(value);
  store_.CreateString(path.c_str(), static_cast<int32_t>(text.size()), text.c_str(), 0);
}

std::string KelDataIniImport::finished(std::string_view text) const {
  return expandEnv_ ? expanded(trimmed(text)) : std::string(trimmed(text));
}
