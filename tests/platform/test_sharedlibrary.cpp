#include "platform/sharedlibrary.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "platform/text.h"
#include "tests/platform/textof.h"
#include "tests/tempfolder.h"
#include "tests/testpaths.h"

namespace {

using platform::LibrarySearch;

class SharedLibrary : public testing::Test {
 protected:
  ~SharedLibrary() override {
    platform::setLibraryDirectory(u"");
    platform::closeLibrary(library_);
  }

  void* open(const std::u16string& name, LibrarySearch how = LibrarySearch::alteredPath) {
    library_ = platform::openLibrary(name, how, &errorText_);
    return library_;
  }

  /// "0x", the number in hexadecimal and ":"; the system may have no message for it.
  bool isErrorText(const std::string& text) const {
    const std::size_t colon = text.find(':');
    return text.starts_with("0x") && colon != text.npos && colon > 2 &&
           text.find_first_not_of("0123456789abcdef", 2) == colon;
  }

  const std::u16string leaf_ = std::u16string(u"platformprobe") + platform::librarySuffix();
  const std::filesystem::path probe_ = tests::testLibsDir() / leaf_;
  const platform::LibraryErrorMode silent_{true};
  void* library_ = nullptr;
  std::string errorText_;
};

TEST_F(SharedLibrary, SharesTheSymbolsOfALibraryThatIsOpen) {
  ASSERT_NE(open(tests::textOf(probe_)), nullptr) << errorText_;
  const void* const inside = platform::librarySymbol(library_, "probeAnswer");
  ASSERT_NE(inside, nullptr);
  EXPECT_TRUE(platform::shareSymbols(inside));
}

TEST_F(SharedLibrary, OpensByPathEitherWay) {
  for (const auto how : {LibrarySearch::alteredPath, LibrarySearch::plain}) {
    ASSERT_NE(open(tests::textOf(probe_), how), nullptr) << errorText_;
    EXPECT_EQ(errorText_, "");
    platform::closeLibrary(library_);
  }
  library_ = nullptr;
}

TEST_F(SharedLibrary, GivesItsSymbols) {
  ASSERT_NE(open(tests::textOf(probe_)), nullptr);
  using Answer = int (*)();
  const auto answer = reinterpret_cast<Answer>(platform::librarySymbol(library_, "probeAnswer"));
  ASSERT_NE(answer, nullptr);
  EXPECT_EQ(answer(), 42);
  EXPECT_EQ(platform::librarySymbol(library_, "probeanswer"), nullptr);
  EXPECT_EQ(platform::librarySymbol(nullptr, "probeAnswer"), nullptr);
}

TEST_F(SharedLibrary, OpensUnderANameBeyondAscii) {
  const tests::TempFolder folder;
  const auto copy =
      folder.file(std::u16string(u"pr\u00F6be \u65E5\U0001F600") + platform::librarySuffix());
  std::filesystem::copy_file(probe_, copy);
  EXPECT_NE(open(tests::textOf(copy)), nullptr) << errorText_;
  platform::closeLibrary(library_);
  library_ = nullptr;
}

TEST_F(SharedLibrary, BareNameIsFoundInTheLibraryDirectoryOnly) {
  EXPECT_EQ(open(leaf_), nullptr);
  platform::setLibraryDirectory(tests::textOf(tests::testLibsDir()));
  EXPECT_NE(open(leaf_, LibrarySearch::plain), nullptr) << errorText_;
  platform::closeLibrary(library_);
  platform::setLibraryDirectory(u"");
  EXPECT_EQ(open(leaf_), nullptr);
}

TEST_F(SharedLibrary, MissingFileGivesNumberAndMessage) {
  const std::u16string names[] = {u"\\no\\such\\folder\\missing", u"missing", u"C:\\missing", u""};
  for (const auto& name : names) {
    errorText_.clear();
    EXPECT_EQ(open(name.empty() ? name : name + platform::librarySuffix()), nullptr);
    EXPECT_TRUE(isErrorText(errorText_)) << errorText_;
    EXPECT_FALSE(errorText_.starts_with("0x0:")) << errorText_;
    EXPECT_FALSE(errorText_.ends_with(":")) << errorText_;
  }
}

TEST_F(SharedLibrary, DamagedFileGivesANumber) {
  const tests::TempFolder folder;
  const auto file = folder.write(leaf_, "this is no library");
  EXPECT_EQ(open(tests::textOf(file)), nullptr);
  EXPECT_TRUE(isErrorText(errorText_)) << errorText_;
}

// The loader of one system maps without looking; touching what is not there would end the process.
TEST_F(SharedLibrary, AFileThatHasLostItsEndDoesNotOpen) {
  const tests::TempFolder folder;
  std::ifstream probe(probe_, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(probe), {}};
  ASSERT_GT(bytes.size(), 4096u);
  // What only debuggers read stands at the end and may be missing.
  for (size_t size = 0; size < bytes.size() * 3 / 4; size += size < 512 ? 13 : 509) {
    const auto file = folder.write(leaf_, std::string_view(bytes).substr(0, size));
    errorText_.clear();
    void* const library = open(tests::textOf(file));
    if (library == nullptr) {
      EXPECT_TRUE(isErrorText(errorText_)) << size << ": " << errorText_;
      continue;
    }
    // Whole where it counts, then.
    using Answer = int (*)();
    const auto answer = reinterpret_cast<Answer>(platform::librarySymbol(library_, "probeAnswer"));
    ASSERT_NE(answer, nullptr) << size;
    EXPECT_EQ(answer(), 42) << size;
    platform::closeLibrary(library_);
    library_ = nullptr;
  }
}

TEST_F(SharedLibrary, AHalfAndAnEmptyFileDoNotOpen) {
  const tests::TempFolder folder;
  std::ifstream probe(probe_, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(probe), {}};
  for (const size_t size : {size_t{0}, size_t{1}, size_t{64}, size_t{700}, size_t{4096}}) {
    const auto file = folder.write(leaf_, std::string_view(bytes).substr(0, size));
    EXPECT_EQ(open(tests::textOf(file)), nullptr) << size;
  }
}

TEST_F(SharedLibrary, AFolderOfThatNameDoesNotOpen) {
  const tests::TempFolder folder;
  std::filesystem::create_directory(folder.file(leaf_));
  EXPECT_EQ(open(tests::textOf(folder.file(leaf_))), nullptr);
  EXPECT_TRUE(isErrorText(errorText_)) << errorText_;
}

TEST_F(SharedLibrary, MessageIsBounded) {
  EXPECT_EQ(open(u"\\" + std::u16string(2000, u'x') + platform::librarySuffix()), nullptr);
  EXPECT_TRUE(isErrorText(errorText_)) << errorText_;
  EXPECT_LE(errorText_.size(), errorText_.find(':') + 1 + 254);
}

TEST_F(SharedLibrary, ErrorTextIsOptional) {
  EXPECT_EQ(platform::openLibrary(u"\\missing", LibrarySearch::plain), nullptr);
}

TEST_F(SharedLibrary, ClosingNothingDoesNothing) { platform::closeLibrary(nullptr); }

}  // namespace
