// The services that exist before any component library is loaded: one table, in the order of their
// making, in which a service asks only for those above it. Main thread, once, at start.
#pragma once

class IOroObjBroker;

// Makes and publishes them all. The broker holds the only reference on each.
void registerBuiltInServices(IOroObjBroker& broker);
