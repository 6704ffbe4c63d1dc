// ExitService: ends the process in order, with a status of the caller's choice.
//
// A command line that was refused is ended with 0 by its flow; where it asked for a status, the
// process ends with that of a refusal instead.
#pragma once

#include "interfaces/IExitService.h"
#include "orobasictypes/orooffers.h"

class ExitService : public IExitService {
 public:
  static constexpr const char* className() { return "ExitService"; }
  using Offers = OroOffers<ExitService, IExitService>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  // Flushes all open streams first. Does not return.
  void exit(int32_t status) override;
};
