#include "headless/kelrecord.h"

#include <string_view>

namespace {

struct KindRow {
  KelRecordKind kind;
  std::u16string_view head;  // up to the text with its quotes
  KelRecordColour colour;    // of that text
};

// In the order of KelRecordKind.
constexpr KindRow kKinds[] = {
    {KelRecordKind::startCommand, u"<start cmd=", KelRecordColour::name},
    {KelRecordKind::stopCommand, u"<stop cmd=", KelRecordColour::name},
    {KelRecordKind::startAction, u"<start action=", KelRecordColour::name},
    {KelRecordKind::stopAction, u"<stop action=", KelRecordColour::name},
    {KelRecordKind::setAction, u"<set action=", KelRecordColour::name},
    {KelRecordKind::percent, u"<prog done=", KelRecordColour::value},
    {KelRecordKind::error, u"<Error=", KelRecordColour::error},
    {KelRecordKind::warning, u"<Warning=", KelRecordColour::warning},
};

const KindRow& rowOf(const KelRecord& record) { return kKinds[static_cast<int>(record.kind)]; }

std::u16string decimal(int32_t value) {
  const std::string digits = std::to_string(value);
  return {digits.begin(), digits.end()};
}

std::u16string quotedText(const KelRecord& record) {
  const bool isPercent = record.kind == KelRecordKind::percent;
  return u"\"" + (isPercent ? decimal(record.percent) : record.text) + u"\"";
}

}  // namespace

std::u16string kelPipeSpelling(const KelRecord& record) {
  const bool isPercent = record.kind == KelRecordKind::percent;
  std::u16string out = isPercent ? u" " : u"";
  out += rowOf(record).head;
  out += quotedText(record);
  out += isPercent ? u"/>\n" : u">\n";
  return out;
}

std::vector<KelRecordPiece> kelStreamSpelling(const KelRecord& record, bool console) {
  const KindRow& row = rowOf(record);
  const bool blank = record.kind == KelRecordKind::percent && !console;
  return {{(blank ? u" " : u"") + std::u16string(row.head), KelRecordColour::frame},
          {quotedText(record), row.colour},
          {u"/>\n", KelRecordColour::frame}};
}

uint16_t kelColourAttribute(KelRecordColour colour, uint16_t saved) {
  switch (colour) {
    case KelRecordColour::frame:
      return 11;
    case KelRecordColour::name:
      return 14;
    case KelRecordColour::value:
      return 7;
    case KelRecordColour::error:
      return 12;
    case KelRecordColour::warning:
      return 14;
    case KelRecordColour::restore:
      break;
  }
  return saved;
}
