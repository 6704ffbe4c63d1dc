#include "orobasictypes/sortrecords.h"

#include <cstdint>
#include <random>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;

struct Record {
  int32_t key;
  char rest[9];
};

int32_t byKey(const void* a, const void* b, void* sign) {
  const int32_t first = static_cast<const Record*>(a)->key;
  const int32_t second = static_cast<const Record*>(b)->key;
  return *static_cast<int32_t*>(sign) * (first < second ? -1 : first > second ? 1 : 0);
}

std::vector<int32_t> keys(const std::vector<Record>& records) {
  std::vector<int32_t> result;
  for (const Record& record : records) result.push_back(record.key);
  return result;
}

using Sort = void (*)(void*, int32_t, int32_t, int32_t, SortRecordsFunction, void*);

class SortRecords : public testing::TestWithParam<Sort> {};

TEST_P(SortRecords, SortsTheRangeAlone) {
  std::vector<Record> records = {{9, ""}, {4, ""}, {-3, ""}, {7, ""}, {1, ""}, {0, ""}};
  int32_t sign = 1;
  GetParam()(records.data(), 1, 4, sizeof(Record), byKey, &sign);
  EXPECT_THAT(keys(records), ElementsAre(9, -3, 1, 4, 7, 0));
  sign = -1;
  GetParam()(records.data(), 0, 5, sizeof(Record), byKey, &sign);
  EXPECT_THAT(keys(records), ElementsAre(9, 7, 4, 1, 0, -3));
}

TEST_P(SortRecords, LeavesFewerThanTwoAlone) {
  std::vector<Record> records = {{9, ""}, {4, ""}};
  GetParam()(records.data(), 1, 1, sizeof(Record), nullptr, nullptr);
  GetParam()(records.data(), 1, 0, sizeof(Record), nullptr, nullptr);
  EXPECT_THAT(keys(records), ElementsAre(9, 4));
}

TEST_P(SortRecords, MovesWholeRecords) {
  std::mt19937 random(6);
  std::vector<Record> records(5000);
  for (Record& record : records) {
    record.key = static_cast<int32_t>(random());
    for (char& byte : record.rest) byte = static_cast<char>(record.key % 101);
  }
  int32_t sign = 1;
  GetParam()(records.data(), 0, 4999, sizeof(Record), byKey, &sign);
  for (size_t i = 0; i < records.size(); ++i) {
    ASSERT_LE(records[i == 0 ? 0 : i - 1].key, records[i].key);
    for (const char byte : records[i].rest) {
      ASSERT_EQ(byte, static_cast<char>(records[i].key % 101));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(BothKinds, SortRecords, testing::Values(sortRecords, sortRecords2));

TEST(SortRecordsTwins, DoNotMeet) {
  // The second kind is sorted out of a comparison of the first.
  std::vector<Record> records = {{3, ""}, {2, ""}, {1, ""}};
  const SortRecordsFunction nested = [](const void* a, const void* b, void* sign) {
    std::vector<Record> others = {{2, ""}, {1, ""}};
    sortRecords2(others.data(), 0, 1, sizeof(Record), byKey, sign);
    EXPECT_EQ(others[0].key, 1);
    return byKey(a, b, sign);
  };
  int32_t sign = 1;
  sortRecords(records.data(), 0, 2, sizeof(Record), nested, &sign);
  EXPECT_THAT(keys(records), ElementsAre(1, 2, 3));
}

}  // namespace
