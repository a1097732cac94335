// The native half of Vitals.java.
#include "Vitals.h"

#include <malloc.h>

JNIEXPORT jlong JNICALL Java_Vitals_heapInUse(JNIEnv*, jclass)
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<jlong>(info.uordblks + info.hblkhd);
}
