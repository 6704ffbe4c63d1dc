// IOroObjBroker: the way from a name or a class id to a living object.
//
// One broker serves the process; a named component group has one of its own. Most code meets it
// through SPtr and oroCreateObject. Objects come back borrowed: the caller takes the reference.
// A plain abstract class and no IOroUnknown: reference counts change through it.
// What changes a table (registering, class objects, the making of a group's broker) belongs to
// start-up, on the main thread; the rest may be called by any thread.
#pragma once

#include <cstdint>

class IOroClassRegistration;
class IOroComponentManager;
class IOroUnknown;
class KelCString;
struct GUID;

// What getLastStatus answers. A component manager's or a component's own code is passed on as it
// is.
enum OroBrokerStatus : int32_t {
  kOroBrokerDone = 1,
  kOroBrokerShared = 2,           // from getClassObject alone: done, and the object is shared
  kOroBrokerNoClass = 1001,       // class id unknown, or no object for it
  kOroBrokerNoInterface = 1002,   // interface unknown, or the class does not support it
  kOroBrokerNullArgument = 1003,  // a required output or object is null
  kOroBrokerAlreadyThere = 1004,  // the name is taken
  kOroBrokerDuplicateClass = 1005,
};

class IOroObjBroker {
 public:
  virtual ~IOroObjBroker() = default;

  // An object of the class, new or shared, as the named interface. 1 or 0. The published service is
  // given when the class is that interface's default. *out is not cleared after an early failure.
  virtual int32_t createObject(const GUID& classId, const KelCString& interfaceName,
                               void** out) = 0;

  // The component that provides the class; loads nothing. 1 or 0.
  virtual int32_t getComponentId(const GUID& classId, GUID& out) = 0;

  // Publishes the object and takes one reference. 0 when it is null or the name is taken.
  virtual int32_t registerService(const KelCString& interfaceName, IOroUnknown* object) = 0;

  // Makes the class the default of the interface; the first one stays. 1 or 0.
  virtual int32_t registerInterface(const KelCString& interfaceName, const GUID& classId) = 0;

  // Forgets the default class; a service of that name stays published. 1 or 0.
  virtual int32_t unregisterInterface(const KelCString& interfaceName) = 0;

  // The service, made from the interface's default class if need be; *out is null after a failure.
  // 1 or 0. Allocates nothing for a published service.
  virtual int32_t getService(const KelCString& interfaceName, void** out) = 0;

  // Whether getService would give an object. May load a library and make an object for the
  // question.
  virtual bool hasService(const KelCString& interfaceName) = 0;

  // Whether an object of the class offers the interface; as hasService.
  virtual bool classSupports(const GUID& classId, const KelCString& interfaceName) = 0;

  // The status of the last operation that sets one: an OroBrokerStatus or a code passed on.
  virtual int32_t getLastStatus() = 0;

  // All reference counts of the process change here, under one lock that serves nothing else.
  virtual void countUp(int32_t* count) = 0;
  virtual bool countDown(int32_t* count) = 0;  // true when it fell from 1 to 0

  // The broker of a named group; this one for the empty name. A missing one is made if `create`,
  // otherwise null. Borrowed.
  virtual IOroObjBroker* groupBroker(const KelCString& groupName, bool create) = 0;

  // This broker in that role. Never null.
  virtual IOroClassRegistration* classRegistration() = 0;

  // Borrowed; may be null.
  virtual IOroComponentManager* componentManager() = 0;

  // Puts an object (or null) in place of what the class's component would give; takes a reference
  // on it and drops the one on its predecessor. Always 1.
  virtual int32_t setClassObject(const GUID& classId, IOroUnknown* object) = 0;

  // Undoes setClassObject. 1, or kOroBrokerNoClass itself when nothing was set.
  virtual int32_t removeClassObject(const GUID& classId) = 0;

  // The creation step of createObject and getService: asks the class's component for the object and
  // publishes a shared one. 1 or 0. *out is left alone until the object is asked for the interface.
  virtual int32_t createInstance(const GUID& classId, const KelCString& interfaceName,
                                 void** out) = 0;
};
