// What the sanitizers must know of the JVM: it means to meet some of its segmentation faults, and keeps
// memory for good where the leak checker does not look. The copies that -Xcheck:jni makes of array elements
// and string characters come by another way, and so does everything that natives allocate: both are still
// reported.
extern "C" {

[[gnu::visibility("default")]] const char* __asan_default_options()
{
    return "handle_segv=0:allow_user_segv_handler=1:allocator_may_return_null=1";
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
           "leak:libz.so\n" // the JVM unpacks its jars with these, and the tests nothing
           "leak:libzip.so\n";
}

} // extern "C"
