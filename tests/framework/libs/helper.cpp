// The library that dependent.cpp needs.

extern "C" [[gnu::visibility("default")]] int helperAnswer();
extern "C" int helperAnswer() { return 0x0DE50001; }
