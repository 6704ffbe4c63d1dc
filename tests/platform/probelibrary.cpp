// A library with one symbol, for the tests of opening and closing.

extern "C" __attribute__((visibility("default"))) int probeAnswer();

int probeAnswer() { return 42; }
