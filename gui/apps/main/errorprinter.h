// ErrorPrinter: writes reported errors to standard error, for the person at the prompt of a run
// that keeps no records.
//
//   const ErrorPrinter::Attached printing;
//
// Warnings are left out; they stand in the records of those who ask for them. So is what the loader
// says again, at each request, of a library that does not load. While one is attached
// the error service has the flag "errorsOnStandardError", so that whoever else prints its errors
// can leave that. Reports come one at a time, from any thread.
#pragma once

#include "interfaces/IOroErrorListener.h"
#include "interfaces/IOroErrorService.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/sptr.h"

class ErrorPrinter : public IOroErrorListener {
 public:
  static constexpr const char* className() { return "ErrorPrinter"; }
  using Offers = OroOffers<ErrorPrinter, IOroErrorListener>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void onError(const OroString& text, const int32_t* severity, const KelCString& detail) override;

  // For its life a printer listens to the error service; does nothing where there is none. Main
  // thread.
  class Attached {
   public:
    Attached();
    ~Attached();
    Attached(const Attached&) = delete;
    Attached& operator=(const Attached&) = delete;

   private:
    SPtr<IOroErrorService> errors_;
    IPtr<ErrorPrinter> printer_{new ErrorPrinter};
  };
};
