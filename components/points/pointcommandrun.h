// PointCommandRun: what a command has in hand while it runs: its values, the clouds that it works
// on, the way to tell how far it is, and the place for its results.
//
//   bool shift(PointCommandRun& run) {
//     const PointTransform move = PointTransform::shift(run.numbers("by"));
//     run.forEach([&](PointSet& set) { move.apply(set); });
//     return true;
//   }
//
// Values were checked against the command's row before. Main thread, for one run.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "components/points/commands/pointwork.h"
#include "components/points/pointobject.h"
#include "orobasictypes/orostring.h"

class PointDocument;
class PointSet;

struct PointCommandResult {
  const char* name;
  std::vector<double> numbers;
};

class PointCommandRun {
 public:
  using Numbers = std::map<std::string, std::vector<double>, std::less<>>;
  using Texts = std::map<std::string, OroString, std::less<>>;

  // The listener hears how far the work is, from 0 to 1. `target` may be null: all clouds.
  PointCommandRun(PointDocument& document, PointObject* target, const Numbers& numbers,
                  const Texts& texts, std::function<bool(double)> listener);

  PointDocument& document() { return document_; }
  // The objects that it works on, all of which hold points.
  const std::vector<IPtr<PointObject>>& objects() const { return objects_; }
  int64_t points() const;  // of all of them
  // Whether it was asked to work on one cloud alone.
  bool isOneCloud() const { return oneCloud_; }
  PointWork& work() { return work_; }

  // Null when it was left out.
  const double* numbers(std::string_view parameter) const;
  size_t numberCount(std::string_view parameter) const;
  double number(std::string_view parameter, double otherwise) const;
  bool flag(std::string_view parameter) const { return number(parameter, 0) != 0; }
  // The empty text when it was left out.
  const OroString& text(std::string_view parameter) const;
  bool has(std::string_view parameter) const;

  // Works on cloud after cloud, each being its share of the whole by its points. A false from
  // `each` ends it.
  bool forEach(const std::function<bool(PointSet& set)>& each);

  void result(const char* name, std::vector<double> numbers);
  std::vector<PointCommandResult>& results() { return results_; }

  // Says why the command fails, as an English key; always false.
  bool fail(const char* key, const OroString& a1 = OroString(), const OroString& a2 = OroString());
  // The same with a text that is in the user's language already.
  bool failAs(const OroString& text);
  const OroString& message() const { return message_; }

 private:
  PointDocument& document_;
  std::vector<IPtr<PointObject>> objects_;
  bool oneCloud_;
  const Numbers& numbers_;
  const Texts& texts_;
  PointWork work_;
  std::vector<PointCommandResult> results_;
  OroString message_;
};
