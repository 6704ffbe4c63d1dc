#include "base/basic/keldataindex.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

TEST(KelDataIndex, IsSizedForWhatIsExpected) {
  const struct {
    int32_t expected;
    uint32_t buckets;
  } rows[] = {{3000, 4099}, {50, 67}, {20, 37}, {5, 5},  {4, 5},
              {3, 3},       {2, 17},  {1, 17},  {0, 17}, {-1, 17}};
  for (const auto& row : rows) {
    EXPECT_EQ(KelDataIndex<int>(row.expected).table().bucketCount(), row.buckets) << row.expected;
  }
}

TEST(KelDataIndex, FindsAPathInEveryForm) {
  int value = 5;
  KelDataIndex<int> index(20);
  index.add(KelCString("A/B c"), &value);
  const char* const pieces[] = {"A", "/B", "", " c", nullptr};
  EXPECT_EQ(index.value("A/B c"), &value);
  EXPECT_EQ(index.value(std::string_view("A/B cd", 5)), &value);
  EXPECT_EQ(index.value(static_cast<KelDataIndex<int>::Pieces>(pieces)), &value);
  EXPECT_EQ(index.value("A/B"), nullptr);
  EXPECT_EQ(index.find("a/B c"), nullptr);
}

TEST(KelDataIndex, NullPathHasNoEntryAndNullListIsTheEmptyPath) {
  int value = 5;
  KelDataIndex<int> index(20);
  index.add(KelCString(""), &value);
  EXPECT_EQ(index.find(static_cast<const char*>(nullptr)), nullptr);
  EXPECT_EQ(index.value(static_cast<KelDataIndex<int>::Pieces>(nullptr)), &value);
  EXPECT_EQ(index.value(std::string_view()), &value);
}

TEST(KelDataIndex, EntryWithoutAValueIsStillAnEntry) {
  KelDataIndex<int> index(20);
  index.add(KelCString("A"), nullptr);
  EXPECT_NE(index.find("A"), nullptr);
  EXPECT_EQ(index.value("A"), nullptr);
  EXPECT_TRUE(index.remove("A"));
  EXPECT_FALSE(index.remove("A"));
}

TEST(KelDataIndex, AnyCutOfAPathIntoPiecesFindsIt) {
  std::mt19937 random(42);
  KelDataIndex<std::string> index(20);
  std::vector<std::string> paths;
  for (int n = 0; n < 200; ++n) {
    std::string path;
    for (size_t length = random() % 40; path.size() < length;) {
      path.push_back(static_cast<char>(1 + random() % 255));
    }
    paths.push_back(path + std::to_string(n));
  }
  for (std::string& path : paths) index.add(KelCString(path.c_str()), &path);
  for (std::string& path : paths) {
    std::vector<std::string> parts;
    for (size_t at = 0; at < path.size();) {
      parts.push_back(path.substr(at, random() % 12));
      at += parts.back().size();
    }
    std::vector<const char*> pieces;
    for (const std::string& part : parts) pieces.push_back(part.c_str());
    pieces.push_back(nullptr);
    EXPECT_EQ(index.value(static_cast<KelDataIndex<std::string>::Pieces>(pieces.data())), &path);
    EXPECT_EQ(index.value(path.c_str()), &path);
    EXPECT_EQ(index.value(std::string_view(path)), &path);
  }
}

}  // namespace
