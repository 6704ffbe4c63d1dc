// OroOfstream: a standard output stream on a file of any name.
//
//   OroOfstream log(path, OroOpenMode::out | OroOpenMode::truncate);
//   log << "one line\n";
//   log.close();
//   return !log.fail();
//
// Take it where text goes to a file with a wide path; for a file that must be whole or not at all
// there is OroWholeFile. Each text that is put in goes straight to the file, so gather small ones
// first. The modes are those of OroOpenMode. It owns the file and closes it when it goes. One
// thread at a time.
#pragma once

#include <ostream>

#include "orobasictypes/orofdstream.h"

class OroOfstream : public OroFdStream<std::ostream, OroOpenMode::out> {
 public:
  using OroFdStream::OroFdStream;
};
