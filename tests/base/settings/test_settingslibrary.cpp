// Settings through the XML library that the product ships: what it writes, and what comes back.

#include <limits>

#include "tests/base/settings/librarysettings.h"

namespace {

using testing::IsEmpty;

class SettingsInLibrary : public tests::LibrarySettings {
 protected:
  struct Store {
    Store() : store(true, 5, 20) {
      store.CreateDirectory("Fonts & Languages     ");
      store.CreateDirectory("A");
      store.CreateFloat("A/f", 0, -std::numeric_limits<double>::max(),
                        std::numeric_limits<double>::max(), kSaved);
      store.CreateString("A/s", 100, "", kSaved);
      store.CreateOroString("Fonts & Languages     /w", 1000, OroString(), kSaved);
      store.CreateBlob("b", 0, nullptr, kSaved);
      store.CreateInt("i", 0, INT32_MIN, INT32_MAX, kSaved);
    }
    KelDataStore store;
  };

  // Sets, dies or commits, starts again.
  bool survives(const OroString& text, bool commit) {
    write(kDocument, document(""));
    {
      Store first;
      first.store.SetOroString(nullptr, "Fonts & Languages     /w", text);
      EXPECT_TRUE(!commit || first.store.CommitWriter());
    }
    Store second;
    second.store.Accept(second.store.GetReader());
    return second.store.GetOroString("Fonts & Languages     /w", nullptr) == text;
  }
};

TEST_F(SettingsInLibrary, WritesADocumentByteForByte) {
  write(kDocument, document(""));
  Store session;
  session.store.SetFloat(nullptr, "A/f", 0.1);
  session.store.SetString(nullptr, "A/s", "caf\xE9 <&>'\"                              ");
  session.store.SetOroString(nullptr, "Fonts & Languages     /w", OroString(u"\u20AC\n\tx"));
  const std::string data(50, 'x');
  session.store.SetBlob(nullptr, "b", data.data(), 50);
  session.store.SetInt(nullptr, "i", -5);
  EXPECT_TRUE(session.store.CommitWriter());
  EXPECT_EQ(read(kDocument),
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
            "<OroDataStore>\n"
            "\t<section name=\"A\">\n"
            "\t\t<value name=\"f\" type=\"float\">1.000000000000000e-01</value>\n"
            "\t\t<value name=\"s\" type=\"text_latin1\">caf\xEF\xBF\xA9 &lt;&amp;&gt;'\""
            "                              </value>\n"
            "\t</section>\n"
            "\t<value name=\"b\" type=\"binary_base64\">\n"
            "\t\teHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4eHh4\n"
            "\t\teHg=\n"
            "\t</value>\n"
            "\t<section name=\"Fonts &amp; Languages     \">\n"
            "\t\t<value name=\"w\" type=\"text_unicode\">\xE2\x82\xAC\n\tx</value>\n"
            "\t</section>\n"
            "\t<value name=\"i\" type=\"integer\">-5</value>\n"
            "</OroDataStore>\n");
}

TEST_F(SettingsInLibrary, GivesBackAllThatWasSet) {
  write(kDocument, document(""));
  {
    Store first;
    first.store.SetFloat(nullptr, "A/f", 0.5);
    first.store.SetString(nullptr, "A/s", "caf\xE9");
    first.store.SetBlob(nullptr, "b", "\0\1\2", 3);
    first.store.SetInt(nullptr, "i", INT32_MIN);
  }
  Store second;
  EXPECT_TRUE(second.store.AcceptPath(second.store.GetReader(), "A"));
  EXPECT_TRUE(second.store.AcceptPath(second.store.GetReader(), "b"));
  EXPECT_TRUE(second.store.AcceptPath(second.store.GetReader(), "i"));
  EXPECT_EQ(second.store.GetFloat("A/f", nullptr), 0.5);
  EXPECT_STREQ(second.store.GetString("A/s", nullptr), "caf\xE9");
  EXPECT_EQ(second.store.GetInt("i", nullptr), INT32_MIN);
  int32_t size = 0;
  const void* const data = second.store.GetBlob("b", size, nullptr);
  ASSERT_EQ(size, 3);
  EXPECT_EQ(std::string(static_cast<const char*>(data), 3), std::string("\0\1\2", 3));
}

TEST_F(SettingsInLibrary, KeepsWideTextsAsTheyAre) {
  for (const OroString& text :
       {OroString(u""), OroString(u" "), OroString(u"\n\n"), OroString(u"\ta "), OroString(u"a\nb"),
        OroString(u"<a>&amp;                      "), OroString(u"]]>        "),
        OroString(u"\u00E9\u20AC\uFFFD"), OroString(u"\U0001F600"), OroString(u"x\u0085\u2028y")}) {
    EXPECT_TRUE(survives(text, false)) << text.toUtf8();
    EXPECT_TRUE(survives(text, true)) << text.toUtf8();
  }
  EXPECT_THAT(errors->texts, IsEmpty());
}

TEST_F(SettingsInLibrary, KeepsControlCharacters) {
  for (char16_t unit = 1; unit < 32; ++unit) {
    const char16_t units[] = {u'a', unit, u'b', 0};
    EXPECT_TRUE(survives(OroString(units), false)) << int{unit};
    EXPECT_TRUE(survives(OroString(units), true)) << int{unit};
  }
}

TEST_F(SettingsInLibrary, LosesTheJournalOfATextWhoseTailIsNotEscaped) {
  EXPECT_FALSE(survives(OroString("a<b<c"), false));
  EXPECT_TRUE(exists(kRejected));
  EXPECT_TRUE(survives(OroString("a<b<c"), true)) << "a commit writes what the session knows";
}

TEST_F(SettingsInLibrary, KeepsALongAndDeepPath) {
  write(kDocument, document(""));
  std::string path;
  for (int i = 0; i < 200; ++i) path += (i == 0 ? "S" : "/S") + std::to_string(i);
  const std::string leaf = path + "/leaf";
  {
    KelDataStore store(true, 5, 20);
    store.CreateDirectory(path.c_str());
    store.CreateInt(leaf.c_str(), 0, 0, 9, kSaved);
    store.SetInt(nullptr, leaf.c_str(), 7);
  }
  KelDataStore store(true, 5, 20);
  store.CreateDirectory(path.c_str());
  store.CreateInt(leaf.c_str(), 0, 0, 9, kSaved);
  EXPECT_TRUE(store.AcceptPath(store.GetReader(), leaf.c_str()));
  EXPECT_EQ(store.GetInt(leaf.c_str(), nullptr), 7);
}

TEST_F(SettingsInLibrary, TellsWhereADocumentIsDamaged) {
  write(kDocument, "<OroDataStore>\n<value name=\"a\">5</wrong>\n</OroDataStore>\n");
  EXPECT_EQ(next("a"), 0);
  ASSERT_EQ(errors->texts.size(), 1u);
  EXPECT_THAT(errors->texts[0], testing::HasSubstr("velmora.iniml, line 2, column"));
}

}  // namespace
