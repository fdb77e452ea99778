// What the memory sanitizer must not hold against the test programs.
//
// Only the code under test is instrumented, so what the tests themselves write into memory from
// the heap would count as never written. The program, run by the tests, keeps the full checks.

extern "C" const char* __msan_default_options();

extern "C" const char* __msan_default_options() {
    return "poison_in_malloc=0:poison_in_free=0";
}
