// The first filling of the product facts: what this executable has to say of itself and of what it
// can do. Main thread.
#pragma once

// Tells the service IProductInfo the facts of the build and the registry the rest. Nothing without
// the service, or once it knows a version.
void fillProductFacts();
