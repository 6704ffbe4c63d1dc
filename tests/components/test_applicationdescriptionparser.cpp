#include "components/initserver/applicationdescriptionparser.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "tests/testpaths.h"

namespace {

constexpr const char* kHead = "cowl-application 1\n";
constexpr const char* kId = "{59BA1B0D-5C90-4158-A909-406C2E416788}";
constexpr const char* kOtherId = "5d32fe61-985f-44e7-aa09-5ee82bb29976";

struct Parsed {
  ApplicationDescription description;
  bool good = false;
  int32_t line = 0;
  std::string problem;
  std::string subject;
};

Parsed parse(const std::string& text) {
  Parsed result;
  ApplicationDescriptionParser parser(result.description);
  result.good = parser.parse(text);
  result.line = parser.line();
  if (parser.problem() != nullptr) result.problem = parser.problem();
  result.subject = parser.subject();
  return result;
}

TEST(ApplicationDescriptionParser, ReadsEveryStatement) {
  const Parsed parsed =
      parse(std::string(kHead) +
            "registry \"App/Enable World Object\" \"a \\\"b\\\" \\\\ #c\" # note\r\n"
            "component points " +
            kId +
            " name \"Point documents\" group g\n"
            "class PointDocument " +
            kOtherId +
            " tags a,,b\n"
            "default IOroDoc\n\tdefault  IOther\n"
            "initializer\n");
  ASSERT_TRUE(parsed.good) << parsed.line << parsed.problem;
  ASSERT_EQ(parsed.description.registry.size(), 1u);
  EXPECT_EQ(parsed.description.registry[0].key, "App/Enable World Object");
  EXPECT_EQ(parsed.description.registry[0].value, "a \"b\" \\ #c");
  ASSERT_EQ(parsed.description.components.size(), 1u);
  const auto& component = parsed.description.components[0];
  EXPECT_EQ(component.library, "points");
  EXPECT_EQ(component.name, "Point documents");
  EXPECT_EQ(component.group, "g");
  ASSERT_EQ(component.classes.size(), 1u);
  EXPECT_EQ(component.classes[0].id.data1, 0x5D32FE61u);
  EXPECT_EQ(component.classes[0].tags, (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(component.classes[0].defaultOf, (std::vector<std::string>{"IOroDoc", "IOther"}));
  EXPECT_TRUE(component.classes[0].initializer);
}

TEST(ApplicationDescriptionParser, AComponentIsCalledByItsLibraryWhereNoNameIsTold) {
  const Parsed parsed = parse(std::string(kHead) + "component points " + kId + "\n");
  ASSERT_TRUE(parsed.good);
  EXPECT_EQ(parsed.description.components[0].name, "points");
  EXPECT_EQ(parsed.description.components[0].group, "");
}

TEST(ApplicationDescriptionParser, RefusesABadLineAndTellsItsNumber) {
  const std::string component = std::string("component points ") + kId + "\n";
  const std::string lines[] = {
      "compnent points {}",
      "registry a",
      "registry a b c",
      "registry \"\" b",
      "registry \"a b",
      "registry \"a\"b c",
      "registry a\"b c",
      "registry a \xC3\xA9",
      "component points",
      "component points {59BA1B0D-5C90-4158-A909}",
      "component points {00000000-0000-0000-0000-000000000000}",
      std::string("component other ") + kId,
      std::string("component ../points ") + kOtherId,
      std::string("component \"\" ") + kOtherId,
      std::string("component .. ") + kOtherId,
      std::string("component other ") + kOtherId + " colour red",
      std::string("component other ") + kOtherId + " name",
      "class A",
      std::string("class A ") + kId,
      "class A 12",
      "default IOroDoc",
      "initializer",
      "initializer now",
      "cowl-application 1",
  };
  for (const std::string& line : lines) {
    const Parsed parsed = parse(kHead + component + "# fine\n" + line + "\nregistry a b\n");
    EXPECT_FALSE(parsed.good) << line;
    EXPECT_EQ(parsed.line, 4) << line;
    EXPECT_FALSE(parsed.problem.empty()) << line;
  }
}

TEST(ApplicationDescriptionParser, AnInterfaceHasOneDefaultClassInAGroup) {
  const std::string text = std::string(kHead) + "component a " + kId + "\nclass A " + kOtherId +
                           "\ndefault IFoo\ndefault IFoo\n";
  EXPECT_EQ(parse(text).line, 5);
  EXPECT_EQ(parse(text).subject, "IFoo");
}

TEST(ApplicationDescriptionParser, NeedsItsFirstStatement) {
  EXPECT_FALSE(parse("").good);
  EXPECT_FALSE(parse("# only a comment\n").good);
  EXPECT_EQ(parse("registry a b\n").line, 1);
  EXPECT_EQ(parse("cowl-application 2\n").line, 1);
  EXPECT_EQ(parse("cowl-application\n").line, 1);
  EXPECT_TRUE(parse("\xEF\xBB\xBF"
                    "cowl-application 1")
                  .good);
}

TEST(ApplicationDescriptionParser, RefusesAFileThatIsTooLarge) {
  EXPECT_FALSE(parse(kHead + std::string(ApplicationDescriptionParser::kLargestText, '#')).good);
}

TEST(ApplicationDescriptionParser, SurvivesEveryTruncationAndDamage) {
  const std::string text = std::string(kHead) + "registry \"a b\" c\ncomponent points " + kId +
                           " name \"x\"\nclass A " + kOtherId + " tags a,b\ndefault I\n";
  for (size_t at = 0; at < text.size(); ++at) {
    const Parsed cut = parse(text.substr(0, at));
    EXPECT_EQ(cut.good, cut.problem.empty());
    for (const int flip : {1, 2, 4, 8, 16, 32, 64, 128}) {
      std::string damaged = text;
      damaged[at] = static_cast<char>(damaged[at] ^ flip);
      const Parsed parsed = parse(damaged);
      EXPECT_EQ(parsed.good, parsed.problem.empty());
    }
  }
}

TEST(ApplicationDescriptionParser, TakesTheDescriptionThatTheProductShips) {
  std::ifstream file(tests::sourceDir() / "components" / "initserver" / "cowl.description",
                     std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  const Parsed parsed = parse(text);
  EXPECT_TRUE(parsed.good) << parsed.line << ": " << parsed.problem;
  size_t lines = 0;
  for (size_t at = text.find("\ncomponent "); at != text.npos;
       at = text.find("\ncomponent ", at + 1)) {
    ++lines;
  }
  EXPECT_GT(lines, 3u);
  EXPECT_EQ(parsed.description.components.size(), lines);
}

}  // namespace
