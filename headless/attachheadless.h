// Puts the headless service in place of the interactive services that nobody provides, for the
// length of a command-line run, and takes its reporting away again. Main thread.
#pragma once

// Publishes the process's KelMockService, made when first needed, under each of the interactive
// names that is not served: a real service of a component wins, one name at a time. It then hears
// the error service's reports, and takes the place of the message box. Always true.
bool attachHeadlessService();

// Whether the box is gone and nothing took its place: no sink for records was asked for, or it
// could not be opened.
bool headlessDropsReports();

// Ends its reporting: no more reports, sink and window closed. The object stays published to the
// end of the process and drops what it is told. Always true.
bool detachHeadlessService();
