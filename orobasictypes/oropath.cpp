#include "orobasictypes/oropath.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "interfaces/IOroDirService.h"
#include "orobasictypes/oroarray.h"
#include "orobasictypes/oronumbertext.h"
#include "orobasictypes/oroserviceonce.h"
#include "orobasictypes/orotextview.h"
#include "orobasictypes/testaccess.h"
#include "platform/files.h"

namespace {

using orotext::stringOf;
using orotext::viewOf;

constexpr size_t none = std::u16string_view::npos;
constexpr int currentDirectoryUnits = 256;  // one that long or longer counts as none
constexpr int32_t directoryStack = 21;      // slots to begin with

// A constant that is used until the process ends; no destructor runs.
union Constant {
  constexpr Constant(const char16_t* wide, const char* narrow) : text(wide, narrow) {}
  ~Constant() {}
  OroString text;
};
constinit Constant separatorText(u"\\", "\\");
constinit Constant alternativeSeparatorText(u"/", "/");
constinit Constant extensionMarkText(u".", ".");

union NullPath {
  constexpr NullPath() : path() {}
  ~NullPath() {}
  OroPath path;
};
constinit NullPath nullPath;

bool isLetter(char16_t unit) {
  return (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
}

// The text alone: a narrow form stands for what the text was before it became a path.
OroString textOf(const OroString& text) {
  return text.textCapacity() > 0 ? OroString(text.text()) : OroString(text.text(), 0);
}

// Where the "." of the extension lies, or none: it must lie behind the last "\".
size_t extensionAt(std::u16string_view text) {
  const size_t dot = text.rfind(u'.');
  const size_t separator = text.rfind(u'\\');
  return separator == none || dot == none || dot > separator ? dot : none;
}

size_t behindLastSeparator(std::u16string_view text) { return text.rfind(u'\\') + 1; }

OroServiceOnce<IOroDirService>& directoryService() {
  static auto* const once = new OroServiceOnce<IOroDirService>;  // outlives all paths
  return *once;
}

}  // namespace

// Making.

OroPath::OroPath(const OroString& text) : OroString(textOf(text)) { normalize(); }

OroPath::OroPath(const char* text) : OroString(text) { normalize(); }

OroPath::OroPath(const OroString& directory, const OroString& name) : OroPath(directory) {
  append(name);
}

OroPath::OroPath(const OroString& directory, const char* name) : OroPath(directory) {
  append(name);
}

OroPath& OroPath::operator=(const OroString& text) { return *this = OroPath(text); }

OroPath& OroPath::operator=(const char* text) { return *this = OroPath(text); }

OroPath OroPath::unnormalized(OroString text) {
  OroPath path;
  static_cast<OroString&>(path) = std::move(text);
  return path;
}

const OroString& OroPath::separator() { return separatorText.text; }
const OroString& OroPath::alternativeSeparator() { return alternativeSeparatorText.text; }
const OroString& OroPath::extensionMark() { return extensionMarkText.text; }

// Canonical form.

void OroPath::normalize() {
  std::u16string_view units = viewOf(*this);
  if (units.size() >= 4 && units.starts_with(u"//") && units[3] == u'/') {
    char16_t* const text = makeOwned();
    text[0] = text[2];
    text[1] = u':';
    text[2] = u'\\';
    erase(3, 1);
    units = viewOf(*this);
  }
  if (units.find(u'/') != none) {
    char16_t* const text = makeOwned();
    std::replace(text, text + units.size(), u'/', u'\\');
    units = viewOf(*this);
  }
  const size_t last = units.find_last_not_of(u'\\');
  const size_t kept = std::max<size_t>(last == none ? 0 : last + 1, 1);
  if (kept < units.size()) truncateAt(static_cast<int>(kept));
}

OroString OroPath::toOsPath() const {
  OroString text(*this);
  if (viewOf(text).size() == 2 && text.at(1) == u':') text.append(u'\\');
  return text;
}

// Joining.

void OroPath::append(const OroString& name) {
  if (isEmpty()) {
    static_cast<OroString&>(*this) = textOf(name);
  } else {
    OroString whole(text());
    if (viewOf(whole).back() != u'\\') whole.append(u'\\');
    whole.append(name);
    static_cast<OroString&>(*this) = std::move(whole);
  }
  normalize();
}

void OroPath::append(const char* name) { append(OroString(name)); }

OroPath OroPath::joined(const OroString& name) const {
  OroPath path(*this);
  path.append(name);
  return path;
}

OroPath OroPath::joined(const char* name) const { return joined(OroString(name)); }

// Taking apart.

OroPath OroPath::parent() const {
  const std::u16string_view units = viewOf(*this);
  const size_t separator = units.find_last_of(u"\\/");
  if (separator == none) return unnormalized(OroString(u".", nullptr));
  if (separator == 0) return unnormalized(OroString(u"\\", nullptr));
  return unnormalized(stringOf(units.substr(0, separator)));
}

OroString OroPath::fileName(bool keepExtension) const {
  std::u16string_view name = viewOf(*this);
  name.remove_prefix(behindLastSeparator(name));
  return stringOf(keepExtension ? name : name.substr(0, name.rfind(u'.')));
}

OroString OroPath::extension() const {
  const std::u16string_view units = viewOf(*this);
  const size_t dot = extensionAt(units);
  return dot == none ? OroString::empty() : stringOf(units.substr(dot + 1));
}

void OroPath::setExtension(const OroString& extension) {
  const std::u16string_view units = viewOf(*this);
  OroString whole = stringOf(units.substr(0, extensionAt(units)));
  if (!extension.isEmpty()) {
    if (*extension.wideText() != u'.') whole.append(u'.');
    whole.append(extension);
  }
  static_cast<OroString&>(*this) = std::move(whole);
}

void OroPath::setExtension(const char* extension) { setExtension(OroString(extension)); }

void OroPath::insertBeforeExtension(const OroString& text) {
  const std::u16string_view units = viewOf(*this);
  const auto at = static_cast<int>(std::min(extensionAt(units), units.size()));
  static_cast<OroString&>(*this) = splice(at, at, text);
}

bool OroPath::split(OroString& name) const {
  name = fileName(false);
  return true;
}

bool OroPath::isAbsolute() const {
  const char16_t* const text = wideText();
  return text[0] == u'\\' || (isLetter(text[0]) && text[1] == u':');
}

bool OroPath::equalsIgnoringCase(const OroPath& other) const {
  return toLower() == other.toLower();
}

// Absolute paths and dots.

void OroPath::makeAbsolute() {
  if (isAbsolute()) return;
  OroPath base(OroString(platform::currentDirectory(currentDirectoryUnits).c_str()));
  if (base.isEmpty()) {
    normalize();
    return;
  }
  std::u16string_view rest = viewOf(*this);
  for (;;) {
    if (rest.starts_with(u".\\")) {
      rest.remove_prefix(2);
    } else if (rest.starts_with(u"..\\")) {
      rest.remove_prefix(3);
      base = base.parent();
    } else {
      break;
    }
  }
  base.append(stringOf(rest));
  *this = std::move(base);
}

bool OroPath::collapseDots() {
  bool removed = false;
  for (;;) {
    const std::u16string_view units = viewOf(*this);
    size_t dots = units.find(u"\\..\\");
    if (dots == none) dots = units.find(u"/../");
    if (dots == none) return removed;
    const std::u16string_view before = units.substr(0, dots);
    size_t separator = before.rfind(u'\\');
    if (separator == none) separator = before.rfind(u'/');
    if (separator == none) return removed;
    erase(static_cast<int>(separator), static_cast<int>(dots + 3 - separator));
    removed = true;
  }
}

bool OroPath::replaceBlanksInName() {
  const std::u16string_view units = viewOf(*this);
  const size_t name = units.find_last_of(u"\\/") + 1;
  if (!std::any_of(units.begin() + static_cast<ptrdiff_t>(name), units.end(),
                   oronumbers::isBlank)) {
    return false;
  }
  char16_t* const text = makeOwned();
  std::replace_if(text + name, text + units.size(), oronumbers::isBlank, u'_');
  return true;
}

// Directories.

bool OroPath::makeDirectory(bool recursive) const {
  if (recursive) return makeMissingDirectories();
  return platform::makeDirectory(viewOf(toOsPath())) != platform::MakeDirectory::failed;
}

// Climbs until something can be made or exists, then makes what was passed on the way, downwards.
bool OroPath::makeMissingDirectories() const {
  OroArray<int32_t> missing(directoryStack);  // lengths: each is a front of this path
  OroPath current(*this);
  OroPath previous;
  while (current.differsIgnoringCase(previous)) {
    if (current.makeDirectory(false)) break;
    missing.add(current.length());
    previous = current;
    current = current.parent();
  }
  // The top is what parent() could not reduce any further.
  if (!current.differsIgnoringCase(previous)) missing.pop();
  bool made = true;
  for (; made && !missing.isEmpty(); missing.pop()) {
    made = unnormalized(left(missing.last())).makeDirectory(false);
  }
  return made;
}

const OroPath& oroDirPath(const char* name) {
  IOroDirService* const service = directoryService().get();
  return service != nullptr ? service->getDir(name) : nullPath.path;
}

void testaccess::resetDirPath() { directoryService().reset(); }
