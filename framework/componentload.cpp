#include "framework/componentload.h"

namespace {

ComponentLoadListener toldListener = nullptr;
void* toldContext = nullptr;
ToldLibraryQuestion askedQuestion = nullptr;
void* askedContext = nullptr;

}  // namespace

void setComponentLoadListener(ComponentLoadListener listener, void* context) {
  toldListener = listener;
  toldContext = context;
}

void tellComponentLoad(const ComponentLoad& load) {
  if (toldListener != nullptr) toldListener(load, toldContext);
}

void setToldLibraryQuestion(ToldLibraryQuestion question, void* context) {
  askedQuestion = question;
  askedContext = context;
}

bool isToldLibrary(const OroString& path) {
  return askedQuestion != nullptr && askedQuestion(path, askedContext);
}
