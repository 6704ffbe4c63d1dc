// A library that is no component: it exports something else.

extern "C" [[gnu::visibility("default")]] int SomethingElse() { return 1; }
