// PcdHeader: what the header of a PCD file declares, and the reading of it.
//
//   PcdHeader header;
//   if (!header.read(bytes)) return fail(header.line(), header.problem(), header.argument());
//
// A plain value once it is read. One thread.
#pragma once

#include <string>
#include <vector>

#include "components/points/formats/pointinputbuffer.h"
#include "components/points/formats/pointscalar.h"

struct PcdField {
  std::string name;
  int64_t size = 0;   // bytes of one number: 1, 2, 4 or 8
  char type = 0;      // I signed, U unsigned, F floating
  int64_t count = 1;  // numbers, 1 to 65536
  size_t offset = 0;  // in a binary record
  size_t word = 0;    // the place of its first number in a line of text, from 0

  // The type of a single number that a coordinate can have. False for any other.
  bool scalar(PointScalar& scalar) const;
};

class PcdHeader {
 public:
  // Reads up to and with the line "DATA". False with problem() set.
  bool read(PointInputBuffer& bytes);

  const std::vector<PcdField>& fields() const { return fields_; }
  const PcdField* find(std::string_view name) const;  // null where there is none
  int64_t count() const { return count_; }            // points
  int64_t width() const { return width_; }
  int64_t height() const { return height_; }
  bool isBinary() const { return binary_; }
  bool hasViewpoint() const { return viewpoint_; }  // one that is not the origin's
  size_t stride() const { return stride_; }         // bytes of a binary record
  size_t words() const { return words_; }           // numbers of a line of text
  // Lines that were read, of which the last is the bad one after a failure.
  int64_t line() const { return line_; }
  const char* problem() const { return problem_; }
  const std::string& argument() const { return argument_; }

 private:
  using Words = std::vector<std::string_view>;

  bool takeLine(const Words& words);
  bool takeFields(const Words& words);
  bool takeSizes(const Words& words);
  bool takeTypes(const Words& words);
  bool takeCounts(const Words& words);
  bool takeNumber(const Words& words, int64_t& number);
  bool takeForm(const Words& words);
  bool finish();
  bool fail(const char* problem, std::string_view argument = {});

  std::vector<PcdField> fields_;
  std::vector<std::string> seen_;  // the keys of the lines so far
  int64_t count_ = -1;
  int64_t width_ = -1;
  int64_t height_ = -1;
  bool binary_ = false;
  bool viewpoint_ = false;
  size_t stride_ = 0;
  size_t words_ = 0;
  int64_t line_ = 0;
  const char* problem_ = nullptr;
  std::string argument_;
};
