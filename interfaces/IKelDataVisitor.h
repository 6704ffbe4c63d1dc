// IKelDataVisitor: walks the settings tree, to read values into items or to write them out.
//
// IDataStore::Accept and AcceptPath run one; derive from KelDataVisitor inside the host, implement
// this elsewhere. A visitor must not remove the directories that it is being shown.
#pragma once

#include <cstdint>

#include "orobasictypes/iorounknown.h"

class IKelDataBlob;
class IKelDataDirectory;
class IKelDataFilter;
class IKelDataFloat;
class IKelDataInt;
class IKelDataOroString;
class IKelDataString;

class IKelDataVisitor : public virtual IOroUnknown {
 public:
  static constexpr const char* interfaceName() { return "IKelDataVisitor"; }

  static constexpr int32_t kReading = 0;
  static constexpr int32_t kWriting = 1;

  // Once before a walk. False: nothing is walked, and End is called all the same.
  virtual bool Begin() = 0;
  // False leaves the directory out, and fails the walk.
  virtual bool EnterDirectory(IKelDataDirectory* directory) = 0;
  virtual bool VisitBlob(IKelDataBlob* item) = 0;
  virtual bool VisitOroString(IKelDataOroString* item) = 0;
  virtual bool VisitString(IKelDataString* item) = 0;
  virtual bool VisitFloat(IKelDataFloat* item) = 0;
  virtual bool VisitInt(IKelDataInt* item) = 0;
  virtual bool LeaveDirectory(IKelDataDirectory* directory) = 0;
  // Once after a walk; its result is the result of the walk.
  virtual bool End() = 0;

  virtual IKelDataFilter* GetFilter() const = 0;  // borrowed, or null
  virtual void SetFilter(IKelDataFilter* filter) = 0;
  // kReading or kWriting.
  virtual int32_t GetMode() const = 0;
};
