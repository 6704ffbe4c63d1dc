// What the services look up once and keep, made new for a test. Only tests include this.
#pragma once

namespace testaccess {

// The executable's directory and the working directory.
void resetDirectories();

// Whether default directories are made.
void resetDefaultDirsWanted();

// The process's product facts, and the registry that they are completed from.
void resetProductInfo();

// The process's help service, with its volumes.
void resetHelpService();

// The settings that the network service writes to.
void resetNetworkService();

}  // namespace testaccess
