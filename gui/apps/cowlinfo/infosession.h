// InfoSession: the framework and the services of a process that looks at files and runs nothing.
//
//   InfoSession session;
//   if (session.loadComponents()) use(SPtr<IOroDOMXml>());
//
// What the services report is gathered instead of shown, in no box that waits for somebody. Once in
// a process, on the main thread; the framework stays, as it does in the application.
#pragma once

#include <string>
#include <vector>

#include "framework/componentload.h"
#include "gui/apps/main/oroappmain.h"
#include "interfaces/IOroErrorListener.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/orooffers.h"

class InfoSession {
 public:
  InfoSession();
  ~InfoSession();
  InfoSession(const InfoSession&) = delete;
  InfoSession& operator=(const InfoSession&) = delete;

  // Makes the components beside the program known. False, with a report, when there are none.
  bool loadComponents();

  // How the bringing up of a library ended; null for one that nobody asked for. Without suffix.
  const ComponentLoad* loadOf(const OroString& library) const;

  // What was reported since the last call, oldest first.
  std::vector<std::string> takeReports();

 private:
  class Listener : public IOroErrorListener {
   public:
    static constexpr const char* className() { return "Listener"; }
    using Offers = OroOffers<Listener, IOroErrorListener>;

    explicit Listener(const InfoSession& session) : session_(session) {}
    void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
    const char* getClassName() const override { return className(); }
    void onError(const OroString& text, const int32_t* severity, const KelCString&) override;

    std::vector<std::string> texts;

   private:
    const InfoSession& session_;
  };

  bool isToldAgain(const OroString& report) const;

  OroAppMain application_;
  IPtr<Listener> listener_{new Listener(*this)};
  std::vector<ComponentLoad> loads_;
};
