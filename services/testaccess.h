// What the services look up once and keep, made new for a test. Only tests include this.
#pragma once

namespace testaccess {

// The executable's directory and the working directory.
void resetDirectories();

// Whether default directories are made.
void resetDefaultDirsWanted();

}  // namespace testaccess
