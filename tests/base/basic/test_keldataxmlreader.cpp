#include "base/basic/keldataxmlreader.h"

#include "base/basic/keldataint.h"
#include "interfaces/IKelDataFilter.h"
#include "tests/base/basic/recordingreceiver.h"
#include "tests/base/basic/settingsworld.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A store whose settings are read from the document "in.iniml".
class SettingsReader : public tests::SettingsWorld {
 protected:
  SettingsReader() {
    store.CreateInt("i", 1, INT32_MIN, INT32_MAX, kSaved);
    store.CreateFloat("f", 1.5, -1e300, 1e300, kSaved);
    store.CreateString("s", 20, "default", kSaved);
    store.CreateOroString("w", 20, OroString("default"), kSaved);
    store.CreateBlob("b", 3, "abc", kSaved);
  }

  void setDocument(const std::string& content) { write("in.iniml", document(content)); }
  void setValue(const std::string& name, const std::string& text) {
    setDocument("<value name=\"" + name + "\" type=\"?\">" + text + "</value>\n");
  }
  bool read(const char* path, bool notify = false) {
    const IPtr<IKelDataVisitor> reader(store.CreateXmlReader(pathOf("in.iniml"), notify));
    return store.AcceptPath(reader.get(), path);
  }
  std::string blob() {
    int32_t size = 0;
    const void* const data = store.GetBlob("b", size, nullptr);
    return data == nullptr ? "<null>" : std::string(static_cast<const char*>(data), size);
  }

  KelDataStore store{true, 5, 20};
};

TEST_F(SettingsReader, TakesIntegersByTheirPrefix) {
  const std::pair<const char*, int32_t> texts[] = {
      {"5", 5},        {"-7", -7},   {"010", 8},
      {"0x10", 16},    {"0X1f", 31}, {" \n\t5", 5},
      {"5 apples", 5}, {"+3", 3},    {"2147483647", 2147483647},
      {"1.9", 1},      {"1e3", 1},   {"4294967295", -1},
  };
  for (const auto& [text, value] : texts) {
    setValue("i", text);
    EXPECT_TRUE(read("i")) << text;
    EXPECT_EQ(store.GetInt("i", nullptr), value) << text;
  }
}

TEST_F(SettingsReader, LeavesAnItemWhoseTextIsNoNumber) {
  for (const char* text : {"", "x", "true", "-", " "}) {
    setValue("i", text);
    EXPECT_FALSE(read("i")) << text;
    EXPECT_EQ(store.GetInt("i", nullptr), 1);
    setValue("f", text);
    EXPECT_FALSE(read("f")) << text;
    EXPECT_EQ(store.GetFloat("f", nullptr), 1.5);
  }
}

TEST_F(SettingsReader, TakesFloatsInAnyForm) {
  const std::pair<const char*, double> texts[] = {
      {"2.5", 2.5}, {"-1.250000000000000e+01", -12.5}, {"1e-3", 0.001}, {"0x10", 16},
      {" 3 m", 3},  {"1.000000000000000e+003", 1000}};
  for (const auto& [text, value] : texts) {
    setValue("f", text);
    EXPECT_TRUE(read("f")) << text;
    EXPECT_EQ(store.GetFloat("f", nullptr), value) << text;
  }
}

TEST_F(SettingsReader, TakesTheLowBytesOfNarrowText) {
  setValue("s", "caf\xC3\xA9");
  EXPECT_TRUE(read("s"));
  EXPECT_STREQ(store.GetString("s", nullptr), "caf\xE9");
  setValue("s", "caf\xEF\xBF\xA9");
  EXPECT_TRUE(read("s"));
  EXPECT_STREQ(store.GetString("s", nullptr), "caf\xE9") << "a widened sign reads the same";
  setValue("s", "ab\xC4\x80yz");
  EXPECT_TRUE(read("s"));
  EXPECT_STREQ(store.GetString("s", nullptr), "ab") << "a low byte of 0 ends the text";
}

TEST_F(SettingsReader, TakesAnEmptyNarrowTextAsMissing) {
  setValue("s", "");
  EXPECT_FALSE(read("s"));
  EXPECT_STREQ(store.GetString("s", nullptr), "default");
  setValue("s", "\xC4\x80");
  EXPECT_FALSE(read("s"));
  EXPECT_STREQ(store.GetString("s", nullptr), "default");
}

TEST_F(SettingsReader, TakesAnEmptyWideTextAsAValue) {
  setValue("w", "");
  EXPECT_TRUE(read("w"));
  EXPECT_TRUE(store.GetOroString("w", nullptr).isEmpty());
}

TEST_F(SettingsReader, TakesWideTextAsItIs) {
  setValue("w", " a&lt;b\n\t\xE2\x82\xAC ");
  EXPECT_TRUE(read("w"));
  EXPECT_STREQ(store.GetOroString("w", nullptr).toUtf8(), " a<b\n\t\xE2\x82\xAC ");
}

TEST_F(SettingsReader, DecodesBlobs) {
  setValue("b", "\n\t\tWFla\n\t");
  EXPECT_TRUE(read("b"));
  EXPECT_EQ(blob(), "XYZ");
  setValue("b", "");
  EXPECT_TRUE(read("b"));
  EXPECT_EQ(blob(), "<null>");
}

TEST_F(SettingsReader, TellsOfMissingValuesButNotOfBlobs) {
  setDocument("");
  for (const char* path : {"i", "f", "s", "w"}) EXPECT_FALSE(read(path)) << path;
  EXPECT_TRUE(read("b"));
  EXPECT_EQ(blob(), "abc");
  EXPECT_THAT(errors->texts, IsEmpty());
}

TEST_F(SettingsReader, TakesTheTextForTheKindOfTheItem) {
  setDocument(
      "<value name=\"i\" type=\"float\">2.5</value>\n"
      "<value name=\"f\" type=\"binary_base64\">2.5</value>\n"
      "<value name=\"s\">12</value>\n");
  for (const char* path : {"i", "f", "s"}) EXPECT_TRUE(read(path)) << path;
  EXPECT_EQ(store.GetInt("i", nullptr), 2);
  EXPECT_EQ(store.GetFloat("f", nullptr), 2.5);
  EXPECT_STREQ(store.GetString("s", nullptr), "12");
}

TEST_F(SettingsReader, PassesOverItemsThatAreNotSaved) {
  setDocument("<value name=\"t\">5</value>\n");
  store.CreateInt("t", 1, 0, 9, IKelDataItem::kJournalled);
  EXPECT_TRUE(read("t"));
  EXPECT_EQ(store.GetInt("t", nullptr), 1);
}

class NoneOf : public IKelDataFilter {
 public:
  static constexpr const char* className() { return "NoneOf"; }
  using Offers = OroOffers<NoneOf, IKelDataFilter>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }
  bool Accept(IKelDataItem* item) override { return std::string("i") != item->GetPath(); }
};

TEST_F(SettingsReader, PassesOverItemsThatTheFilterRefuses) {
  setDocument("<value name=\"i\">5</value><value name=\"f\">5</value>\n");
  const IPtr<IKelDataVisitor> reader(store.CreateXmlReader(pathOf("in.iniml"), false));
  reader->SetFilter(new NoneOf);
  EXPECT_TRUE(store.AcceptPath(reader.get(), "i"));
  EXPECT_TRUE(store.AcceptPath(reader.get(), "f"));
  EXPECT_EQ(store.GetInt("i", nullptr), 1);
  EXPECT_EQ(store.GetFloat("f", nullptr), 5);
}

TEST_F(SettingsReader, GoesOnBehindWhatIsMissing) {
  setDocument("<value name=\"w\">x</value>\n");
  EXPECT_FALSE(store.ImportXml(pathOf("in.iniml"), nullptr));
  EXPECT_EQ(store.GetOroString("w", nullptr), "x");
}

TEST_F(SettingsReader, WithoutNotifyingCopiesTheValueToTheFilesLayer) {
  tests::RecordingReceiver receiver;
  store.AddReceiver("i", &receiver);
  setValue("i", "5");
  EXPECT_TRUE(read("i"));
  EXPECT_THAT(receiver.calls, IsEmpty());
  store.SetAutoSave(false);
  store.SetInt(nullptr, "i", 7);
  store.CopyLayer("i", 1, 0, nullptr);
  EXPECT_EQ(store.GetInt("i", nullptr), 5);
}

TEST_F(SettingsReader, WithNotifyingTellsTheReceiversAndLeavesTheFilesLayer) {
  tests::RecordingReceiver receiver;
  store.AddReceiver("i", &receiver);
  setValue("i", "5");
  EXPECT_TRUE(read("i", true));
  EXPECT_THAT(receiver.calls, ElementsAre("int i 5"));
  store.CopyLayer("i", 1, 0, nullptr);
  EXPECT_EQ(store.GetInt("i", nullptr), 1);
}

TEST_F(SettingsReader, NotifiesOfAllKinds) {
  setDocument(
      "<value name=\"f\">2</value><value name=\"s\">x</value><value name=\"w\">y</value>"
      "<value name=\"b\">WFla</value>\n");
  for (const char* path : {"f", "s", "w", "b"}) EXPECT_TRUE(read(path, true)) << path;
  EXPECT_EQ(store.GetFloat("f", nullptr), 2);
  EXPECT_STREQ(store.GetString("s", nullptr), "x");
  EXPECT_EQ(store.GetOroString("w", nullptr), "y");
  EXPECT_EQ(blob(), "XYZ");
}

TEST_F(SettingsReader, LooksUpAPathWithoutItsFirstSlash) {
  setDocument(
      "<value name=\"x\">5</value><section name=\"\"><value name=\"y\">6</value></section>");
  store.CreateDirectory("D");
  KelDataXMLReader reader(pathOf("in.iniml"), false);
  ASSERT_TRUE(reader.Begin());
  struct Item {
    const char* path;
    bool found;
  };
  for (const auto& [path, found] : {Item{"/x", true}, Item{"x", true}, Item{"//x", false},
                                    Item{"", false}, Item{"/", false}, Item{"//y", true}}) {
    KelDataInt item(path, 0, INT32_MIN, INT32_MAX, kSaved);
    EXPECT_EQ(reader.VisitInt(&item), found) << path;
  }
}

TEST_F(SettingsReader, ReadsTheDocumentOnce) {
  setValue("i", "5");
  const IPtr<IKelDataVisitor> reader(store.CreateXmlReader(pathOf("in.iniml"), false));
  EXPECT_TRUE(store.AcceptPath(reader.get(), "i"));
  setValue("i", "6");
  EXPECT_TRUE(store.AcceptPath(reader.get(), "i"));
  EXPECT_EQ(store.GetInt("i", nullptr), 5);
  EXPECT_EQ(xml.loads, 1);
}

TEST_F(SettingsReader, LooksAgainForADocumentThatWasNotThere) {
  const IPtr<IKelDataVisitor> reader(store.CreateXmlReader(pathOf("in.iniml"), false));
  EXPECT_FALSE(store.AcceptPath(reader.get(), "i"));
  EXPECT_THAT(errors->texts, IsEmpty());
  setValue("i", "5");
  EXPECT_TRUE(store.AcceptPath(reader.get(), "i"));
  EXPECT_EQ(store.GetInt("i", nullptr), 5);
}

TEST_F(SettingsReader, ReportsADamagedDocumentOnceAndStaysFailed) {
  write("in.iniml", "<OroDataStore><value name=\"i\">5</value>");
  const IPtr<IKelDataVisitor> reader(store.CreateXmlReader(pathOf("in.iniml"), false));
  EXPECT_FALSE(store.AcceptPath(reader.get(), "i"));
  EXPECT_FALSE(store.AcceptPath(reader.get(), "i"));
  EXPECT_THAT(errors->texts, ElementsAre("the end is missing"));
  EXPECT_THAT(errors->severities, ElementsAre(1));
  EXPECT_THAT(errors->details, ElementsAre(""));
  EXPECT_EQ(store.GetInt("i", nullptr), 1);
  setValue("i", "5");
  EXPECT_FALSE(store.AcceptPath(reader.get(), "i")) << "until the reader is replaced";
  EXPECT_TRUE(read("i"));
}

TEST_F(SettingsReader, RefusesTwoRootsAndNone) {
  for (const char* text : {"", "<r/><r/>", "<?xml version=\"1.0\"?>", "text"}) {
    write("in.iniml", text);
    EXPECT_FALSE(read("i")) << text;
  }
  EXPECT_EQ(errors->texts.size(), 4u);
}

TEST_F(SettingsReader, IsSilentAboutDamageWithoutAnErrorService) {
  tests::FakeXml bare;
  write("in.iniml", "<");
  EXPECT_FALSE(read("i"));
  oroSetBroker(&xml);
  EXPECT_THAT(errors->texts, IsEmpty());
}

TEST_F(SettingsReader, ReadsNothingWithoutAnXmlLibrary) {
  setValue("i", "5");
  write("in.iniml.changes", valueLine("i", 6));
  xml.available = false;
  EXPECT_FALSE(read("i"));
  EXPECT_EQ(SettingsWorld::read("in.iniml.changes"), valueLine("i", 6)) << "nothing is thrown away";
  xml.available = true;
  EXPECT_TRUE(read("i"));
  EXPECT_EQ(store.GetInt("i", nullptr), 6);
}

TEST_F(SettingsReader, OfOneDocumentMergesItsJournalToo) {
  setValue("i", "5");
  write("in.iniml.changes", valueLine("i", 6));
  EXPECT_TRUE(store.ImportXml(pathOf("in.iniml"), "i"));
  EXPECT_EQ(store.GetInt("i", nullptr), 6);
  EXPECT_FALSE(exists("in.iniml.changes"));
  EXPECT_EQ(SettingsWorld::read("in.iniml"),
            document("\t<value name=\"i\" type=\"integer\">6</value>\n"));
}

TEST_F(SettingsReader, ImportsASubtreeAlone) {
  setDocument(
      "<section name=\"A\"><value name=\"x\">5</value></section><value name=\"i\">6</value>");
  store.CreateDirectory("A");
  store.CreateInt("A/x", 0, 0, 9, kSaved);
  EXPECT_TRUE(store.ImportXml(pathOf("in.iniml"), "A"));
  EXPECT_EQ(store.GetInt("A/x", nullptr), 5);
  EXPECT_EQ(store.GetInt("i", nullptr), 1);
  EXPECT_FALSE(store.ImportXml(pathOf("absent"), "i"));
}

TEST_F(SettingsReader, ByDefaultReadsTheDefaultDocument) {
  write("installed/velmora.iniml", document(valueLine("i", 8)));
  EXPECT_TRUE(store.AcceptPath(store.GetReader(), "i"));
  EXPECT_EQ(store.GetInt("i", nullptr), 8);
}

TEST_F(SettingsReader, IsAFileByItsNames) {
  KelDataXMLReader reader(OroString("x"), false);
  EXPECT_STREQ(reader.getClassName(), "KelDataXMLReader");
  EXPECT_NE(oroQueryClass<KelDataXMLFile>(&reader), nullptr);
  EXPECT_NE(oroQueryClass<KelDataVisitor>(&reader), nullptr);
  EXPECT_EQ(reader.GetMode(), IKelDataVisitor::kReading);
}

}  // namespace
