// The library that a module of the tests is linked against, and does not find.
extern "C" int NobodyHasThis();
extern "C" int NobodyHasThis() { return 1; }
