// IHelpService: shows a topic of a help volume, both by name.
//
// Which volumes there are stands in the registry's section "HELP". Nothing is reported: what cannot
// be shown is not shown. Main thread.
#pragma once

#include "orobasictypes/iorounknown.h"

class IHelpVolume;
class KelCString;
class OroString;
template <class T>
class OroArray;

class IHelpService : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IHelpService"; }

  // Makes the viewer anew, from the class that a component library has for it; without one there is
  // no viewer. Called once at start, behind loadVolumes.
  virtual void createViewer() = 0;
  // Adds the volumes that the registry names and whose files are there.
  virtual void loadVolumes() = 0;
  // The volume of each name, in the order of the names; one that has two names comes twice. What
  // stood in the list is dropped; the volumes are borrowed.
  virtual void volumes(OroArray<IHelpVolume*>& out) = 0;
  virtual void showTopic(const KelCString& name, const KelCString& topic) = 0;
  // The home page of the product's maker.
  virtual const OroString& defaultWebAddress() = 0;
};
