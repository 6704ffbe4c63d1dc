// PlyHeader: what the header of a PLY file declares, and the reading of it.
//
//   PlyHeader header;
//   if (!header.read(bytes)) return fail(header.line(), header.problem(), header.argument());
//
// A plain value once it is read. One thread.
#pragma once

#include <string>
#include <vector>

#include "components/points/formats/pointinputbuffer.h"
#include "components/points/formats/pointscalar.h"

enum class PlyForm { ascii, littleEndian, bigEndian };

struct PlyProperty {
  std::string name;
  PointScalar type = PointScalar::float32;  // of the entries, where it is a list
  bool isList = false;
  PointScalar lengthType = PointScalar::uint8;  // of a list's length
};

struct PlyElement {
  std::string name;
  int64_t count = 0;
  std::vector<PlyProperty> properties;

  bool hasLists() const;
  // Bytes of one record in the binary forms, of lists their length alone; in ASCII the fewest. 0
  // without properties.
  int64_t smallestRecord(PlyForm form) const;
  // Index, or -1.
  int find(const char* property) const;
};

class PlyHeader {
 public:
  // Reads up to and with the line "end_header". False with problem() set.
  bool read(PointInputBuffer& bytes);

  PlyForm form() const { return form_; }
  const std::vector<PlyElement>& elements() const { return elements_; }
  // Lines that were read, of which the last is the bad one after a failure.
  int64_t line() const { return line_; }
  const char* problem() const { return problem_; }
  const std::string& argument() const { return argument_; }

 private:
  bool takeLine(std::string_view line);
  bool takeForm(const std::vector<std::string_view>& words);
  bool takeElement(const std::vector<std::string_view>& words);
  bool takeProperty(const std::vector<std::string_view>& words);
  bool takeType(std::string_view word, PointScalar& type);
  bool fail(const char* problem, std::string_view argument = {});

  PlyForm form_ = PlyForm::ascii;
  bool hasForm_ = false;
  std::vector<PlyElement> elements_;
  int64_t line_ = 0;
  const char* problem_ = nullptr;
  std::string argument_;
};
