// IOroIidToClsid: the default class of an interface.
//
// Another role of the broker. It answers from a table and loads nothing.
#pragma once

class KelCString;
struct GUID;

class IOroIidToClsid {
 public:
  virtual ~IOroIidToClsid() = default;

  // False, and `out` left alone, when the interface has no default class.
  virtual bool classOfInterface(const KelCString& interfaceName, GUID& out) = 0;
};
