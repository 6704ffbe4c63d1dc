// mapEntry: one component in memory that came from a library, or from a linked entry point.
//
// Made by the component manager, which owns it. It owns the library and the component, and ends
// both when it is deleted; what it does with counts is nothing. One that did not come up keeps what
// it has got so far and must not be deleted: the library's code may be in use.
#pragma once

#include "framework/orodynamiclibrary.h"
#include "framework/staticentrypoints.h"
#include "interfaces/IOroComponentContainer.h"
#include "interfaces/IOroLoadJournal.h"
#include "orobasictypes/orooffers.h"

class IOroComponentManagerV3;
class IOroObjBroker;
class OroPath;
class OroString;

// In small letters, as the name that it answers to.
class mapEntry : public IOroComponentContainer {
 public:
  static constexpr const char* className() { return "mapEntry"; }
  using Offers = OroOffers<mapEntry, IOroComponentContainer>;

  // Brings the component up: loads the library of that path, calls its entry point and hands the
  // component the broker. isLoaded() tells whether all of it worked.
  mapEntry(const OroString& path, IOroComponentManagerV3& manager, IOroObjBroker* broker);
  mapEntry(const mapEntry&) = delete;
  mapEntry& operator=(const mapEntry&) = delete;
  // Shuts the component down, deletes it, unloads the library.
  ~mapEntry() override;

  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  IOroComponent* component() override { return component_; }
  bool isLoaded() const { return loaded_; }

 private:
  // Where it ended; `answer` becomes the version or the status that the entry point gave.
  OroLoadStep bringUp(const OroPath& path, bool isStatic, IOroObjBroker* broker, int32_t& answer);
  OroEntryPoint findEntryPoint(const OroPath& path, bool isStatic);

  OroDynamicLibrary* library_ = nullptr;  // owned; null when the component is linked in
  IOroComponent* component_ = nullptr;    // owned
  bool loaded_ = false;                   // fully brought up
};
