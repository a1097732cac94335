// Settings for the sanitizers: the JVM causes segmentation faults on purpose and handles them, and it keeps
// memory where the leak checker does not look. What natives leak is still reported, and so are the copies of
// array elements and string characters that -Xcheck:jni makes.
extern "C" [[gnu::visibility("default")]] const char* __asan_default_options()
{
    return "handle_segv=0:allow_user_segv_handler=1:allocator_may_return_null=1:abort_on_error=1";
}

extern "C" [[gnu::visibility("default")]] const char* __lsan_default_suppressions()
{
    // Only the JVM uses libz and libzip, to unpack its jars.
    return "leak:AllocateHeap\nleak:MethodData::allocate\nleak:Unsafe_AllocateMemory0\nleak:libz.so\n"
           "leak:libzip.so\n";
}
