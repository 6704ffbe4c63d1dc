// CommandRecord: shows a command of the command-line flow on the info bar for as long as it lives.
//
// Without an info bar that can show commands it does nothing. All of them go by one key, the
// application main object, so at most one lives at a time. Main thread.
#pragma once

class IInfoBar2;

class CommandRecord {
 public:
  // `name` is the English key of the command's name; `bar` may be null and must live longer.
  CommandRecord(IInfoBar2* bar, const char* name);
  ~CommandRecord();
  CommandRecord(const CommandRecord&) = delete;
  CommandRecord& operator=(const CommandRecord&) = delete;

 private:
  IInfoBar2* bar_;  // borrowed, may be null
};
