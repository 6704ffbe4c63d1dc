// ApplicationDescriptionParser: reads the text of an application description.
//
//   ApplicationDescription description;
//   ApplicationDescriptionParser parser(description);
//   if (!parser.parse(text)) report(parser.line(), parser.problem(), parser.subject());
//
// All or nothing: after a failure the description must not be used. Memory is a small multiple of
// the text. One thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "components/initserver/applicationdescription.h"

class ApplicationDescriptionParser {
 public:
  // A larger file is no description.
  static constexpr size_t kLargestText = 1 << 20;

  explicit ApplicationDescriptionParser(ApplicationDescription& out) : out_(out) {}

  bool parse(std::string_view text);

  // The line of the first problem, from 1; the problem as an English key that may hold "%1"; and
  // the word that stands for %1.
  int32_t line() const { return line_; }
  const char* problem() const { return problem_; }
  const std::string& subject() const { return subject_; }

 private:
  bool parseLine(std::string_view line);
  bool splitWords(std::string_view line);
  bool readQuoted(std::string_view line, size_t& at, std::string& word);
  bool readVersion();
  bool readRegistry();
  bool readComponent();
  bool readClass();
  bool readDefault();
  bool readInitializer();
  bool readOptions(size_t first);
  bool takeId(const std::string& text, GUID& id);
  bool fail(const char* problem, std::string subject = {});

  struct Option {
    const char* name;
    std::string* value;
  };

  ApplicationDescription& out_;
  std::vector<std::string> words_;  // of the line at hand
  std::vector<Option> options_;     // that its statement may have
  std::vector<GUID> ids_;           // seen so far, component and class ids apart by meaning
  bool versionSeen_ = false;
  int32_t line_ = 0;
  const char* problem_ = nullptr;
  std::string subject_;
};
