// What tests of this folder see of its process-wide state. Not for the product's own code.
#pragma once

class KelMockService;

namespace headlesstest {

// The service of the process, null before an attach made it.
KelMockService* attachedService();

// Drops the service and the percent that was written last, as in a new process.
void forgetService();
void forgetPercent();

}  // namespace headlesstest
