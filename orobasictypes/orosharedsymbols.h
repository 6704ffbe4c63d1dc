// oroShareSymbols: lets libraries that are loaded later take symbols from one that this library
// brought, which no other library sees otherwise. For components around an interpreter whose own
// extension libraries expect its symbols everywhere. Main thread.
#pragma once

// `address` lies in the library: that of one of its functions. False when the system does not know
// it; the library then stays as it was.
bool oroShareSymbols(const void* address);
