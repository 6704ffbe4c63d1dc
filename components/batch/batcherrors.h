// BatchErrors: keeps the first error that is reported, for the summary of a batch to give as the
// reason of a failure.
//
//   BatchErrors::Listening errors;
//   open(file);
//   show(errors.take());
//
// Main thread, but reports may come from any, one at a time.
#pragma once

#include <mutex>

#include "interfaces/IOroErrorListener.h"
#include "interfaces/IOroErrorService.h"
#include "orobasictypes/iptr.h"
#include "orobasictypes/orooffers.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/sptr.h"

class BatchErrors : public IOroErrorListener {
 public:
  static constexpr const char* className() { return "BatchErrors"; }
  using Offers = OroOffers<BatchErrors, IOroErrorListener>;
  void queryInterface(const char* name, void* out) override { Offers::query(*this, name, out); }
  const char* getClassName() const override { return className(); }

  void onError(const OroString& text, const int32_t* severity, const KelCString& detail) override;

  // The first error since the last call, empty where there was none.
  OroString take();

  // For its life an object of the class hears the error service; without one it hears nothing.
  class Listening {
   public:
    Listening();
    ~Listening();
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;

    OroString take() { return heard_->take(); }

   private:
    SPtr<IOroErrorService> errors_;
    IPtr<BatchErrors> heard_{new BatchErrors};
  };

 private:
  std::mutex lock_;  // guards first_
  OroString first_;
};
