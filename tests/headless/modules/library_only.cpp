// A module without an entry point of an application, which stays locked.
extern "C" unsigned acrxGetApiVersion() { return 0x140000; }
