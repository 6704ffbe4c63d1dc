#include "framework/componentload.h"

namespace {

ComponentLoadListener toldListener = nullptr;
void* toldContext = nullptr;

}  // namespace

void setComponentLoadListener(ComponentLoadListener listener, void* context) {
  toldListener = listener;
  toldContext = context;
}

void tellComponentLoad(const ComponentLoad& load) {
  if (toldListener != nullptr) toldListener(load, toldContext);
}
