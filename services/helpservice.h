// HelpService: the help volumes of the application and the viewer that shows their topics.
//
// One object for the process (getHelpService), published as IHelpService. It knows no help format:
// volumes and viewer are objects of two classes that a component library has. Which volumes there
// are stands in the registry:
//
//   HELP/chm/<name> = <file>          a volume, whose file lies in "Help" below the executable's
//                                     directory or else below the working directory
//   HELP/sym_name/<name> = <symbol>   a symbol for that volume
//   HELP/route_to/<name> = <symbol>   a further name of the volume with that symbol
//
// Main thread; an override ends on the thread of whoever fires "Document/GenCmdDone".
#pragma once

#include <map>

#include "interfaces/IHelpServiceV3.h"
#include "interfaces/IHelpViewer.h"
#include "interfaces/IOroDataReceiver.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/kelcstring.h"
#include "orobasictypes/kelcstringset.h"
#include "orobasictypes/orooffers.h"

class IHelpVolume;

class HelpService : public IHelpServiceV3, public IOroDataReceiver {
 public:
  static constexpr const char* className() { return "HelpService"; }

  HelpService() = default;
  HelpService(const HelpService&) = delete;
  HelpService& operator=(const HelpService&) = delete;
  ~HelpService() override;

  void createViewer() override;
  void loadVolumes() override;
  void volumes(OroArray<IHelpVolume*>& out) override;
  void showTopic(const KelCString& name, const KelCString& topic) override;
  const OroString& defaultWebAddress() override;
  void setTopicOverride(const KelCString& text, bool append) override;
  void topicOverride(KelCString& out) override;
  void applyTopicOverride(KelCString& out, const KelCString& topic) override;
  void showTopicV2(const KelCString& name, const KelCString& topic) override;

  // Any event ends the override; only "Document/GenCmdDone" is listened to.
  void OnVoidFired(const char* path) override;
  void OnBlobChanged(const char*, const void*, int32_t) override {}
  void OnIntExChanged(const char*, int32_t, int32_t) override {}
  void OnOroStringChanged(const char*, const OroString&) override {}
  void OnStringChanged(const char*, const char*) override {}
  void OnFloatChanged(const char*, double) override {}
  void OnIntChanged(const char*, int32_t) override {}

  using Offers =
      OroOffers<HelpService, IHelpService, IHelpServiceV2, IHelpServiceV3, IOroDataReceiver>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

 private:
  using VolumeTable = std::map<KelCString, IHelpVolume*, KelCStringLess>;

  void loadFiles();
  void loadRoutes();
  void setVolume(const KelCString& name, IHelpVolume* volume);
  IHelpVolume* volumeOf(const KelCString& name) const;
  void show(const OroString& address);

  IPtr<IHelpViewer> viewer_;  // null until createViewer finds one
  // One reference for each name. A volume whose name passed to another keeps its reference: nobody
  // knows who still has it.
  VolumeTable volumes_;
  KelCString topicOverride_ = KelCString::empty();
  bool overrideAppends_ = false;
};

// The process's object, made at the first call and never destroyed.
HelpService* getHelpService();
