// OroPath: a file-system path in canonical form. All file names that cross a module border are
// OroPath; the operating system sees them only through the platform layer.
//
//   OroPath file(oroDirPath("config"), "velmora.iniml");
//   OroPath folder = file.parent();
//
// Canonical: "\" as the separator on every system, none at the end but in "\" itself, a drive root
// as "C:". Doubled separators and ".." inside stay. Taking apart never touches the file system.
// An OroString without a field of its own, so it may be used as one; its append and normalize are
// the path's own. A plain value; the current directory is one for the process.
#pragma once

#include "orobasictypes/orostring.h"

class OroPath : public OroString {
 public:
  constexpr OroPath() noexcept = default;  // null
  explicit OroPath(const OroString& text);
  explicit OroPath(const char* text);
  OroPath(const OroString& directory, const OroString& name);
  OroPath(const OroString& directory, const char* name);
  OroPath(const OroPath& other) = default;  // copying from a path does not normalize
  OroPath(OroPath&& other) noexcept = default;
  OroPath& operator=(const OroPath& other) = default;
  OroPath& operator=(OroPath&& other) noexcept = default;
  OroPath& operator=(const OroString& text);
  OroPath& operator=(const char* text);

  static const OroString& separator();             // "\"
  static const OroString& alternativeSeparator();  // "/"
  static const OroString& extensionMark();         // "."

  // Brings the text to canonical form; "//c/dir" becomes "c:\dir".
  void normalize();
  // The text for calls on a directory: a bare drive gets its separator back.
  OroString toOsPath() const;

  // A separator is put in between unless the path is empty or ends in one.
  void append(const OroString& name);
  void append(const char* name);
  OroPath joined(const OroString& name) const;
  OroPath joined(const char* name) const;

  OroPath parent() const;  // "." when there is none
  OroString fileName(bool keepExtension = true) const;
  OroString extension() const;                    // without the dot
  void setExtension(const OroString& extension);  // with or without the dot; empty removes
  void setExtension(const char* extension);
  void insertBeforeExtension(const OroString& text);
  bool split(OroString& name) const;  // the file name without extension; always true
  bool isAbsolute() const;
  bool isRelative() const { return !isAbsolute(); }
  bool equalsIgnoringCase(const OroPath& other) const;
  bool differsIgnoringCase(const OroPath& other) const { return !equalsIgnoringCase(other); }

  // Joins a relative path to the current directory, eating leading ".\" and "..\" alone.
  void makeAbsolute();
  // Removes each "name\.."; true if anything was removed. A ".." at the end stays.
  bool collapseDots();
  // White space in the last part becomes "_"; true if there was any.
  bool replaceBlanksInName();

  // True also when something of that name exists. Recursive: makes missing parents.
  bool makeDirectory(bool recursive) const;

 private:
  static OroPath unnormalized(OroString text);
  bool makeMissingDirectories() const;
};

// A directory by its short name ("config", "temp", "components"). The directory service is asked
// for once, at the first call of the module; without it the result is a null path for good.
const OroPath& oroDirPath(const char* name);
