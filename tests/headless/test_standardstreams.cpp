// The standard streams as sinks: each run is a process of its own, since the sink closes standard
// output for good.

#include <gtest/gtest.h>

#include <string>

#include "tests/blackbox/childprocess.h"
#include "tests/testpaths.h"

namespace {

tests::ChildResult runWriter(const char* setting) {
  return tests::runChild(
      {tests::testLibsDir() / tests::programFileName("headlesswriter"), {setting}});
}

constexpr const char* kRecords =
    "<log>\n<start cmd=\"Open \xE2\x82\xAC\"/>\n <prog done=\"50\"/>\n<Error=\"bad\"/>\n"
    "<stop cmd=\"Open \xE2\x82\xAC\"/>\n</log>\n";

TEST(StandardStreams, StandardOutputGetsTheRecords) {
  const tests::ChildResult result = runWriter("stdout");
  EXPECT_EQ(result.exitCode, 7);
  EXPECT_EQ(tests::plainLines(result.output), std::string("before\n") + kRecords);
  EXPECT_EQ(tests::plainLines(result.errors), "after\n");
}

TEST(StandardStreams, StandardErrorGetsTheRecordsAndStaysOpen) {
  const tests::ChildResult result = runWriter("stderr");
  EXPECT_EQ(result.exitCode, 7);
  EXPECT_EQ(tests::plainLines(result.output), "before\n");
  EXPECT_EQ(tests::plainLines(result.errors), std::string(kRecords) + "after\n");
}

TEST(StandardStreams, NobodyGetsThemWithoutASetting) {
  const tests::ChildResult result = runWriter("");
  EXPECT_EQ(result.exitCode, 7);
  EXPECT_EQ(tests::plainLines(result.output), "before\n");
  EXPECT_EQ(tests::plainLines(result.errors), "after\n");
}

}  // namespace
