#include "framework/orodynamiclibrary.h"

#include <string_view>

#include "interfaces/IOroErrorService.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/orotranslate.h"
#include "orobasictypes/sptr.h"
#include "platform/sharedlibrary.h"

bool OroDynamicLibrary::load(const OroString& path, const OroString& extension) {
  OroString name(path);
  name.append(extension.isEmpty() ? OroString(platform::librarySuffix()) : extension);
  const std::string errorText = open(name);
  if (handle == nullptr && !silent) reportFailure(name, errorText);
  return handle != nullptr;
}

// The three attempts; the system's words for the failure of the last one.
std::string OroDynamicLibrary::open(const OroString& name) {
  using platform::LibrarySearch;
  const platform::LibraryErrorMode mode(silent);
  const std::u16string_view text(name.wideText());
  std::string errorText;
  handle = platform::openLibrary(text, LibrarySearch::alteredPath, &errorText);
  if (handle == nullptr) handle = platform::openLibrary(text, LibrarySearch::plain, &errorText);
  const size_t separator = text.rfind(u'\\');
  if (handle == nullptr && separator != text.npos) {
    const std::u16string_view bareName = text.substr(separator + 1);
    handle = platform::openLibrary(bareName, LibrarySearch::plain, &errorText);
  }
  return errorText;
}

void OroDynamicLibrary::reportFailure(const OroString& name, const std::string& errorText) const {
  const SPtr<IOroErrorService> errors;
  if (!errors) return;
  constexpr int32_t error = 1;
  OroString text;
  oroTranslate(text, "Fatal error: Could not load this DLL: %1; error code was: %2", name,
               OroString(errorText.c_str()));
  errors->report(text, error, KelCString::empty());
}

void* OroDynamicLibrary::symbol(const char* name) const {
  return platform::librarySymbol(handle, name);
}

void OroDynamicLibrary::unload() {
  platform::closeLibrary(handle);
  handle = nullptr;
}

OroString OroDynamicLibrary::pattern() {
  OroString pattern(u"*");
  pattern.append(OroString(platform::librarySuffix()));
  return pattern;
}

OroString OroDynamicLibrary::withoutSuffix(const OroString& fileName) {
  const size_t suffix = std::u16string_view(platform::librarySuffix()).size();
  return fileName.left(fileName.length() - static_cast<int32_t>(suffix));
}
