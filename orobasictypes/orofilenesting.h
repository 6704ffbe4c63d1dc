// How deep the objects of model files are nested in this module, for indenting dumps: three for
// each object that some reader or writer has open. Any thread.
#pragma once

#include <cstdint>

class OroFileNesting {
 public:
  // The present depth, a multiple of three.
  static int32_t Get();

  OroFileNesting() = default;
  ~OroFileNesting() { closeAll(); }
  OroFileNesting(const OroFileNesting&) = delete;
  OroFileNesting& operator=(const OroFileNesting&) = delete;

  // What one reader or writer has open. Closing what is not open does nothing.
  void open();
  void close();
  void closeAll();

 private:
  int32_t opened_ = 0;
};
