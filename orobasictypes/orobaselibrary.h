// The end of the base library, and what must go before it.
//
// The process entry calls oroBaseLibraryEnd once the application has come back; services may still
// be alive then, and a second call finds nothing left to do. Registering is safe on any thread, the
// end belongs to the main thread.
#pragma once

class ILogFile;
class OroObject;

// Takes over the object; oroBaseLibraryEnd deletes it, the newest first.
void oroRegisterCleanup(OroObject* object);

// Deletes the registered objects, ends the file type service if there is one, and gives back the
// shared strings and what the string storage keeps.
void oroBaseLibraryEnd();

// The service ILogFile, kept from the first time that there is one; null before. Borrowed. Main
// thread until it is found.
ILogFile* oroLogFile();
