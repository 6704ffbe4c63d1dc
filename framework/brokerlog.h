// The class log: one line for each object that a component gave the broker, with the time of day.
//
// The environment variable OroObjectBrokerLog names the file; it is read once in the life of the
// process. One line is one write, so that brokers of several groups may share the log.
#pragma once

class KelCString;

namespace brokerlog {

// Opens the log if the variable names one and this was not tried before.
void openOnce();

// Writes "hh:mm:ss.mmm  name" and flushes; nothing without a log.
void write(const KelCString& interfaceName);

// Ends the log for good.
void close();

}  // namespace brokerlog
