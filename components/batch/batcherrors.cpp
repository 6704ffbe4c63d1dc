#include "components/batch/batcherrors.h"

#include <utility>

void BatchErrors::onError(const OroString& text, const int32_t* severity, const KelCString&) {
  constexpr int32_t kError = 1;
  const std::lock_guard guard(lock_);
  if (*severity == kError && first_.isEmpty()) first_ = text;
}

OroString BatchErrors::take() {
  const std::lock_guard guard(lock_);
  return std::exchange(first_, OroString());
}

BatchErrors::Listening::Listening() {
  if (errors_) errors_->addListener(heard_.get());
}

BatchErrors::Listening::~Listening() {
  if (errors_) errors_->removeListener(heard_.get());
}
