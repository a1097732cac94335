// The native method of Soak.java.
#include "Soak.h"

#include <malloc.h>

JNIEXPORT jlong JNICALL Java_Soak_heapInUse(JNIEnv*, jclass)
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<jlong>(info.uordblks + info.hblkhd);
}
