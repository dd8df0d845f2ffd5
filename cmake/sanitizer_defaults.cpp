// Looked up by the sanitizers' runtimes when a program starts; the *_OPTIONS variables of the environment override
// them. A refused allocation must come back as null: several tests ask for far more than there is and expect
// std::bad_alloc.

extern "C" {

char const* __asan_default_options() {
    return "allocator_may_return_null=1:detect_leaks=1";
}
char const* __tsan_default_options() {
    return "allocator_may_return_null=1:halt_on_error=1";
}
char const* __ubsan_default_options() {
    return "print_stacktrace=1:halt_on_error=1";
}
}
