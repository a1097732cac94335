// Settings for the sanitizers: the JVM causes segmentation faults on purpose and handles them, and it keeps
// memory where the leak checker does not look. What natives leak is still reported, and so are the copies of
// array elements and string characters that -Xcheck:jni makes.
extern "C" {

[[gnu::visibility("default")]] const char* __asan_default_options()
{
    return "handle_segv=0:allow_user_segv_handler=1:allocator_may_return_null=1:abort_on_error=1";
}

[[gnu::visibility("default")]] const char* __lsan_default_options()
{
    return "print_suppressions=0";
}

[[gnu::visibility("default")]] const char* __lsan_default_suppressions()
{
    return "leak:AllocateHeap\n"
           "leak:MethodData::allocate\n"
           "leak:Unsafe_AllocateMemory0\n"
           "leak:libz.so\n" // only the JVM uses these, to unpack its jars
           "leak:libzip.so\n";
}

} // extern "C"
