#include "components/initserver/applicationdescriptionparser.h"

#include <algorithm>
#include <utility>

namespace {

constexpr const char* kVersion = "1";

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

// What a file name on both systems may hold; a library lies beside the description and nowhere
// else.
bool isLibraryName(const std::string& name) {
  return !name.empty() && name.find_first_of("/\\:*?\"<>|") == std::string::npos && name != ".." &&
         name != ".";
}

// Registry keys and names of the program are plain ASCII text.
bool isPlainText(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
}

}  // namespace

bool ApplicationDescriptionParser::parse(std::string_view text) {
  if (text.size() > kLargestText) return fail("the file is too large for a description");
  if (text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);
  while (!text.empty()) {
    ++line_;
    const size_t end = text.find('\n');
    if (!parseLine(text.substr(0, end))) return false;
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  if (!versionSeen_) return fail("the file does not begin with \"cowl-application 1\"");
  return true;
}

bool ApplicationDescriptionParser::parseLine(std::string_view line) {
  if (!splitWords(line)) return false;
  if (words_.empty()) return true;
  const std::string& statement = words_[0];
  if (!versionSeen_) return readVersion();
  if (statement == "registry") return readRegistry();
  if (statement == "component") return readComponent();
  if (statement == "class") return readClass();
  if (statement == "default") return readDefault();
  if (statement == "initializer") return readInitializer();
  return fail("the statement \"%1\" is unknown", statement);
}

// Words stand apart by blanks; quotes hold blanks and "#" together.
bool ApplicationDescriptionParser::splitWords(std::string_view line) {
  words_.clear();
  size_t at = 0;
  while (true) {
    while (at < line.size() && isBlank(line[at])) ++at;
    if (at == line.size() || line[at] == '#') return true;
    std::string word;
    if (line[at] == '"') {
      if (!readQuoted(line, at, word)) return false;
    } else {
      while (at < line.size() && !isBlank(line[at]) && line[at] != '"') word += line[at++];
    }
    if (at < line.size() && !isBlank(line[at])) return fail("a blank is missing behind a word");
    if (!isPlainText(word)) return fail("a word holds a character beyond plain ASCII");
    words_.push_back(std::move(word));
  }
}

bool ApplicationDescriptionParser::readQuoted(std::string_view line, size_t& at,
                                              std::string& word) {
  for (++at; at < line.size(); ++at) {
    if (line[at] == '"') {
      ++at;
      return true;
    }
    const bool escaped =
        line[at] == '\\' && at + 1 < line.size() && (line[at + 1] == '"' || line[at + 1] == '\\');
    if (escaped) ++at;
    word += line[at];
  }
  return fail("a quote is not closed");
}

bool ApplicationDescriptionParser::readVersion() {
  if (words_[0] != "cowl-application") {
    return fail("the file does not begin with \"cowl-application 1\"");
  }
  if (words_.size() != 2 || words_[1] != kVersion) {
    return fail("this version of the description is unknown");
  }
  versionSeen_ = true;
  return true;
}

bool ApplicationDescriptionParser::readRegistry() {
  if (words_.size() != 3) return fail("\"registry\" needs a key and a value");
  if (words_[1].empty()) return fail("the registry key is empty");
  out_.registry.push_back({words_[1], words_[2]});
  return true;
}

bool ApplicationDescriptionParser::readComponent() {
  if (words_.size() < 3) return fail("\"component\" needs a library and an id");
  ApplicationDescription::ComponentEntry entry;
  entry.library = words_[1];
  entry.name = words_[1];
  if (!isLibraryName(entry.library)) return fail("\"%1\" is no name of a library", words_[1]);
  if (!takeId(words_[2], entry.id)) return false;
  options_ = {{"name", &entry.name}, {"group", &entry.group}};
  if (!readOptions(3)) return false;
  out_.components.push_back(std::move(entry));
  return true;
}

bool ApplicationDescriptionParser::readClass() {
  if (out_.components.empty()) return fail("a class stands in front of the first component");
  if (words_.size() < 3) return fail("\"class\" needs a name and an id");
  ApplicationDescription::ClassEntry entry;
  entry.name = words_[1];
  if (!takeId(words_[2], entry.id)) return false;
  std::string tags;
  options_ = {{"tags", &tags}};
  if (!readOptions(3)) return false;
  for (size_t begin = 0; begin < tags.size();) {
    const size_t end = std::min(tags.find(',', begin), tags.size());
    if (end > begin) entry.tags.push_back(tags.substr(begin, end - begin));
    begin = end + 1;
  }
  out_.components.back().classes.push_back(std::move(entry));
  return true;
}

bool ApplicationDescriptionParser::readDefault() {
  if (words_.size() != 2) return fail("\"default\" needs the name of an interface");
  if (out_.components.empty() || out_.components.back().classes.empty()) {
    return fail("\"default\" stands in front of the first class of a component");
  }
  for (const auto& component : out_.components) {
    if (component.group != out_.components.back().group) continue;
    for (const auto& entry : component.classes) {
      const auto& names = entry.defaultOf;
      if (std::find(names.begin(), names.end(), words_[1]) != names.end()) {
        return fail("the interface \"%1\" has a default class already", words_[1]);
      }
    }
  }
  out_.components.back().classes.back().defaultOf.push_back(words_[1]);
  return true;
}

bool ApplicationDescriptionParser::readInitializer() {
  if (words_.size() != 1) return fail("\"initializer\" stands alone");
  if (out_.components.empty() || out_.components.back().classes.empty()) {
    return fail("\"initializer\" stands in front of the first class of a component");
  }
  out_.components.back().classes.back().initializer = true;
  return true;
}

// The rest of the line: pairs of an option's name and its value.
bool ApplicationDescriptionParser::readOptions(size_t first) {
  for (size_t i = first; i < words_.size(); i += 2) {
    const auto found = std::find_if(options_.begin(), options_.end(),
                                    [&](const Option& o) { return words_[i] == o.name; });
    if (found == options_.end()) return fail("the option \"%1\" is unknown", words_[i]);
    if (i + 1 == words_.size()) return fail("the option \"%1\" needs a value", words_[i]);
    *found->value = words_[i + 1];
  }
  return true;
}

bool ApplicationDescriptionParser::takeId(const std::string& text, GUID& id) {
  if (!oroParseGuid(text, id)) return fail("\"%1\" is no id", text);
  if (id.isNull()) return fail("the id of all zeros is the init server's own");
  if (std::find(ids_.begin(), ids_.end(), id) != ids_.end()) {
    return fail("the id \"%1\" stands twice", text);
  }
  ids_.push_back(id);
  return true;
}

bool ApplicationDescriptionParser::fail(const char* problem, std::string subject) {
  problem_ = problem;
  subject_ = std::move(subject);
  return false;
}
