// A library with a symbol by which AddressSanitizer's run-time library is known, and nothing else of it.
extern "C" __attribute__((visibility("default"))) void __asan_init();  // NOLINT(bugprone-reserved-identifier)
void __asan_init() {}
