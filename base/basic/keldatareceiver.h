// KelDataReceiver: the do-nothing base of the receivers of changed settings.
//
// Derive from it and override the handlers of interest; IOroDataReceiver tells when each is called.
// An item does not count its receivers: remove the receiver before it dies. One thread at a time.
#pragma once

#include "interfaces/IOroDataReceiver.h"
#include "orobasictypes/keldatareceiverof.h"

using KelDataReceiver = KelDataReceiverOf<>;
