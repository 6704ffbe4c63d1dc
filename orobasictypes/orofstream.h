// OroFstream: a standard stream for reading and writing one file of any name.
//
//   OroFstream stream(path, OroOpenMode::in | OroOpenMode::out | OroOpenMode::binary);
//   stream << "text";
//   stream.seekg(0);
//   stream >> text;
//
// There is one position, and a seek between writing and reading; without one the stream fails. The
// file is made if it is absent and kept if it is there. It owns the file and closes it when it
// goes. One thread at a time.
#pragma once

#include <istream>

#include "orobasictypes/orofdstream.h"

class OroFstream : public OroFdStream<std::iostream, OroOpenMode::in | OroOpenMode::out> {
 public:
  using OroFdStream::OroFdStream;
};
