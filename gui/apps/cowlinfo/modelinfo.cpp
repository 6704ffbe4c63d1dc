#include "gui/apps/cowlinfo/modelinfo.h"

#include <bit>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string_view>

#include "gui/apps/cowlinfo/infotext.h"
#include "interfaces/IOroDataModelReader.h"
#include "orobasictypes/orofileread.h"
#include "orobasictypes/oropath.h"
#include "orobasictypes/orosystemtext.h"
#include "platform/files.h"
#include "platform/text.h"

namespace {

constexpr size_t kMostText = 200;      // bytes of a text that are shown
constexpr size_t kMostBareBytes = 64;  // in front of the elements of another element
constexpr uint64_t kShortHeader = 8;   // tag, version, size of 4 bytes
constexpr uint64_t kLongHeader = 12;   // the same with a size of 8 bytes
constexpr uint64_t kIdBytes = 16;

enum class Body { unknown, point, narrow, matrix, wide, id, doubles, floats, object, textObject };

struct KnownTag {
  uint32_t tag;
  const char* name;
  Body body;
};

constexpr KnownTag kKnownTags[] = {
    {0x010000, "point", Body::point},
    {0x010003, "text", Body::narrow},
    {0x010004, "matrix", Body::matrix},
    {0x010005, "wide text", Body::wide},
    {0x010008, "id", Body::id},
    {0x010009, "two doubles", Body::doubles},
    {0x010010, "two floats", Body::floats},
    {0x0B0002, "object", Body::object},
    {0x0B0003, "object known by a text", Body::textObject},
    // Of native documents; what is in them is shown as bytes.
    {0x435701, "document", Body::unknown},
    {0x435702, "form", Body::unknown},
    {0x435703, "scale", Body::unknown},
    {0x435704, "grid", Body::unknown},
    {0x435705, "colours", Body::unknown},
    {0x435706, "points", Body::unknown},
    {0x435707, "selection", Body::unknown},
};

const KnownTag* knownTag(uint32_t tag) {
  for (const KnownTag& known : kKnownTags) {
    if (known.tag == tag) return &known;
  }
  return nullptr;
}

uint64_t bigEndian(std::string_view bytes) {
  uint64_t value = 0;
  for (const char byte : bytes) value = value << 8 | static_cast<unsigned char>(byte);
  return value;
}

std::string number(double value) {
  char text[40];
  return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

std::string numbers(std::string_view bytes, size_t width) {
  std::string out = "(";
  for (size_t at = 0; at + width <= bytes.size(); at += width) {
    const uint64_t bits = bigEndian(bytes.substr(at, width));
    const double value = width == 8 ? std::bit_cast<double>(bits)
                                    : std::bit_cast<float>(static_cast<uint32_t>(bits));
    out += (at == 0 ? "" : ", ") + number(value);
  }
  return out + ")";
}

std::string idText(std::string_view bytes) {
  char text[48];
  std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%04X-%012llX}",
                static_cast<unsigned>(bigEndian(bytes.substr(0, 4))),
                static_cast<unsigned>(bigEndian(bytes.substr(4, 2))),
                static_cast<unsigned>(bigEndian(bytes.substr(6, 2))),
                static_cast<unsigned>(bigEndian(bytes.substr(8, 2))),
                static_cast<unsigned long long>(bigEndian(bytes.substr(10, 6))));
  return text;
}

std::string wideText(std::string_view bytes) {
  std::u16string units;
  for (size_t at = 0; at + 2 <= bytes.size() && at < 2 * kMostText; at += 2) {
    units += static_cast<char16_t>(bigEndian(bytes.substr(at, 2)));
  }
  return "\"" + shownText(platform::toUtf8Lossy(units), kMostText) + "\"";
}

std::string narrowText(std::string_view bytes) {
  const std::u16string units = platform::fromSystem(bytes.substr(0, 2 * kMostText));
  return "\"" + shownText(platform::toUtf8Lossy(units), kMostText) + "\"";
}

struct Element {
  uint32_t tag;
  unsigned version;
  std::string_view body;
};

class ModelTree {
 public:
  ModelTree(std::string_view bytes, InfoReport& report) : bytes_(bytes), report_(report) {}

  // False for bytes that do not begin with a root of a version that is known.
  bool show(const std::string& name) {
    if (bytes_.size() < kShortHeader || bytes_.substr(0, 3) != "KEL") return false;
    const auto version = static_cast<unsigned char>(bytes_[3]);
    if (version > 1) return false;
    header_ = version == 0 ? kShortHeader : kLongHeader;
    if (bytes_.size() < header_) return false;
    const uint64_t size = bigEndian(bytes_.substr(4, header_ - 4));
    report_.line(0, name + ": model file, version " + std::to_string(version) + ", " +
                        counted(bytes_.size(), "byte", "bytes"));
    const bool broken = size != 0 && (size < header_ || size > bytes_.size());
    if (broken) problem("the size of the root is %1, in a file of %2 bytes", size, bytes_.size());
    const uint64_t end = size == 0 || broken ? bytes_.size() : size;
    showAll(bytes_.substr(header_, std::max(end, header_) - header_), 1);
    if (size == 0) problem("the file was cut off while it was written");
    if (end < bytes_.size()) {
      report_.line(1, counted(bytes_.size() - end, "byte", "bytes") + " behind the root");
    }
    if (left_ > 0) report_.line(1, counted(left_, "element", "elements") + " more");
    return true;
  }

 private:
  // The element at the front of the bytes; nothing when there is no whole one.
  std::optional<Element> elementAt(std::string_view bytes) const {
    if (bytes.size() < header_) return std::nullopt;
    const uint64_t size = bigEndian(bytes.substr(4, header_ - 4));
    if (size < header_ || size > bytes.size()) return std::nullopt;
    return Element{static_cast<uint32_t>(bigEndian(bytes.substr(0, 3))),
                   static_cast<unsigned char>(bytes[3]), bytes.substr(header_, size - header_)};
  }

  // Whether the bytes are elements from one end to the other, at least one. A file that is made to
  // be tried without end runs out of trials.
  bool areElements(std::string_view bytes) {
    if (bytes.empty()) return false;
    while (!bytes.empty()) {
      const auto element = elementAt(bytes);
      if (!element || trials_ == 0) return false;
      --trials_;
      bytes.remove_prefix(header_ + element->body.size());
    }
    return true;
  }

  void showAll(std::string_view bytes, int level) {
    while (!bytes.empty()) {
      const auto element = elementAt(bytes);
      if (!element) {
        problem("at offset %1 there is no whole element", offsetOf(bytes));
        return;
      }
      showOne(*element, level);
      bytes.remove_prefix(header_ + element->body.size());
    }
  }

  void showOne(const Element& element, int level) {
    if (shown_ >= kMostModelElements || level > kMostModelLevels) {
      ++left_;
      return;
    }
    ++shown_;
    const KnownTag* const known = knownTag(element.tag);
    char head[64];
    std::snprintf(head, sizeof head, "0x%06X", static_cast<unsigned>(element.tag));
    std::string text = head;
    if (known != nullptr) text += std::string(" ") + known->name;
    text += ", version " + std::to_string(element.version) + ", " +
            counted(element.body.size(), "byte", "bytes");
    const std::string value = known != nullptr ? valueOf(known->body, element.body) : std::string();
    if (!value.empty()) text += ": " + value;
    report_.line(static_cast<size_t>(level), text);
    const bool isLeaf = known != nullptr && known->body < Body::object && !value.empty();
    if (!isLeaf) showBody(element.body, known != nullptr && known->body == Body::object, level + 1);
  }

  // Bare values, and the elements behind them.
  void showBody(std::string_view body, bool hasId, int level) {
    if (hasId) body.remove_prefix(std::min<size_t>(body.size(), kIdBytes));
    for (size_t bare = 0; bare <= kMostBareBytes && bare < body.size(); ++bare) {
      if (!areElements(body.substr(bare))) continue;
      if (bare > 0) report_.line(static_cast<size_t>(level), bareBytes(bare));
      showAll(body.substr(bare), level);
      return;
    }
    if (hasId && !body.empty()) report_.line(static_cast<size_t>(level), bareBytes(body.size()));
  }

  static std::string bareBytes(size_t count) {
    return counted(count, "byte", "bytes") + " of values";
  }

  // Empty for a body that is too short for its kind.
  static std::string valueOf(Body kind, std::string_view body) {
    switch (kind) {
      case Body::point:
        return body.size() == 24 ? numbers(body, 8) : "";
      case Body::matrix:
        return body.size() == 128 ? numbers(body, 8) : "";
      case Body::doubles:
        return body.size() == 16 ? numbers(body, 8) : "";
      case Body::floats:
        return body.size() == 8 ? numbers(body, 4) : "";
      case Body::id:
      case Body::object:
        return body.size() >= kIdBytes ? idText(body) : "";
      case Body::narrow:
        return narrowText(body);
      case Body::wide:
        return wideText(body);
      default:
        return "";
    }
  }

  uint64_t offsetOf(std::string_view bytes) const {
    return static_cast<uint64_t>(bytes.data() - bytes_.data());
  }

  void problem(const char* key, uint64_t a1 = 0, uint64_t a2 = 0) {
    report_.problems.push_back(infoText(key, std::to_string(a1), std::to_string(a2)));
  }

  std::string_view bytes_;
  InfoReport& report_;
  uint64_t header_ = kShortHeader;
  int shown_ = 0;
  int trials_ = 20000000;  // elements that may still be looked at to find out what they are
  uint64_t left_ = 0;      // elements that were not shown, without what is in them
};

}  // namespace

InfoReport modelInfo(const OroPath& path) {
  InfoReport report;
  platform::MappedFile file;
  OroFileRead<> reader;
  if (!reader.Open(path) || !file.open(path.wideText())) {
    report.problems.push_back(infoText("the file cannot be opened"));
    return report;
  }
  const bool isModel = reader.IsGood() || file.bytes().substr(0, 3) == "KEL";
  reader.Close();
  ModelTree tree(file.bytes(), report);
  if (!isModel || !tree.show(shownText(oroShownPath(path)))) {
    report.problems.push_back(infoText("the file is no model file of a version that is known"));
  }
  return report;
}
