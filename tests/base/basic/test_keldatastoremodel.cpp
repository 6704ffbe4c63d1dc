// Random operations on a store, each compared with a plain model of maps and sets.

#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "base/basic/kelcustomdatastore.h"
#include "tests/base/basic/storetest.h"

namespace {

// What the store should hold. Directories of the tree go by full path; the index of directories
// keeps texts of which some lead nowhere any more.
class Model {
 public:
  struct Item {
    int32_t value = 0;
    bool isEvent = false;
    bool inTree = true;
  };

  std::map<std::string, Item> items;
  std::set<std::string> tree;
  std::map<std::string, bool> directories;  // false: known, but leads nowhere

  static std::string nameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);  // npos + 1 is 0
  }
  bool hasParent(const std::string& path) const {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return true;
    const auto found = directories.find(path.substr(0, slash));
    return found != directories.end() && found->second;
  }
  void createDirectory(const std::string& path) {
    for (size_t at = path.find('/'); at != std::string::npos; at = path.find('/', at + 1)) {
      tree.insert(path.substr(0, at));
    }
    tree.insert(path);
    directories[path] = true;
  }
  bool create(const std::string& path, int32_t value, bool isEvent) {
    if (!hasParent(path)) return false;
    items.insert({path, Item{value, isEvent, true}});
    return true;
  }
  bool removeItem(const std::string& path) {
    const auto found = items.find(path);
    if (!hasParent(path) || found == items.end() || !found->second.inTree) return false;
    dropItem(found);
    return true;
  }
  bool removeDirectory(const std::string& path) {
    const auto found = directories.find(path);
    if (!hasParent(path) || found == directories.end() || !found->second) return false;
    std::vector<std::string> gone;
    for (const std::string& directory : tree) {
      if (directory == path || directory.starts_with(path + "/")) gone.push_back(directory);
    }
    for (const std::string& directory : gone) {
      tree.erase(directory);
      directories.erase(nameOf(directory));
    }
    for (const std::string& directory : gone) {
      const auto known = directories.find(directory);
      if (known != directories.end()) known->second = false;
    }
    for (auto item = items.begin(); item != items.end();) {
      const auto next = std::next(item);
      if (item->first.starts_with(path + "/") && item->second.inTree) dropItem(item);
      item = next;
    }
    return true;
  }
  const Item* find(const std::string& path) const {
    const auto found = items.find(path);
    return found == items.end() ? nullptr : &found->second;
  }

 private:
  void dropItem(std::map<std::string, Item>::iterator item) {
    if (item->second.isEvent) {
      item->second.inTree = false;
    } else {
      items.erase(item);
    }
  }
};

class StoreModelTest : public testing::TestWithParam<uint32_t> {
 protected:
  std::string somePath() {
    std::string path(1, static_cast<char>('A' + random() % 3));
    while (random() % 2 != 0) path += std::string("/") + static_cast<char>('A' + random() % 3);
    return path;
  }
  void step();
  void compare(const std::string& path);
  void changeItem(const std::string& path);

  std::mt19937 random{GetParam()};
  Model model;
  KelCustomDataStore store;
};

void StoreModelTest::changeItem(const std::string& path) {
  const auto value = static_cast<int32_t>(random());
  const Model::Item* const item = model.find(path);
  const bool isInt = item != nullptr && !item->isEvent;
  if (isInt) model.items[path].value = value;
  // Cut anywhere, the pieces stand for the same path.
  const std::string head = path.substr(0, random() % (path.size() + 1));
  const char* const pieces[] = {head.c_str(), path.c_str() + head.size(), nullptr};
  switch (random() % 4) {
    case 0:
      EXPECT_EQ(store.SetInt(nullptr, path.c_str(), value), isInt);
      break;
    case 1:
      EXPECT_EQ(store.SetInt(nullptr, pieces, value), isInt);
      break;
    case 2:
      EXPECT_EQ(store.InitInt(path.c_str(), value), isInt);
      break;
    default:
      EXPECT_EQ(store.SetIntEx(nullptr, pieces, value, 0), isInt);
  }
}

void StoreModelTest::step() {
  const std::string path = somePath();
  const auto value = static_cast<int32_t>(random());
  switch (random() % 12) {
    case 0:
    case 1:
    case 2:
      store.CreateDirectory(path.c_str());
      model.createDirectory(path);
      break;
    case 3:
    case 4:
      EXPECT_EQ(store.CreateInt(path.c_str(), value, INT32_MIN, INT32_MAX, 0),
                model.create(path, value, false));
      break;
    case 5:
      EXPECT_EQ(store.CreateVoid(path.c_str(), 0), model.create(path, 0, true));
      break;
    case 6:
      EXPECT_EQ(store.RemoveItem(path.c_str()), model.removeItem(path)) << path;
      break;
    case 7:
      EXPECT_EQ(store.RemoveDirectory(path.c_str()), model.removeDirectory(path)) << path;
      break;
    case 8:
      EXPECT_EQ(store.Fire(nullptr, path.c_str()), model.find(path) != nullptr);
      break;
    default:
      changeItem(path);
  }
  compare(path);
  compare(somePath());
}

void StoreModelTest::compare(const std::string& path) {
  const Model::Item* const item = model.find(path);
  bool ok = false;
  const int32_t value = store.GetInt(path.c_str(), &ok);
  ASSERT_EQ(ok, item != nullptr && !item->isEvent) << path;
  ASSERT_EQ(value, item == nullptr || item->isEvent ? 0 : item->value) << path;
  ASSERT_EQ(store.DirectoryExists(path.c_str()), model.directories.count(path) != 0) << path;
  ASSERT_EQ(store.Exists(path.c_str()), item != nullptr || model.directories.count(path) != 0);
  const auto directory = model.directories.find(path);
  if (directory == model.directories.end() || !directory->second) return;
  OroArray<const char*> list;
  store.CollectPaths(path.c_str(), list);
  std::multiset<std::string> expected;
  for (const auto& [name, each] : model.items) {
    if (each.inTree && name.starts_with(path + "/")) expected.insert(name);
  }
  ASSERT_EQ(std::multiset<std::string>(list.begin(), list.end()), expected) << path;
}

TEST_P(StoreModelTest, AgreesWithThePlainModel) {
  for (int n = 0; n < 4000; ++n) {
    ASSERT_NO_FATAL_FAILURE(step()) << n;
    ASSERT_FALSE(HasFailure()) << n;
    if (random() % 500 == 0) {
      store.Clear();
      model = Model();
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, StoreModelTest, testing::Range(1u, 21u));

}  // namespace
