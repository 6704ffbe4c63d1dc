#include "orobasictypes/oropath.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <random>
#include <string>
#include <type_traits>

#include "interfaces/IOroDirService.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/kelrealloc.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/testaccess.h"
#include "platform/files.h"
#include "platform/text.h"
#include "tests/orobasictypes/texts.h"
#include "tests/support/fakebroker.h"
#include "tests/support/pooloff.h"
#include "tests/tempfolder.h"

namespace {

using tests::borrowed;
using tests::owned;
using tests::units;

OroPath path(const char16_t* text) { return OroPath(owned(text)); }

TEST(OroPath, AddsNoFieldAndNoVirtualOperation) {
  EXPECT_EQ(sizeof(OroPath), sizeof(OroString));
  EXPECT_FALSE(std::is_polymorphic_v<OroPath>);
  EXPECT_TRUE(OroPath().isNull());
}

struct PathRow {
  const char16_t* text;
  const char16_t* result;
};

TEST(OroPath, CanonicalForm) {
  for (const PathRow& row : {
           PathRow{u"a/b/", u"a\\b"},
           PathRow{u"a\\b\\\\", u"a\\b"},
           PathRow{u"C:\\", u"C:"},
           PathRow{u"C:/", u"C:"},
           PathRow{u"\\", u"\\"},
           PathRow{u"/", u"\\"},
           PathRow{u"\\\\", u"\\"},
           PathRow{u"//", u"\\"},
           PathRow{u"//c/dir", u"c:\\dir"},
           PathRow{u"//c/", u"c:"},
           PathRow{u"////", u"\\:"},
           PathRow{u"//server/share", u"\\\\server\\share"},
           PathRow{u"\\\\c\\dir", u"\\\\c\\dir"},
           PathRow{u"//c", u"\\\\c"},
           PathRow{u"a//b", u"a\\\\b"},
           PathRow{u"a/../b", u"a\\..\\b"},
           PathRow{u"", u""},
           PathRow{u".\\", u"."},
       }) {
    EXPECT_EQ(units(path(row.text)), row.result);
    OroPath assigned;
    assigned = owned(row.text);
    EXPECT_EQ(units(assigned), row.result);
  }
  EXPECT_EQ(units(OroPath("a/b/")), u"a\\b");
  OroPath narrow;
  narrow = "a/b/";
  EXPECT_EQ(units(narrow), u"a\\b");
}

TEST(OroPath, NormalizingABorrowedTextCopiesItFirst) {
  const char16_t literal[] = u"//c/dir/";
  EXPECT_EQ(units(OroPath(OroString(literal, nullptr))), u"c:\\dir");
  EXPECT_EQ(std::u16string(literal), u"//c/dir/");
}

TEST(OroPath, ABorrowedTextWithoutSlashKeepsItsTrailingSeparators) {
  EXPECT_EQ(units(OroPath(borrowed(u"a\\b\\\\"))), u"a\\b\\\\");
  EXPECT_EQ(units(OroPath(borrowed(u"a/b\\\\"))), u"a\\b");
}

TEST(OroPath, CopyingFromAPathDoesNotNormalize) {
  OroPath odd(borrowed(u"a\\"));
  const OroPath copy(odd);
  EXPECT_EQ(units(copy), u"a\\");
  OroPath assigned;
  assigned = odd;
  EXPECT_EQ(units(assigned), u"a\\");
}

TEST(OroPath, ItsNarrowFormIsThatOfThePath) {
  const OroString pair(u"a/b", "a/b");
  EXPECT_STREQ(OroPath(pair).toNarrow(), "a\\b");
  EXPECT_STREQ(OroPath(pair, "c").toNarrow(), "a\\b\\c");
}

TEST(OroPath, SharedConstants) {
  EXPECT_EQ(units(OroPath::separator()), u"\\");
  EXPECT_EQ(units(OroPath::alternativeSeparator()), u"/");
  EXPECT_EQ(units(OroPath::extensionMark()), u".");
  EXPECT_EQ(OroPath::separator().textCapacity(), 0);
}

TEST(OroPath, TheSystemSeesABareDriveWithItsSeparator) {
  EXPECT_EQ(units(path(u"C:\\").toOsPath()), u"C:\\");
  EXPECT_EQ(units(path(u"1:").toOsPath()), u"1:\\");
  EXPECT_EQ(units(path(u"C:\\a").toOsPath()), u"C:\\a");
  EXPECT_EQ(units(path(u"C").toOsPath()), u"C");
  EXPECT_TRUE(OroPath().toOsPath().isEmpty());
}

TEST(OroPath, Appends) {
  struct Joint {
    const char16_t* path;
    const char16_t* name;
    const char16_t* result;
  };
  for (const Joint& row : {
           Joint{u"a", u"b", u"a\\b"},
           Joint{u"a", u"\\b", u"a\\\\b"},
           Joint{u"a", u"b/c/", u"a\\b\\c"},
           Joint{u"\\", u"b", u"\\b"},
           Joint{u"C:", u"b", u"C:\\b"},
           Joint{u"", u"b/", u"b"},
           Joint{u"a", u"", u"a"},
           Joint{u"a", u"..", u"a\\.."},
           Joint{u"", u"", u""},
       }) {
    OroPath joint = path(row.path);
    EXPECT_EQ(units(joint.joined(owned(row.name))), row.result);
    EXPECT_EQ(units(joint.joined(platform::toSystem(row.name).c_str())), row.result);
    EXPECT_EQ(units(OroPath(joint, owned(row.name))), row.result);
    EXPECT_EQ(units(joint), row.path);
    joint.append(owned(row.name));
    EXPECT_EQ(units(joint), row.result);
  }
  OroPath self = path(u"a\\b");
  self.append(self);
  EXPECT_EQ(units(self), u"a\\b\\a\\b");
}

TEST(OroPath, Parent) {
  for (const PathRow& row : {
           PathRow{u"a\\b\\c", u"a\\b"},
           PathRow{u"file.txt", u"."},
           PathRow{u"\\file.txt", u"\\"},
           PathRow{u"\\", u"\\"},
           PathRow{u"C:", u"."},
           PathRow{u"C:\\a", u"C:"},
           PathRow{u"", u"."},
           PathRow{u"a\\\\b", u"a\\"},
       }) {
    EXPECT_EQ(units(path(row.text).parent()), row.result);
  }
  EXPECT_EQ(units(OroPath().parent()), u".");
  OroPath mixed;
  mixed.assign(borrowed(u"a\\b/c"));
  EXPECT_EQ(units(mixed.parent()), u"a\\b");
}

TEST(OroPath, FileName) {
  struct Names {
    const char16_t* path;
    const char16_t* whole;
    const char16_t* stem;
    const char16_t* extension;
  };
  for (const Names& row : {
           Names{u"a\\b.txt", u"b.txt", u"b", u"txt"},
           Names{u"a.b\\c", u"c", u"c", u""},
           Names{u"b.tar.gz", u"b.tar.gz", u"b.tar", u"gz"},
           Names{u"a\\.profile", u".profile", u"", u"profile"},
           Names{u"a\\b.", u"b.", u"b", u""},
           Names{u"\\", u"", u"", u""},
           Names{u"", u"", u"", u""},
       }) {
    EXPECT_EQ(units(path(row.path).fileName()), row.whole);
    EXPECT_EQ(units(path(row.path).fileName(false)), row.stem);
    EXPECT_EQ(units(path(row.path).extension()), row.extension);
    OroString name;
    EXPECT_TRUE(path(row.path).split(name));
    EXPECT_EQ(units(name), row.stem);
  }
  EXPECT_TRUE(OroPath().fileName().isEmpty());
  OroPath mixed;
  mixed.assign(borrowed(u"a\\b/c.d"));
  EXPECT_EQ(units(mixed.fileName()), u"b/c.d") << "only \\ counts";
}

TEST(OroPath, SetsExtensions) {
  struct Extension {
    const char16_t* path;
    const char* extension;
    const char16_t* result;
  };
  for (const Extension& row : {
           Extension{u"a.b", ".x", u"a.x"},
           Extension{u"a.b", "x", u"a.x"},
           Extension{u"a", "x", u"a.x"},
           Extension{u"a.b\\c", "x", u"a.b\\c.x"},
           Extension{u"a.b", "", u"a"},
           Extension{u"a.b", nullptr, u"a"},
           Extension{u"a.b", ".", u"a."},
           Extension{u"a.b", "x\\", u"a.x\\"},
           Extension{u"a.b.c", "x", u"a.b.x"},
       }) {
    OroPath changed = path(row.path);
    changed.setExtension(row.extension);
    EXPECT_EQ(units(changed), row.result);
    OroPath literal{OroString(row.path, nullptr)};
    literal.setExtension(OroString(row.extension));
    EXPECT_EQ(units(literal), row.result);
  }
}

TEST(OroPath, InsertsBeforeTheExtension) {
  for (const PathRow& row : {PathRow{u"a\\b.txt", u"a\\b-1.txt"}, PathRow{u"a.b\\c", u"a.b\\c-1"},
                             PathRow{u".x", u"-1.x"}, PathRow{u"", u"-1"}}) {
    OroPath changed = path(row.text);
    changed.insertBeforeExtension(borrowed(u"-1"));
    EXPECT_EQ(units(changed), row.result);
  }
}

TEST(OroPath, AbsoluteAndRelative) {
  for (const char16_t* const text : {u"\\a", u"\\", u"c:\\a", u"Z:", u"c:x"}) {
    EXPECT_TRUE(path(text).isAbsolute());
    EXPECT_FALSE(path(text).isRelative());
  }
  for (const char16_t* const text : {u"a", u"", u".", u"1:\\a", u"\u00E9:\\a", u"a\\b:"}) {
    EXPECT_FALSE(path(text).isAbsolute());
    EXPECT_TRUE(path(text).isRelative());
  }
}

TEST(OroPath, ComparesIgnoringTheCaseOfAscii) {
  EXPECT_TRUE(path(u"A\\b").equalsIgnoringCase(path(u"a\\B")));
  EXPECT_FALSE(path(u"A\\b").differsIgnoringCase(path(u"a\\B")));
  EXPECT_TRUE(path(u"\u00C9").differsIgnoringCase(path(u"\u00E9")));
  EXPECT_TRUE(OroPath().equalsIgnoringCase(path(u"")));
}

TEST(OroPath, CollapsesDots) {
  struct Dots {
    const char16_t* path;
    const char16_t* result;
    bool removed;
  };
  for (const Dots& row : {
           Dots{u"a\\b\\..\\c", u"a\\c", true},
           Dots{u"a\\b\\c\\..\\..\\d", u"a\\d", true},
           Dots{u"b\\..\\c", u"b\\..\\c", false},
           Dots{u"\\..\\c", u"\\..\\c", false},
           Dots{u"\\a\\..\\c", u"\\c", true},
           Dots{u"a\\b\\..", u"a\\b\\..", false},
           Dots{u"a\\\\..\\c", u"a\\c", true},
           Dots{u"C:\\a\\..\\b\\..\\c", u"C:\\c", true},
           Dots{u"..\\..\\c", u"..\\..\\c", false},
           Dots{u"", u"", false},
       }) {
    for (OroPath changed : {path(row.path), OroPath(borrowed(row.path))}) {
      EXPECT_EQ(changed.collapseDots(), row.removed);
      EXPECT_EQ(units(changed), row.result);
    }
  }
}

TEST(OroPath, CollapsingPrefersBackslashes) {
  OroPath mixed;
  mixed.assign(owned(u"x/a/../b\\c\\..\\d"));
  EXPECT_TRUE(mixed.collapseDots());
  EXPECT_EQ(units(mixed), u"x/b\\d") << "first the \\ form, then the / form";
  mixed.assign(owned(u"a\\b/c/../d"));
  EXPECT_TRUE(mixed.collapseDots());
  EXPECT_EQ(units(mixed), u"a/d") << "back to the last \\ although a / is nearer";
  mixed.assign(owned(u"a/../b\\c\\..\\d"));
  EXPECT_TRUE(mixed.collapseDots());
  EXPECT_EQ(units(mixed), u"a/../b\\d");
}

TEST(OroPath, ReplacesBlanksInTheLastPart) {
  struct Blanks {
    const char16_t* path;
    const char16_t* result;
    bool changed;
  };
  for (const Blanks& row : {
           Blanks{u"a b\\c  d\te", u"a b\\c__d_e", true},
           Blanks{u"a b", u"a_b", true},
           Blanks{u"a b\\c", u"a b\\c", false},
           Blanks{u"c\u00A0d", u"c\u00A0d", false},
           Blanks{u"", u"", false},
       }) {
    for (OroPath changed : {path(row.path), OroPath(borrowed(row.path))}) {
      EXPECT_EQ(changed.replaceBlanksInName(), row.changed);
      EXPECT_EQ(units(changed), row.result);
    }
  }
  OroPath mixed;
  mixed.assign(borrowed(u"a b/c d"));
  EXPECT_TRUE(mixed.replaceBlanksInName());
  EXPECT_EQ(units(mixed), u"a b/c_d");
}

TEST(OroPath, RandomTextsBecomeCanonicalOnce) {
  std::mt19937 random(12);
  for (int i = 0; i < 20000; ++i) {
    std::u16string text;
    for (unsigned length = random() % 10; length > 0; --length) text += u"a.:/\\"[random() % 5];
    const OroPath first = path(text.c_str());
    const std::u16string form = units(first);
    ASSERT_EQ(form.find(u'/'), form.npos);
    ASSERT_TRUE(form.size() < 2 || form.back() != u'\\');
    ASSERT_EQ(units(OroPath(first.joined(OroString()))), form);
    OroPath collapsed(first);
    const bool removed = collapsed.collapseDots();
    ASSERT_EQ(removed, units(collapsed).size() < form.size());
    ASSERT_FALSE(first.parent().isEmpty());
  }
}

// The most bytes that stood in blocks made during its life at one time. One at a time.
class HeldBytes {
 public:
  HeldBytes() : before_(kelHeapCalls) {
    sizes.clear();
    held = most = 0;
    kelHeapCalls.allocate = [](size_t size) {
      void* const block = std::malloc(size);
      sizes[block] = size;
      held += size;
      most = std::max(most, held);
      return block;
    };
    kelHeapCalls.release = [](void* block) {
      if (const auto found = sizes.find(block); found != sizes.end()) {
        held -= found->second;
        sizes.erase(found);
      }
      std::free(block);
    };
  }
  ~HeldBytes() { kelHeapCalls = before_; }
  HeldBytes(const HeldBytes&) = delete;
  HeldBytes& operator=(const HeldBytes&) = delete;

  size_t now() const { return held; }
  size_t atMost() const { return most; }

 private:
  static inline std::map<void*, size_t> sizes;
  static inline size_t held;
  static inline size_t most;
  const KelHeapCalls before_;
};

// With the file system. The current directory goes back where it was.

class OroPathOnDisk : public testing::Test {
 protected:
  OroPathOnDisk()
      : before_(platform::currentDirectory(1 << 15)),
        root_(OroString(platform::fromSystemPath(folder_.path().string()).c_str())) {}
  ~OroPathOnDisk() override { platform::setCurrentDirectory(before_); }

  void enter(const OroPath& directory) {
    ASSERT_TRUE(platform::setCurrentDirectory(directory.wideText()));
  }
  static bool isDirectory(const OroPath& directory) {
    return platform::isDirectory(directory.wideText());
  }

  const std::u16string before_;
  tests::TempFolder folder_;
  OroPath root_;
};

TEST_F(OroPathOnDisk, MakesDirectories) {
  const OroPath made = root_.joined("made");
  EXPECT_TRUE(made.makeDirectory(false));
  EXPECT_TRUE(isDirectory(made));
  EXPECT_TRUE(made.makeDirectory(false)) << "it exists";
  EXPECT_TRUE(path(u"\\").makeDirectory(false)) << "so does the root";
  EXPECT_FALSE(root_.joined("a\\b").makeDirectory(false));
}

TEST_F(OroPathOnDisk, AnExistingFileCountsAsMade) {
  const OroPath file = root_.joined("file");
  std::FILE* const stream = platform::openFile(file.wideText(), "wb");
  ASSERT_NE(stream, nullptr);
  std::fclose(stream);
  EXPECT_TRUE(file.makeDirectory(false));
  EXPECT_FALSE(isDirectory(file));
  EXPECT_FALSE(file.joined("a\\b").makeDirectory(true)) << "nothing can be made below it";
}

TEST_F(OroPathOnDisk, MakesMissingParents) {
  const OroPath deep = root_.joined("a\\B\\\u00E9\\d");
  EXPECT_TRUE(deep.makeDirectory(true));
  EXPECT_TRUE(isDirectory(deep));
  EXPECT_TRUE(deep.makeDirectory(true));
  OroPath deeper = root_;
  for (int i = 0; i < 30; ++i) deeper.append("d");
  EXPECT_TRUE(deeper.makeDirectory(true)) << "more than the stack holds to begin with";
  EXPECT_TRUE(isDirectory(deeper));
}

TEST_F(OroPathOnDisk, ALongClimbHoldsOnePathAtATime) {
  const OroPath file = root_.joined("file");
  std::FILE* const stream = platform::openFile(file.wideText(), "wb");
  ASSERT_NE(stream, nullptr);
  std::fclose(stream);
  std::u16string deep = units(file);
  for (int i = 0; i < 1000; ++i) deep += u"\\d";
  const tests::PoolOff poolOff;
  const OroPath made{owned(deep)};
  const HeldBytes bytes;
  EXPECT_FALSE(made.makeDirectory(true));
  EXPECT_EQ(bytes.now(), 0u);
  EXPECT_LT(bytes.atMost(), 100000u);
}

TEST_F(OroPathOnDisk, MakesRelativeDirectories) {
  enter(root_);
  EXPECT_TRUE(path(u"one\\two").makeDirectory(true));
  EXPECT_TRUE(isDirectory(root_.joined("one\\two")));
}

TEST_F(OroPathOnDisk, MakingNothingSucceeds) {
  EXPECT_TRUE(OroPath().makeDirectory(true));
  EXPECT_FALSE(OroPath().makeDirectory(false));
}

TEST_F(OroPathOnDisk, MakesAbsolute) {
  const OroPath inner = root_.joined("x\\y");
  ASSERT_TRUE(inner.makeDirectory(true));
  enter(inner);
  const std::u16string here = platform::currentDirectory(256);
  ASSERT_FALSE(here.empty()) << "the temporary folder's path is too long for this test";
  const OroPath base{owned(here)};
  const OroPath up = base.parent();
  const std::u16string baseText = units(base);
  const std::u16string upText = units(up);
  struct Absolute {
    const char16_t* path;
    std::u16string result;
  };
  for (const Absolute& row : {
           Absolute{u"a\\b", baseText + u"\\a\\b"},
           Absolute{u".\\a", baseText + u"\\a"},
           Absolute{u"..\\a", upText + u"\\a"},
           Absolute{u"..\\.\\..\\a", units(up.parent()) + u"\\a"},
           Absolute{u"a\\..\\b", baseText + u"\\a\\..\\b"},
           Absolute{u".", baseText + u"\\."},
           Absolute{u"..", baseText + u"\\.."},
           Absolute{u"...\\a", baseText + u"\\...\\a"},
           Absolute{u".a", baseText + u"\\.a"},
           Absolute{u"", baseText},
           Absolute{u"\\a", u"\\a"},
           Absolute{u"c:x", u"c:x"},
       }) {
    OroPath changed = path(row.path);
    changed.makeAbsolute();
    EXPECT_EQ(units(changed), row.result);
  }
}

TEST_F(OroPathOnDisk, AClimbBeyondTheRootStaysThere) {
  enter(root_);
  OroPath changed;
  for (int i = 0; i < 100; ++i) changed.OroString::append("..\\");
  changed.OroString::append("a");
  changed.makeAbsolute();
  EXPECT_TRUE(units(changed) == u"\\a" || units(changed) == u".\\a") << changed;
}

TEST_F(OroPathOnDisk, ACurrentDirectoryOf255UnitsCounts) {
  enter(root_);
  const std::u16string here = platform::currentDirectory(1 << 15);
  ASSERT_LT(here.size(), 250u) << "the temporary folder's path is too long for this test";
  for (const size_t length : {255u, 256u}) {
    const OroPath named =
        OroPath{owned(here)}.joined(owned(std::u16string(length - here.size() - 1, u'n')));
    ASSERT_TRUE(named.makeDirectory(false));
    enter(named);
    OroPath changed = path(u"a");
    changed.makeAbsolute();
    EXPECT_EQ(changed.isAbsolute(), length == 255);
  }
}

TEST_F(OroPathOnDisk, ACurrentDirectoryThatIsTooLongCountsAsNone) {
  OroPath deep = root_;
  while (deep.length() < 256) deep.append("ten-letter");
  ASSERT_TRUE(deep.makeDirectory(true));
  enter(deep);
  OroPath changed = path(u"..\\a");
  changed.makeAbsolute();
  EXPECT_EQ(units(changed), u"..\\a");
}

// Named directories.

class FakeDirService : public IOroDirService {
 public:
  static constexpr const char* className() { return "FakeDirService"; }
  using Offers = OroOffers<FakeDirService, IOroDirService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  const OroPath& getDir(const char* name) override {
    path_ = OroPath(OroString(u"dirs"), name);
    return path_;
  }
  void setDir(const char*, const OroPath&) override {}

 private:
  OroPath path_;
};

class OroDirPath : public testing::Test {
 protected:
  OroDirPath() { testaccess::resetDirPath(); }
  ~OroDirPath() override { testaccess::resetDirPath(); }

  tests::FakeBroker broker_;
  IPtr<IOroDirService> service_{new FakeDirService};
};

TEST_F(OroDirPath, AsksTheServiceWhichIsLookedUpOnce) {
  broker_.registerService(KelCString::borrow("IOroDirService"), service_.get());
  EXPECT_EQ(units(oroDirPath("exe")), u"dirs\\exe");
  EXPECT_EQ(units(oroDirPath("temp")), u"dirs\\temp");
  EXPECT_EQ(broker_.serviceRequests, 1);
}

TEST_F(OroDirPath, IsANullPathForGoodWhenThereWasNoServiceAtFirst) {
  EXPECT_TRUE(oroDirPath("exe").isNull());
  broker_.registerService(KelCString::borrow("IOroDirService"), service_.get());
  EXPECT_TRUE(oroDirPath("exe").isNull());
  EXPECT_EQ(broker_.serviceRequests, 1);
}

}  // namespace
