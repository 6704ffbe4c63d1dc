#include "platform/knownfolders.h"

#include <gtest/gtest.h>

#include "platform/hooks.h"

namespace {

using platform::KnownFolder;

TEST(KnownFolders, HaveTheNumbersOfTheSystem) {
  EXPECT_EQ(static_cast<int>(KnownFolder::documents), 5);
  EXPECT_EQ(static_cast<int>(KnownFolder::appData), 26);
  EXPECT_EQ(static_cast<int>(KnownFolder::commonAppData), 35);
  EXPECT_EQ(static_cast<int>(KnownFolder::profile), 40);
  EXPECT_EQ(static_cast<int>(KnownFolder::commonDocuments), 46);
}

TEST(KnownFolders, HookAnswersForAll) {
  platform::HookGuard guard(platform::knownFolderHook, [](KnownFolder folder) {
    return folder == KnownFolder::profile ? std::u16string(u"\\tests\\home") : std::u16string();
  });
  EXPECT_EQ(platform::knownFolderPath(KnownFolder::profile), u"\\tests\\home");
  EXPECT_EQ(platform::knownFolderPath(KnownFolder::appData), u"");
}

TEST(KnownFolders, ComeWithBackslashes) {
  const std::u16string folder = platform::knownFolderPath(KnownFolder::commonAppData);
  EXPECT_FALSE(folder.empty());
  EXPECT_EQ(folder.find(u'/'), folder.npos);
  EXPECT_NE(folder.find(u'\\'), folder.npos);
}

}  // namespace
