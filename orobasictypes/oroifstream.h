// OroIfstream: a standard input stream on a file of any name.
//
//   OroIfstream stream(path, OroOpenMode::in | OroOpenMode::binary);
//   std::string line;
//   while (std::getline(stream, line)) use(line);
//
// Take it where the standard's reading is wanted; OroFileReader reads blocks with less in between.
// The modes are those of OroOpenMode. It owns the file and closes it when it goes. One thread at a
// time.
#pragma once

#include <istream>

#include "orobasictypes/orofdstream.h"

class OroIfstream : public OroFdStream<std::istream, OroOpenMode::in> {
 public:
  using OroFdStream::OroFdStream;
};
