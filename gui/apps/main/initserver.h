// Brings up the library "initserver", which knows the application's components.
#pragma once

class IKelInitServer;
class IOroComponentManager;

// The init server object, borrowed: its count may be 0. Null when the library cannot be loaded or
// does not answer as it must, which has been reported then. Main thread, once, at start.
IKelInitServer* loadInitServer(IOroComponentManager* manager);
