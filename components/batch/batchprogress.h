// BatchProgress: shows how far a batch is, through the interactive services; silent where they are
// absent.
//
// The batch is one action, each file an action within it, and what is done with a file a command
// within that. A percent that stands directly in the batch's action counts the files. Main thread.
#pragma once

#include <cstdint>

#include "interfaces/IGuiBusyState.h"
#include "interfaces/IInfoBar.h"
#include "orobasictypes/orostring.h"
#include "orobasictypes/sptr.h"

class BatchProgress {
 public:
  // Begins the action of the batch, which ends with this object.
  explicit BatchProgress(int32_t files);
  ~BatchProgress();
  BatchProgress(const BatchProgress&) = delete;
  BatchProgress& operator=(const BatchProgress&) = delete;

  // File `number`, from 1, is begun.
  void beginFile(int32_t number, const OroString& name);
  // The file that was begun last is done, well or not.
  void endFile();
  // What the batch came to, told before its action ends.
  void show(const OroString& summary);

 private:
  SPtr<IInfoBar> bar_;
  SPtr<IGuiBusyState> busy_;
  int32_t files_;
  int32_t done_ = 0;
};

// BatchCommand: shows a command on the info bar for as long as it lives.
class BatchCommand {
 public:
  // `key` is the command's name in English.
  explicit BatchCommand(const char* key);
  ~BatchCommand();
  BatchCommand(const BatchCommand&) = delete;
  BatchCommand& operator=(const BatchCommand&) = delete;

 private:
  SPtr<IInfoBar> bar_;
};
