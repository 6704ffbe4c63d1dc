#include "headless/kelrecord.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::u16string streamText(const KelRecord& record, bool console) {
  std::u16string text;
  for (const KelRecordPiece& piece : kelStreamSpelling(record, console)) text += piece.text;
  return text;
}

struct SpellingRow {
  KelRecord record;
  const char16_t* pipe;
  const char16_t* stream;
  KelRecordColour colour;
};

const SpellingRow kRows[] = {
    {{KelRecordKind::startCommand, u"Open", 0},
     u"<start cmd=\"Open\">\n",
     u"<start cmd=\"Open\"/>\n",
     KelRecordColour::name},
    {{KelRecordKind::stopCommand, u"Open", 0},
     u"<stop cmd=\"Open\">\n",
     u"<stop cmd=\"Open\"/>\n",
     KelRecordColour::name},
    {{KelRecordKind::startAction, u"Read", 0},
     u"<start action=\"Read\">\n",
     u"<start action=\"Read\"/>\n",
     KelRecordColour::name},
    {{KelRecordKind::stopAction, u"Read", 0},
     u"<stop action=\"Read\">\n",
     u"<stop action=\"Read\"/>\n",
     KelRecordColour::name},
    {{KelRecordKind::setAction, u"Sort", 0},
     u"<set action=\"Sort\">\n",
     u"<set action=\"Sort\"/>\n",
     KelRecordColour::name},
    {{KelRecordKind::percent, u"", 42},
     u" <prog done=\"42\"/>\n",
     u" <prog done=\"42\"/>\n",
     KelRecordColour::value},
    {{KelRecordKind::percent, u"", -1},
     u" <prog done=\"-1\"/>\n",
     u" <prog done=\"-1\"/>\n",
     KelRecordColour::value},
    {{KelRecordKind::error, u"No", 0},
     u"<Error=\"No\">\n",
     u"<Error=\"No\"/>\n",
     KelRecordColour::error},
    {{KelRecordKind::warning, u"Hm", 0},
     u"<Warning=\"Hm\">\n",
     u"<Warning=\"Hm\"/>\n",
     KelRecordColour::warning},
};

TEST(KelRecord, EndsInAngleOnAPipeAndInSlashAngleOnAStream) {
  for (const SpellingRow& row : kRows) {
    EXPECT_EQ(kelPipeSpelling(row.record), row.pipe);
    EXPECT_EQ(streamText(row.record, false), row.stream);
  }
}

TEST(KelRecord, ColoursTheQuotedTextBetweenFrames) {
  for (const SpellingRow& row : kRows) {
    const auto pieces = kelStreamSpelling(row.record, true);
    ASSERT_EQ(pieces.size(), 3u);
    EXPECT_EQ(pieces[0].colour, KelRecordColour::frame);
    EXPECT_EQ(pieces[1].colour, row.colour);
    EXPECT_EQ(pieces[1].text.front(), u'"');
    EXPECT_EQ(pieces[1].text.back(), u'"');
    EXPECT_EQ(pieces[2].colour, KelRecordColour::frame);
    EXPECT_EQ(pieces[2].text, u"/>\n");
  }
}

TEST(KelRecord, PercentLosesItsLeadingBlankOnAConsoleAlone) {
  const KelRecord record{KelRecordKind::percent, {}, 7};
  EXPECT_EQ(streamText(record, true), u"<prog done=\"7\"/>\n");
  EXPECT_EQ(streamText(record, false), u" <prog done=\"7\"/>\n");
  EXPECT_EQ(kelPipeSpelling(record), u" <prog done=\"7\"/>\n");
}

TEST(KelRecord, TakesTextAsItIs) {
  const KelRecord record{KelRecordKind::startCommand, u"%s \"<&>\" \u20AC", 0};
  EXPECT_EQ(kelPipeSpelling(record), u"<start cmd=\"%s \"<&>\" \u20AC\">\n");
  EXPECT_EQ(streamText(record, false), u"<start cmd=\"%s \"<&>\" \u20AC\"/>\n");
}

TEST(KelRecord, WritesAnEmptyTextBetweenQuotes) {
  const KelRecord record{KelRecordKind::stopCommand, u"", 0};
  EXPECT_EQ(kelPipeSpelling(record), u"<stop cmd=\"\">\n");
}

TEST(KelRecord, ColoursAreConsoleAttributes) {
  constexpr uint16_t saved = 0x1F;
  EXPECT_EQ(kelColourAttribute(KelRecordColour::frame, saved), 11);
  EXPECT_EQ(kelColourAttribute(KelRecordColour::name, saved), 14);
  EXPECT_EQ(kelColourAttribute(KelRecordColour::value, saved), 7);
  EXPECT_EQ(kelColourAttribute(KelRecordColour::error, saved), 12);
  EXPECT_EQ(kelColourAttribute(KelRecordColour::warning, saved), 14);
  EXPECT_EQ(kelColourAttribute(KelRecordColour::restore, saved), saved);
}

}  // namespace
