// Linked into instrumented builds only, with --wrap=_Exit: the compiler ends its runs without the work at exit by which
// the counters would be written, so they are written here.

extern "C" {

void __gcov_dump();
[[noreturn]] void __real__Exit(int status);

[[noreturn]] void __wrap__Exit(int status)
{
    __gcov_dump();
    __real__Exit(status);
}

}   // extern "C"
