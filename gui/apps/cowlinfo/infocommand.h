// The program cowlinfo: its command line, and what it does with each file.
#pragma once

#include <string>
#include <vector>

// What the process ends with; of several files the worst counts.
enum InfoStatus : int {
  kInfoGood = 0,
  kInfoUsage = 1,       // the command line was not understood; nothing was looked at
  kInfoUnreadable = 2,  // a file cannot be read, is damaged, or is of no known kind
  kInfoProblems = 3,    // a description was read, and something is wrong with what it names
};

// Every option, those that end in "=" by their beginning.
const std::vector<std::string>& infoOptionNames();

// Runs the program with its arguments, UTF-8 and without its own name, and gives its status. What
// is found goes to standard output, what is wrong to standard error. Once in a process.
int runInfo(const std::vector<std::string>& arguments);
