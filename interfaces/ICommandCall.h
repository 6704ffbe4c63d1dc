// ICommandCall: one call of a command: its values, its run, its results.
//
//   IPtr<ICommandCall> call(table->newCall(command));
//   call->setNumbers("by", by, 3);
//   if (!call->run(nullptr)) report(call->message());
//
// What an operation refuses, message() tells. A command that fails or is stopped leaves the points
// as they were. Main thread.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IOroProgress;
class OroString;

class ICommandCall : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "ICommandCall"; }

  // Each gives a parameter its value. False for a parameter that the command has not, or one of
  // another kind, and for numbers that are too many, too few or not finite.
  virtual bool setNumbers(const char* parameter, const double* values, int32_t count) = 0;
  virtual bool setText(const char* parameter, const OroString& text) = 0;
  // Works on this cloud alone, an object of IPointClouds; null for all of the document.
  virtual bool setCloud(IOroUnknown* cloud) = 0;

  // Once for each call. `progress` hears how far it is, and its false stops the work; null for
  // none. The interactive services are told in any case.
  virtual bool run(IOroProgress* progress) = 0;
  virtual bool wasStopped() = 0;
  // Translated; empty after success.
  virtual const OroString& message() = 0;

  // What the command found out, in its order: one number or several to a name.
  virtual int32_t resultCount() = 0;
  virtual const char* resultName(int32_t result) = 0;
  // Borrowed from the call; null with a count of 0 outside.
  virtual const double* resultNumbers(int32_t result, int32_t& count) = 0;
};
