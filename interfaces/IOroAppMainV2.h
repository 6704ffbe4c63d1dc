// IOroAppMainV2: an application main object that tells why its start failed.
#pragma once

#include "interfaces/IOroAppMain.h"

class IOroAppMainV2 : public IOroAppMain {
 public:
  // What failed, in English; "No Error" until something did. Valid to the end of the process.
  virtual const char* errorText() = 0;
};
